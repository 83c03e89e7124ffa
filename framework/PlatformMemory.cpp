// The operating system's word on memory: Linux, with containers of either cgroup version,
// Windows, and the memory of a WebAssembly program. Other systems say nothing.
#include <algorithm>
#include <cstdint>

#include "framework/MemoryMeter.h"

#if defined(_WIN32)
// The order matters: the second needs the first.
#  include <windows.h>

#  include <malloc.h>
#  include <psapi.h>
#else
#  include <unistd.h>
#endif

#if defined(__EMSCRIPTEN__)
#  include <emscripten/heap.h>
#endif

#if defined(__linux__)
#  include <fcntl.h>
#  include <malloc.h>

#  include <charconv>
#  include <exception>
#  include <fstream>
#  include <string>
#  include <string_view>
#endif

namespace orxframework {

#if defined(_WIN32)

std::uint64_t ResidentMemory() noexcept {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
  return counters.WorkingSetSize;
}

std::uint64_t AvailableMemory() noexcept {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof status;
  return GlobalMemoryStatusEx(&status) ? status.ullTotalPhys : 0;
}

#elif defined(__linux__)

namespace {

// The second of the numbers in the file of page counts: resident pages. The file is opened anew
// each time, because an open one tells of the process that opened it, and children inherit it.
std::uint64_t ResidentPages() noexcept {
  const int descriptor = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return 0;
  char text[128];
  const ssize_t length = read(descriptor, text, sizeof text);
  close(descriptor);
  if (length <= 0) return 0;
  const char* end = text + length;
  const char* number = std::find<const char*>(text, end, ' ');
  std::uint64_t pages = 0;
  if (number != end) std::from_chars(number + 1, end, pages);
  return pages;
}

std::uint64_t PageBytes() noexcept {
  const long bytes = sysconf(_SC_PAGESIZE);
  return bytes > 0 ? static_cast<std::uint64_t>(bytes) : 0;
}

// The number in a limit file; no limit when there is no file or it says "max".
std::uint64_t LimitIn(const std::string& path) {
  std::ifstream file(path);
  std::uint64_t limit = 0;
  return file >> limit ? limit : UINT64_MAX;
}

// The least limit of a control group and all those that it lies in.
std::uint64_t LimitOfGroup(const std::string& root, std::string group, const char* fileName) {
  std::uint64_t least = UINT64_MAX;
  while (true) {
    least = std::min(least, LimitIn(root + group + "/" + fileName));
    const std::size_t slash = group.rfind('/');
    if (slash == std::string::npos) return least;
    group.resize(slash);
  }
}

// Whether a comma-separated list of controllers names the memory controller.
bool NamesMemory(std::string_view controllers) {
  while (!controllers.empty()) {
    const std::size_t comma = std::min(controllers.find(','), controllers.size());
    if (controllers.substr(0, comma) == "memory") return true;
    controllers.remove_prefix(std::min(comma + 1, controllers.size()));
  }
  return false;
}

// The limit of the container. A line of the list of groups reads ID:CONTROLLERS:GROUP, and the
// second version of control groups leaves the controllers empty.
std::uint64_t ContainerLimit() {
  std::ifstream groups("/proc/self/cgroup");
  std::uint64_t least = UINT64_MAX;
  for (std::string line; std::getline(groups, line);) {
    const std::size_t first = line.find(':');
    const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
    if (second == std::string::npos) continue;
    const std::string controllers = line.substr(first + 1, second - first - 1);
    const std::string group = line.substr(second + 1);
    if (controllers.empty()) {
      least = std::min(least, LimitOfGroup("/sys/fs/cgroup", group, "memory.max"));
    } else if (NamesMemory(controllers)) {
      least =
          std::min(least, LimitOfGroup("/sys/fs/cgroup/memory", group, "memory.limit_in_bytes"));
    }
  }
  return least;
}

}  // namespace

std::uint64_t ResidentMemory() noexcept {
  static const std::uint64_t pageBytes = PageBytes();
  return ResidentPages() * pageBytes;
}

std::uint64_t AvailableMemory() noexcept {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const std::uint64_t machine = pages > 0 ? static_cast<std::uint64_t>(pages) * PageBytes() : 0;
  try {
    const std::uint64_t container = ContainerLimit();
    return machine == 0 && container == UINT64_MAX ? 0
           : machine == 0                          ? container
                                                   : std::min(machine, container);
  } catch (const std::exception&) {
    return machine;
  }
}

#elif defined(__EMSCRIPTEN__)

// What the allocator has taken; it gives nothing back.
std::uint64_t ResidentMemory() noexcept { return reinterpret_cast<std::uintptr_t>(sbrk(0)); }
std::uint64_t AvailableMemory() noexcept { return emscripten_get_heap_max(); }

#else

std::uint64_t ResidentMemory() noexcept { return 0; }
std::uint64_t AvailableMemory() noexcept { return 0; }

#endif

#if defined(_WIN32)

void ReleaseFreeMemory() noexcept { _heapmin(); }
std::int64_t ProcessNumber() noexcept { return GetCurrentProcessId(); }

#else

void ReleaseFreeMemory() noexcept {
#  if defined(__GLIBC__)
  malloc_trim(0);
#  endif
}
std::int64_t ProcessNumber() noexcept { return getpid(); }

#endif

}  // namespace orxframework
