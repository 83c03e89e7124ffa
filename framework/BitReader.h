// Reads bits from the front of a buffer, the high bit of each byte first.
//
// Behind the end of the data come zeros without end, so that looking ahead needs no care; bits that
// were skipped there show as an overrun.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace orxframework {

// The bits at hand are refilled only when asked, so that codes which fit into what is there cost no
// look at the data.
class BitReader {
public:
  static constexpr unsigned kRefilledBits = 56;

  explicit BitReader(std::span<const unsigned char> data) noexcept
      : next(data.data()), end(data.data() + data.size()) {}

  // From here on at least kRefilledBits can be peeked at and skipped.
  void Refill() noexcept {
    if (end - next >= 8 && available >= 0) {
      // The bits behind the last whole byte come again with the next refill, as the same bits.
      buffer |= BigEndian64(next) >> available;
      next += (63 - available) >> 3;
      available |= 56;
    } else {
      for (; available >= 0 && available <= 56 && next != end; available += 8) {
        buffer |= std::uint64_t{*next++} << (56 - available);
      }
    }
  }
  // The next bits as a number. REQUIRES: 1 <= count, and no more than since Refill, here and below.
  [[nodiscard]] unsigned Peek(unsigned count) const noexcept {
    return static_cast<unsigned>(buffer >> (64 - count));
  }
  // How many of the next bits are 1.
  [[nodiscard]] unsigned CountOnes() const noexcept {
    return static_cast<unsigned>(std::countl_one(buffer));
  }
  void Skip(unsigned count) noexcept {
    buffer <<= count;
    available -= static_cast<int>(count);
  }
  [[nodiscard]] bool IsOverrun() const noexcept { return available < 0; }

private:
  static std::uint64_t BigEndian64(const unsigned char* bytes) noexcept {
    const auto byteAt = [bytes](int i) { return std::uint64_t{bytes[i]}; };
    return byteAt(0) << 56 | byteAt(1) << 48 | byteAt(2) << 40 | byteAt(3) << 32 | byteAt(4) << 24 |
           byteAt(5) << 16 | byteAt(6) << 8 | byteAt(7);
  }

  const unsigned char* next;
  const unsigned char* end;
  std::uint64_t buffer = 0;  // its high bits are next
  int available = 0;         // bits of data in the buffer, less those skipped behind the end
};

}  // namespace orxframework
