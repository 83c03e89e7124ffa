// Base-85 text, for documents and as an oracle.
//
// Written for clearness and never with the short form of four zero bytes, so decoders are tested
// against an encoder that shares no code with them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace orxtests {

// Base-85 text with its end marker and a newline.
inline std::string Base85(std::string_view bytes) {
  std::string text;
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(4, bytes.size()))) {
    const std::size_t count = std::min<std::size_t>(4, bytes.size());
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      group = group << 8 | (i < count ? static_cast<unsigned char>(bytes[i]) : 0U);
    }
    char digits[5];
    for (int i = 4; i >= 0; --i, group /= 85) digits[i] = static_cast<char>('!' + group % 85);
    text.append(digits, count + 1);
  }
  return text + "~>\n";
}

}  // namespace orxtests
