#include "orxprint/Platform.h"

#include <io.h>
#include <windows.h>

#include <pthread.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "orxprint/Descriptor.h"
#include "orxprint/Files.h"
#include "orxprint/windows/Text.h"

namespace orxprint {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostPathLength = std::size_t{1} << 15;
constexpr int kStandardError = 2;

std::string ErrorMessage(DWORD error) {
  return std::system_category().message(static_cast<int>(error));
}

// The files that a pattern in the last part of a name stands for, in order; the name itself when
// there are none.
std::vector<std::string> Expand(const std::string& name) {
  if (name.find_first_of("*?") == std::string::npos) return {name};
  const std::string folder = name.substr(0, name.find_last_of("/\\:") + 1);
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(PathOf(name).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return {name};
  std::vector<std::string> names;
  do {
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
    names.push_back(folder + Utf8Text(found.cFileName));
  } while (FindNextFileW(search, &found));
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names.empty() ? std::vector<std::string>{name} : names;
}

}  // namespace

fs::path ProgramFile() {
  std::wstring name(kMostPathLength, L'\0');
  name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
  return name;
}

// Terminals take control sequences here when they are asked to.
bool IsTerminal(std::FILE* stream) {
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) &&
         SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void SetEnvironment(const char* name, const char* value) { _putenv_s(name, value); }

void LowerPriority(std::thread& thread) noexcept {
  SetThreadPriority(static_cast<HANDLE>(pthread_gethandle(thread.native_handle())),
                    THREAD_PRIORITY_IDLE);
}

void KeepFreedMemory() noexcept {}

OpenedLibrary OpenLibrary(const fs::path& file) {
  // No window is to ask the person about a library that is none.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  HMODULE library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (library) return {library, {}};
  return {nullptr, NameOf(file) + ": " + ErrorMessage(GetLastError())};
}

bool CloseLibrary(void* library) { return FreeLibrary(static_cast<HMODULE>(library)) != 0; }

void* FindFunction(void* library, const char* name) {
  const auto module = static_cast<HMODULE>(library);
  void* const address = reinterpret_cast<void*>(GetProcAddress(module, name));
  MEMORY_BASIC_INFORMATION memory{};
  constexpr DWORD kExecutable =
      PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
  // Data of that name cannot be called.
  const bool isCode = address && VirtualQuery(address, &memory, sizeof memory) != 0 &&
                      (memory.Protect & kExecutable) != 0;
  return isCode ? address : nullptr;
}

fs::path AbsolutePath(const fs::path& path) { return PathOf(NameOf(path)); }

bool ShowOnDesktop(const fs::path& file) {
  constexpr INT_PTR kLastError = 32;
  const HINSTANCE shown =
      ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(shown) > kLastError;
}

std::vector<std::string> ProgramArguments(int, char**) {
  int count = 0;
  LPWSTR* const given = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) {
    const std::string argument = Utf8Text(given[i]);
    if (i == 0) {
      arguments.push_back(argument);
      continue;
    }
    const std::vector<std::string> names = Expand(argument);
    arguments.insert(arguments.end(), names.begin(), names.end());
  }
  LocalFree(given);
  return arguments;
}

void WriteToStandardError(std::string_view text) noexcept {
  static_cast<void>(WriteAll(kStandardError, text, {}));
}

}  // namespace orxprint
