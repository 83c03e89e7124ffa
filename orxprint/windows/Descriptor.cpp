#include "orxprint/Descriptor.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <future>
#include <memory>
#include <system_error>
#include <thread>

#include "orxprint/windows/Text.h"

namespace orxprint {

namespace {

constexpr std::size_t kMostBytesAtOnce = std::size_t{1} << 20;
constexpr std::size_t kMostTextAtOnce = std::size_t{8} << 10;  // what every console takes
constexpr auto kBetweenLooks = std::chrono::milliseconds(5);

// The system's own handle, past the C library, which would translate line ends.
HANDLE HandleOf(int file) { return reinterpret_cast<HANDLE>(_get_osfhandle(file)); }

DWORD Portion(std::size_t size) { return static_cast<DWORD>(std::min(size, kMostBytesAtOnce)); }

bool IsConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

// How many bytes a console is shown at once, no character cut.
std::size_t TextPortion(std::string_view text) {
  if (text.size() <= kMostTextAtOnce) return text.size();
  std::size_t size = kMostTextAtOnce;
  while (size > kMostTextAtOnce - 4 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80) {
    --size;
  }
  return size;
}

int WriteToConsole(HANDLE console, std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = TextPortion(text);
    const std::wstring wide = WideText(text.substr(0, size));
    DWORD written = 0;
    if (!WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr)) {
      return TakeLastError();
    }
    text.remove_prefix(size);
  }
  return 0;
}

int WriteNow(HANDLE handle, std::string_view bytes) {
  if (IsConsole(handle)) return WriteToConsole(handle, bytes);
  while (!bytes.empty()) {
    DWORD written = 0;
    if (!WriteFile(handle, bytes.data(), Portion(bytes.size()), &written, nullptr)) {
      return TakeLastError();
    }
    bytes.remove_prefix(written);
  }
  return 0;
}

// A write into a full pipe cannot be given up, so it is left to a thread, and to the end of the
// program when the deadline passes.
int WriteUntil(HANDLE handle, std::string_view bytes, Clock::time_point deadline) {
  std::packaged_task<int()> task(
      [handle, copy = std::string(bytes)] { return WriteNow(handle, copy); });
  std::future<int> result = task.get_future();
  try {
    std::thread(std::move(task)).detach();
  } catch (const std::system_error&) {
    return EAGAIN;
  }
  if (result.wait_until(deadline) == std::future_status::timeout) return ETIMEDOUT;
  return result.get();
}

}  // namespace

int Descriptor::Close() noexcept {
  if (handle == kNone) return 0;
  return _close(std::exchange(handle, kNone)) == 0 ? 0 : errno;
}

Descriptor OpenStandardInput() { return Descriptor(_dup(0)); }

Transfer ReadAt(int file, std::uint64_t offset, char* buffer, std::size_t size) {
  Transfer done;
  while (done.count < size) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset + done.count);
    place.OffsetHigh = static_cast<DWORD>((offset + done.count) >> 32);
    DWORD count = 0;
    if (!ReadFile(HandleOf(file), buffer + done.count, Portion(size - done.count), &count,
                  &place)) {
      if (GetLastError() != ERROR_HANDLE_EOF) done.error = TakeLastError();
      break;
    }
    if (count == 0) break;
    done.count += count;
  }
  return done;
}

Transfer ReadSome(int file, char* buffer, std::size_t size) {
  DWORD count = 0;
  if (ReadFile(HandleOf(file), buffer, Portion(size), &count, nullptr)) return {count, 0};
  // The other end of a pipe was closed.
  if (GetLastError() == ERROR_BROKEN_PIPE) return {};
  return {0, TakeLastError()};
}

bool WaitForInput(int file, std::chrono::milliseconds patience) {
  const HANDLE handle = HandleOf(file);
  if (GetFileType(handle) != FILE_TYPE_PIPE) {
    return !IsConsole(handle) ||
           WaitForSingleObject(handle, static_cast<DWORD>(patience.count())) == WAIT_OBJECT_0;
  }
  const Clock::time_point end = Clock::now() + patience;
  while (true) {
    DWORD available = 0;
    const bool isOpen = PeekNamedPipe(handle, nullptr, 0, nullptr, &available, nullptr) != 0;
    if (!isOpen || available > 0) return true;
    if (Clock::now() >= end) return false;
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

int WriteAll(int file, std::string_view bytes, const Deadline& deadline) {
  const HANDLE handle = HandleOf(file);
  if (!deadline || GetFileType(handle) != FILE_TYPE_PIPE) return WriteNow(handle, bytes);
  return WriteUntil(handle, bytes, *deadline);
}

std::optional<int> DescriptorOfName(std::string_view name) {
  if (name == "-") return 1;
  return std::nullopt;
}

}  // namespace orxprint
