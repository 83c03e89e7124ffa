// What a library on disk exports, read from its file without loading it.
//
// The platform's loader finds names that it is asked for but does not list them. Only the dynamic
// symbols are looked at; the file is somebody's and may hold anything.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orxprint {

// The names that the library offers, sorted; none when it is no 64-bit ELF file of this machine's
// byte order or its tables cannot be followed. The file may hold anything.
[[nodiscard]] std::optional<std::vector<std::string>> ExportedNames(
    const std::filesystem::path& file);

}  // namespace orxprint
