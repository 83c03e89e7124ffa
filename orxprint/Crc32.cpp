#include "orxprint/Crc32.h"

#include <array>

namespace orxprint {

namespace {

constexpr std::size_t kSlices = 8;
using Tables = std::array<std::array<std::uint32_t, 256>, kSlices>;

// Table k gives what a byte contributes when k more bytes follow it.
constexpr Tables MakeTables() {
  Tables tables{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = (remainder & 1) != 0 ? remainder >> 1 ^ 0xEDB88320U : remainder >> 1;
    }
    tables[0][byte] = remainder;
  }
  for (std::size_t slice = 1; slice < kSlices; ++slice) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
      const std::uint32_t before = tables[slice - 1][byte];
      tables[slice][byte] = before >> 8 ^ tables[0][before & 0xFF];
    }
  }
  return tables;
}

constexpr Tables kTables = MakeTables();

}  // namespace

std::uint32_t Crc32(std::span<const unsigned char> bytes) noexcept {
  std::uint32_t state = 0xFFFFFFFFU;
  while (bytes.size() >= kSlices) {
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < kSlices; ++i) {
      const std::uint32_t carried = i < 4 ? state >> (8 * i) & 0xFF : 0;
      next ^= kTables[kSlices - 1 - i][bytes[i] ^ carried];
    }
    state = next;
    bytes = bytes.subspan(kSlices);
  }
  for (const unsigned char byte : bytes) state = state >> 8 ^ kTables[0][(state ^ byte) & 0xFF];
  return ~state;
}

}  // namespace orxprint
