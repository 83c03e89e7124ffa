#include "orxprint/Platform.h"

#include <dlfcn.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#if defined(__APPLE__)
#  include <mach-o/dyld.h>
#else
#  include <link.h>
#  include <sys/auxv.h>
#endif
#if defined(__GLIBC__)
#  include <malloc.h>
#endif

namespace orxprint {

#if defined(__APPLE__)

std::filesystem::path ProgramFile() {
  char name[4096];
  std::uint32_t size = sizeof name;
  std::error_code error;
  if (_NSGetExecutablePath(name, &size) != 0) return {};
  return std::filesystem::canonical(name, error);
}

#else

std::filesystem::path ProgramFile() {
  std::error_code error;
  std::filesystem::path file = std::filesystem::read_symlink("/proc/self/exe", error);
  if (!error) return file;
  // Without /proc the system still tells the name that the program was started by.
  const auto* startedBy = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
  file = startedBy ? std::filesystem::canonical(startedBy, error) : std::filesystem::path();
  return error ? std::filesystem::path() : file;
}

#endif

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

void SetEnvironment(const char* name, const char* value) { setenv(name, value, 1); }

void LowerPriority([[maybe_unused]] std::thread& thread) noexcept {
#if defined(SCHED_IDLE)
  const sched_param none = {};
  pthread_setschedparam(thread.native_handle(), SCHED_IDLE, &none);
#endif
}

void KeepFreedMemory() noexcept {
#if defined(__GLIBC__)
  constexpr int kLargestKept = 32 << 20;
  mallopt(M_MMAP_THRESHOLD, kLargestKept);
  mallopt(M_TRIM_THRESHOLD, 2 * kLargestKept);
#endif
}

OpenedLibrary OpenLibrary(const std::filesystem::path& file) {
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle) return {handle, {}};
  const char* error = dlerror();
  return {nullptr, error ? error : "unknown error"};
}

bool CloseLibrary(void* library) { return dlclose(library) == 0; }

void* FindFunction(void* library, const char* name) {
  void* address = dlsym(library, name);
#if defined(__GLIBC__)
  // Data of that name cannot be called.
  Dl_info info;
  const ElfW(Sym)* symbol = nullptr;
  if (address &&
      dladdr1(address, &info, const_cast<void**>(reinterpret_cast<const void**>(&symbol)),
              RTLD_DL_SYMENT) != 0 &&
      symbol && (symbol->st_info & 0xF) == STT_OBJECT) {
    return nullptr;
  }
#endif
  return address;
}

std::filesystem::path AbsolutePath(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? std::filesystem::path("./") / path : absolute;
}

std::vector<std::string> ProgramArguments(int count, char** given) {
  return {given, given + count};
}

void WriteToStandardError(std::string_view text) noexcept {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace orxprint
