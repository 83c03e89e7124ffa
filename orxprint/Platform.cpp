#include "orxprint/Platform.h"

#include <cstdlib>

#if defined(_WIN32)
#  include <fcntl.h>
#  include <io.h>
#  include <windows.h>
#else
#  include <dlfcn.h>
#  include <pthread.h>
#  include <sched.h>
#  include <unistd.h>
#  if defined(__APPLE__)
#    include <mach-o/dyld.h>
#  endif
#endif

namespace orxprint {

#if defined(_WIN32)

std::filesystem::path ProgramFile() {
  wchar_t name[32768];
  const DWORD length = GetModuleFileNameW(nullptr, name, 32768);
  return std::filesystem::path(name, name + length);
}

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

void SetEnvironment(const char* name, const char* value) { _putenv_s(name, value); }

void UseBinaryStandardStreams() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
}

unsigned long ProcessNumber() { return GetCurrentProcessId(); }

void LowerPriority(std::thread& thread) noexcept {
  SetThreadPriority(static_cast<HANDLE>(thread.native_handle()), THREAD_PRIORITY_IDLE);
}

OpenedLibrary OpenLibrary(const std::filesystem::path& file) {
  HMODULE handle = LoadLibraryW(file.c_str());
  if (!handle) return {nullptr, "error " + std::to_string(GetLastError())};
  return {handle, {}};
}

void* FindSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

#else

std::filesystem::path ProgramFile() {
#  if defined(__APPLE__)
  char name[4096];
  std::uint32_t size = sizeof name;
  return _NSGetExecutablePath(name, &size) == 0 ? std::filesystem::path(name) : "";
#  else
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
#  endif
}

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

void SetEnvironment(const char* name, const char* value) { setenv(name, value, 1); }

void UseBinaryStandardStreams() {}

unsigned long ProcessNumber() { return static_cast<unsigned long>(getpid()); }

void LowerPriority([[maybe_unused]] std::thread& thread) noexcept {
#  if defined(SCHED_IDLE)
  const sched_param none = {};
  pthread_setschedparam(thread.native_handle(), SCHED_IDLE, &none);
#  endif
}

OpenedLibrary OpenLibrary(const std::filesystem::path& file) {
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle) return {handle, {}};
  const char* error = dlerror();
  return {nullptr, error ? error : "unknown error"};
}

void* FindSymbol(void* library, const char* name) { return dlsym(library, name); }

#endif

}  // namespace orxprint
