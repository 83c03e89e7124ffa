// The few things that every operating system does in its own way.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

namespace orxprint {

// The file of the running program; empty when the system does not tell.
[[nodiscard]] std::filesystem::path ProgramFile();
[[nodiscard]] bool IsTerminal(std::FILE* stream);
void SetEnvironment(const char* name, const char* value);
// Standard input and output carry bytes, not lines of text.
void UseBinaryStandardStreams();
// A number that no other process has now.
[[nodiscard]] unsigned long ProcessNumber();

// Gives a thread only the time that no other has use for. Does nothing where the system offers no
// way to do so.
void LowerPriority(std::thread& thread) noexcept;

// A dynamic library. It stays loaded until the program ends, for what it registered points into it.
struct OpenedLibrary {
  void* handle = nullptr;
  std::string error;  // why there is no handle
};
[[nodiscard]] OpenedLibrary OpenLibrary(const std::filesystem::path& file);
// The address of an exported function, or null.
[[nodiscard]] void* FindSymbol(void* library, const char* name);

}  // namespace orxprint
