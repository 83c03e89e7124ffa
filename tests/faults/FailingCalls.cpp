// Preloaded into orxprint: makes calls of the system fail as the variable ORX_FAULTS says. It holds
// entries such as "pread:5:5", the fifth pread and all behind it fail with errno 5, with blanks
// between them. The names are those of the functions; "tmpfile" is an open of a nameless file.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

struct Fault {
  explicit Fault(const char* name) {
    const char* faults = std::getenv("ORX_FAULTS");
    std::istringstream entries(faults ? faults : "");
    for (std::string entry; entries >> entry;) {
      const std::size_t colon = entry.find(':');
      if (entry.substr(0, colon) != name) continue;
      char* rest = nullptr;
      first = std::strtol(entry.c_str() + colon + 1, &rest, 10);
      error = static_cast<int>(std::strtol(rest + 1, nullptr, 10));
    }
  }
  bool Strikes() {
    if (first == 0 || ++calls < first) return false;
    errno = error;
    return true;
  }

  long first = 0;
  int error = 0;
  std::atomic<long> calls = 0;
};

template <typename Function>
Function Next(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t pread(int file, void* buffer,
                                                                size_t count, off_t offset) {
  static Fault fault("pread");
  static const auto next = Next<ssize_t (*)(int, void*, size_t, off_t)>("pread");
  return fault.Strikes() ? -1 : next(file, buffer, count, offset);
}

extern "C" __attribute__((visibility("default"))) int fsync(int file) {
  static Fault fault("fsync");
  static const auto next = Next<int (*)(int)>("fsync");
  return fault.Strikes() ? -1 : next(file);
}

extern "C" __attribute__((visibility("default"))) int open(const char* path, int flags, ...) {
  static Fault fault("tmpfile");
  static const auto next = Next<int (*)(const char*, int, ...)>("open");
  va_list arguments;
  va_start(arguments, flags);
  const auto mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return (flags & O_TMPFILE) == O_TMPFILE && fault.Strikes() ? -1 : next(path, flags, mode);
}
