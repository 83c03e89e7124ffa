// A stream in zlib's format (RFC 1950) whose blocks are stored as they are: images need no
// compression on their way from one part of a page to another.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/Deflater.h"

namespace orxweb {

class StoredDeflater final : public orxdrawing::Deflater {
public:
  explicit StoredDeflater(orxdrawing::ByteSink byteSink) : sink(std::move(byteSink)) {
    sink("\x78\x01");
    block.reserve(kMostBlockBytes);
  }

  void Add(std::span<const unsigned char> bytes) override {
    while (!bytes.empty()) {
      const auto count = std::min(bytes.size(), kMostBlockBytes - block.size());
      block.insert(block.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
      if (block.size() == kMostBlockBytes) WriteBlock(0);
      bytes = bytes.subspan(count);
    }
  }
  void Finish() override {
    WriteBlock(1);
    const std::uint32_t check = high << 16 | low;
    Write({static_cast<unsigned char>(check >> 24), static_cast<unsigned char>(check >> 16),
           static_cast<unsigned char>(check >> 8), static_cast<unsigned char>(check)});
  }

private:
  static constexpr std::size_t kMostBlockBytes = 65'535;
  static constexpr std::uint32_t kModulus = 65'521;  // of the check, Adler-32

  void WriteBlock(unsigned char isLast) {
    for (const unsigned char byte : block) {
      low = (low + byte) % kModulus;
      high = (high + low) % kModulus;
    }
    const std::size_t size = block.size();
    Write({isLast, static_cast<unsigned char>(size), static_cast<unsigned char>(size >> 8),
           static_cast<unsigned char>(~size), static_cast<unsigned char>(~size >> 8)});
    Write(block);
    block.clear();
  }
  void Write(const std::vector<unsigned char>& bytes) {
    sink({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }

  orxdrawing::ByteSink sink;
  std::vector<unsigned char> block;
  std::uint32_t low = 1;
  std::uint32_t high = 0;
};

}  // namespace orxweb
