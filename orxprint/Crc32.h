// The common CRC-32 (reflected polynomial 0xEDB88320), by which the trace names image samples.
#pragma once

#include <cstdint>
#include <span>

namespace orxprint {

[[nodiscard]] std::uint32_t Crc32(std::span<const unsigned char> bytes) noexcept;

}  // namespace orxprint
