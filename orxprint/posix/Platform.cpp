#include "orxprint/Platform.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
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

extern "C" char** environ;  // NOLINT(readability-redundant-declaration): only GNU declares it

namespace orxprint {

namespace {

// Finds the program in the usual folders; 0 when it cannot be started.
pid_t StartQuietly(char* const* words) {
  posix_spawn_file_actions_t actions;
  if (posix_spawn_file_actions_init(&actions) != 0) return 0;
  pid_t child = 0;
  const bool isStarted =
      posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
      posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0) == 0 &&
      posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO) == 0 &&
      posix_spawnp(&child, words[0], &actions, nullptr, words, environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  return isStarted ? child : 0;
}

}  // namespace

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
  // NOLINTNEXTLINE(performance-no-int-to-ptr): it gives the address as a number
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

bool ShowOnDesktop(const std::filesystem::path& file) {
#if defined(__APPLE__)
  std::string program = "open";
#else
  std::string program = "xdg-open";
#endif
  std::string name = file.string();
  char* const words[] = {program.data(), name.data(), nullptr};
  const pid_t child = StartQuietly(words);
  if (child == 0) return false;
  // It hands the file on and ends; where it is the browser itself, it stays.
  constexpr std::chrono::milliseconds kPatience(50);
  constexpr int kMostLooks = 100;
  int status = 0;
  for (int look = 0; look < kMostLooks; ++look) {
    if (waitpid(child, &status, WNOHANG) != 0) return status == 0;
    std::this_thread::sleep_for(kPatience);
  }
  return true;
}

std::vector<std::string> ProgramArguments(int count, char** given) {
  return {given, given + count};
}

void WriteToStandardError(std::string_view text) noexcept {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace orxprint
