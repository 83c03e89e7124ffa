// The common cyclic redundancy check of 32 bits (ISO 3309, polynomial 04C11DB7 taken from the low
// end), so that a trace needs no library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace orxdrawing {

[[nodiscard]] inline std::uint32_t Crc32(std::span<const unsigned char> bytes) noexcept {
  static constexpr auto kTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
      auto entry = static_cast<std::uint32_t>(i);
      for (int bit = 0; bit < 8; ++bit) entry = entry >> 1 ^ ((entry & 1) != 0 ? 0xedb88320U : 0U);
      table[i] = entry;
    }
    return table;
  }();
  std::uint32_t check = 0xffffffff;
  for (const unsigned char byte : bytes) check = check >> 8 ^ kTable[(check ^ byte) & 0xff];
  return ~check;
}

}  // namespace orxdrawing
