#include "orxprint/Platform.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#if defined(__APPLE__)
#  include <mach-o/dyld.h>
#else
#  include <link.h>
#  include <sys/auxv.h>
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

std::filesystem::path TemporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

Descriptor OpenNamelessFile(const std::filesystem::path& folder) {
#if defined(O_TMPFILE)
  const int nameless = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, 0600);
  if (nameless >= 0) return Descriptor(nameless);
#endif
  std::string name = (folder / "orxprint-XXXXXX").string();
  Descriptor file(mkstemp(name.data()));
  if (file.IsOpen()) unlink(name.c_str());
  return file;
}

void LowerPriority([[maybe_unused]] std::thread& thread) noexcept {
#if defined(SCHED_IDLE)
  const sched_param none = {};
  pthread_setschedparam(thread.native_handle(), SCHED_IDLE, &none);
#endif
}

OpenedLibrary OpenLibrary(const std::filesystem::path& file) {
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle) return {handle, {}};
  const char* error = dlerror();
  return {nullptr, error ? error : "unknown error"};
}

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

}  // namespace orxprint
