// An open file of the operating system, and the few ways in which this program reads and writes
// one: at a place of its own, or waiting no longer than a deadline for the other end. Bytes are
// never translated, except that consoles are shown text.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace orxprint {

using Clock = std::chrono::steady_clock;
using Deadline = std::optional<Clock::time_point>;  // none: as long as it takes

[[nodiscard]] inline bool IsOver(const Deadline& deadline) {
  return deadline && Clock::now() >= *deadline;
}

// Owns the descriptor that it holds, if any.
class Descriptor {
public:
  Descriptor() noexcept = default;
  explicit Descriptor(int number) noexcept : handle(number) {}
  Descriptor(Descriptor&& other) noexcept : handle(std::exchange(other.handle, kNone)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(handle, other.handle);
    return *this;
  }
  ~Descriptor() { Close(); }

  [[nodiscard]] bool IsOpen() const noexcept { return handle != kNone; }
  [[nodiscard]] int Number() const noexcept { return handle; }
  // 0, or the errno value: a file system may tell only here that it took not everything.
  int Close() noexcept;

private:
  static constexpr int kNone = -1;
  int handle = kNone;
};

// What a call of the system came to; `error` is an errno value, 0 for none.
struct Transfer {
  std::size_t count = 0;
  int error = 0;
};

// Another descriptor of standard input; not open, with errno set, when there is none.
[[nodiscard]] Descriptor OpenStandardInput();

// Bytes of a file from `offset` on; fewer than asked for at its end or before an error.
[[nodiscard]] Transfer ReadAt(int file, std::uint64_t offset, char* buffer, std::size_t size);
// The bytes that are there, at least one unless the other end is closed; EAGAIN when there are none
// yet and the file does not wait for them.
[[nodiscard]] Transfer ReadSome(int file, char* buffer, std::size_t size);

// Whether the file can be read without waiting, looked at for at most `patience`.
[[nodiscard]] bool WaitForInput(int file, std::chrono::milliseconds patience);

// Writes everything and answers 0, or the errno value. What a console shows is UTF-8. Waits for a
// slow reader no longer than to the deadline: ETIMEDOUT.
[[nodiscard]] int WriteAll(int file, std::string_view bytes, const Deadline& deadline);

// The number behind names that mean a descriptor of this process, such as /dev/stdout and
// /dev/fd/3 where the system has such; "-" is standard output.
[[nodiscard]] std::optional<int> DescriptorOfName(std::string_view name);

// An errno value in words.
[[nodiscard]] inline std::string ErrorText(int error) {
  return std::generic_category().message(error);
}

}  // namespace orxprint
