// Reads bits from the front of a buffer, the high bit of each byte first.
//
// Behind the end of the data come zeros without end, so that looking ahead needs no care; bits that
// were skipped there show as an overrun.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace orxframework {

class BitReader {
public:
  explicit BitReader(std::span<const unsigned char> data) noexcept
      : next(data.data()), end(data.data() + data.size()) {}

  // The next bits as a number. REQUIRES: 1 <= count <= 32.
  [[nodiscard]] unsigned Peek(unsigned count) noexcept {
    if (available < 32) Refill();
    return static_cast<unsigned>(buffer >> (64 - count));
  }
  // REQUIRES: count is not above what was peeked at.
  void Skip(unsigned count) noexcept {
    buffer <<= count;
    available -= static_cast<int>(count);
  }
  [[nodiscard]] bool IsOverrun() const noexcept { return available < 0; }

private:
  void Refill() noexcept {
    for (; available >= 0 && available <= 56 && next != end; available += 8) {
      buffer |= std::uint64_t{*next++} << (56 - available);
    }
  }

  const unsigned char* next;
  const unsigned char* end;
  std::uint64_t buffer = 0;  // its high bits are next; those behind `available` are 0
  int available = 0;         // bits of data in the buffer, less those skipped behind the end
};

}  // namespace orxframework
