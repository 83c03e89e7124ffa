// The few things that every operating system does in its own way.
//
// Declared once and written for each system in posix/ and windows/, so that no other file asks
// which system it is on. Names and texts are UTF-8.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace orxprint {

// The file of the running program with all its folders; empty when the system does not tell.
[[nodiscard]] std::filesystem::path ProgramFile();
[[nodiscard]] bool IsTerminal(std::FILE* stream);
void SetEnvironment(const char* name, const char* value);
// Gives a thread only the time that no other has use for. Does nothing where the system offers no
// way to do so.
void LowerPriority(std::thread& thread) noexcept;

// Has the allocator keep some of what is freed, for images one after another would else be given
// new pages each, which the system fills with zeros first. Does nothing where that is not for a
// program to say.
void KeepFreedMemory() noexcept;

// A dynamic library. It stays loaded until the program ends or closes it: what it registered points
// into it.
struct OpenedLibrary {
  void* handle = nullptr;
  std::string error;  // why there is no handle
};
[[nodiscard]] OpenedLibrary OpenLibrary(const std::filesystem::path& file);
[[nodiscard]] bool CloseLibrary(void* library);
// The address of an exported function; null for anything else, data of that name included.
[[nodiscard]] void* FindFunction(void* library, const char* name);

// The path seen from the root. A working folder that is gone leaves it as it is, behind "./".
[[nodiscard]] std::filesystem::path AbsolutePath(const std::filesystem::path& path);

// Has the desktop show a file in the program that the person chose for its kind. Returns whether
// that seems to work; waits a few seconds at most.
[[nodiscard]] bool ShowOnDesktop(const std::filesystem::path& file);

// The arguments that the program was started with, its name first, in UTF-8. Patterns are
// expanded where that is not the shell's work.
[[nodiscard]] std::vector<std::string> ProgramArguments(int count, char** given);
// Shows UTF-8 text on standard error. What it does not take is lost.
void WriteToStandardError(std::string_view text) noexcept;

}  // namespace orxprint
