// The few things that every operating system does in its own way.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

#include "orxprint/Descriptor.h"

namespace orxprint {

// The file of the running program with all its folders; empty when the system does not tell.
[[nodiscard]] std::filesystem::path ProgramFile();
[[nodiscard]] bool IsTerminal(std::FILE* stream);
void SetEnvironment(const char* name, const char* value);
// Where temporary files belong: what TMPDIR names, or the system's place.
[[nodiscard]] std::filesystem::path TemporaryFolder();
// A new file in the folder, open for reading and writing, that has no name and is gone when it is
// closed. Not open, with errno set, when there can be none.
[[nodiscard]] Descriptor OpenNamelessFile(const std::filesystem::path& folder);

// Gives a thread only the time that no other has use for. Does nothing where the system offers no
// way to do so.
void LowerPriority(std::thread& thread) noexcept;

// A dynamic library. It stays loaded until the program ends, for what it registered points into it.
struct OpenedLibrary {
  void* handle = nullptr;
  std::string error;  // why there is no handle
};
[[nodiscard]] OpenedLibrary OpenLibrary(const std::filesystem::path& file);
// The address of an exported function; null for anything else, data of that name included.
[[nodiscard]] void* FindFunction(void* library, const char* name);

// The path seen from the root. A working folder that is gone leaves it as it is, behind "./".
[[nodiscard]] std::filesystem::path AbsolutePath(const std::filesystem::path& path);

}  // namespace orxprint
