// What a library on disk exports, read from its file without loading it.
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
