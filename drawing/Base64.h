// Bytes as letters, digits, plus and slash (RFC 4648), in pieces of any length.
//
// One encoder takes one run of bytes: add its pieces in order, then finish; what each call
// gives is appended to the text. It keeps at most two bytes and owns nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orxdrawing {

class Base64Encoder {
public:
  // The text of the bytes so far but for the last one or two of a group of three.
  [[nodiscard]] std::string Add(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() / 3 * 4 + 8);
    for (const char byte : bytes) {
      group = group << 8 | static_cast<unsigned char>(byte);
      if (++count == 3) EndGroup(text, 4);
    }
    return text;
  }
  // The text of the rest.
  [[nodiscard]] std::string Finish() {
    std::string text;
    if (count == 0) return text;
    const int letters = count + 1;
    group <<= 8 * (3 - count);
    EndGroup(text, letters);
    text.append(static_cast<std::size_t>(4 - letters), '=');
    return text;
  }

private:
  void EndGroup(std::string& text, int letters) {
    static constexpr char kLetters[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int i = 0; i < letters; ++i) text += kLetters[group >> (18 - 6 * i) & 63];
    group = 0;
    count = 0;
  }

  std::uint32_t group = 0;
  int count = 0;  // bytes in the group
};

}  // namespace orxdrawing
