#include "orxprint/Descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>

namespace orxprint {

namespace {

// A pipe that has room at all takes this much without waiting.
constexpr std::size_t kBytesThatNeverWait = PIPE_BUF;

// Files always take what they are given at once; pipes, terminals and sockets may not.
bool MayWait(int file) {
  struct stat status {};
  return fstat(file, &status) != 0 || !S_ISREG(status.st_mode);
}

int MillisecondsUntil(Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, INT_MAX));
}

// 0 when the file takes bytes, or the errno value.
int WaitForRoom(int file, Clock::time_point deadline) {
  pollfd waiting{file, POLLOUT, 0};
  while (true) {
    const int ready = poll(&waiting, 1, MillisecondsUntil(deadline));
    if (ready > 0) return 0;
    if (ready == 0) return ETIMEDOUT;
    if (errno != EINTR) return errno;
  }
}

}  // namespace

int Descriptor::Close() noexcept {
  if (handle == kNone) return 0;
  return close(std::exchange(handle, kNone)) == 0 ? 0 : errno;
}

Descriptor OpenStandardInput() { return Descriptor(dup(STDIN_FILENO)); }

Transfer ReadAt(int file, std::uint64_t offset, char* buffer, std::size_t size) {
  Transfer done;
  while (done.count < size) {
    const ssize_t count = pread(file, buffer + done.count, size - done.count,
                                static_cast<off_t>(offset + done.count));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) done.error = errno;
    if (count <= 0) break;
    done.count += static_cast<std::size_t>(count);
  }
  return done;
}

Transfer ReadSome(int file, char* buffer, std::size_t size) {
  ssize_t count = 0;
  do {
    count = read(file, buffer, size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) return {0, errno};
  return {static_cast<std::size_t>(count), 0};
}

bool WaitForInput(int file, std::chrono::milliseconds patience) {
  pollfd waiting{file, POLLIN, 0};
  return poll(&waiting, 1, static_cast<int>(patience.count())) > 0;
}

int WriteAll(int file, std::string_view bytes, const Deadline& deadline) {
  const bool isPatient = !deadline || !MayWait(file);
  while (!bytes.empty()) {
    std::size_t size = bytes.size();
    if (!isPatient) {
      const int error = WaitForRoom(file, *deadline);
      if (error != 0) return error;
      size = std::min(size, kBytesThatNeverWait);
    }
    const ssize_t count = write(file, bytes.data(), size);
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      const int error = WaitForRoom(file, Clock::now() + std::chrono::hours(1));
      if (error != 0 && error != ETIMEDOUT) return error;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

std::optional<int> DescriptorOfName(std::string_view name) {
  if (name == "-" || name == "/dev/stdout") return STDOUT_FILENO;
  if (name == "/dev/stderr") return STDERR_FILENO;
  for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
    if (!name.starts_with(folder)) continue;
    int number = 0;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + folder.size(), end, number);
    if (error == std::errc() && stop == end && number >= 0) return number;
  }
  return std::nullopt;
}

}  // namespace orxprint
