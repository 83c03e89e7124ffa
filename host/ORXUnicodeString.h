// Texts of the string library: the keys of dictionaries, page labels and report lines.
//
// A text built from a byte string has one character per byte, with the byte as its code (0 to
// 255), and shares the bytes: building one costs no more than copying a string.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "host/ORXString.h"

class ORXUnicodeString {
public:
  ORXUnicodeString() noexcept = default;
  ORXUnicodeString(const char* text) : characters(text) {}
  ORXUnicodeString(ORXString text) noexcept : characters(std::move(text)) {}

  // The number written with a printf format for one int, as "%d".
  [[nodiscard]] static ORXUnicodeString BuildFromNum(const char* format, int number) {
    char text[32];
    std::snprintf(text, sizeof text, format, number);
    return {text};
  }

  [[nodiscard]] std::size_t Length() const noexcept { return characters.Length(); }
  [[nodiscard]] bool IsEmpty() const noexcept { return characters.IsEmpty(); }
  // The code of a character, 0 to 255. REQUIRES: position < Length().
  [[nodiscard]] unsigned At(std::size_t position) const noexcept {
    return static_cast<unsigned char>(characters.At(position));
  }
  [[nodiscard]] std::uint32_t Hash() const noexcept { return characters.Hash(); }
  // The characters as bytes.
  [[nodiscard]] const ORXString& Bytes() const noexcept { return characters; }

  void Append(const ORXUnicodeString& tail) { characters.Append(tail.characters.View()); }

  // The text as UTF-8, for whoever shows it.
  [[nodiscard]] std::string ToUtf8() const {
    std::string utf8;
    for (const char byte : characters.View()) {
      const auto code = static_cast<unsigned char>(byte);
      if (code < 0x80) {
        utf8 += byte;
      } else {
        utf8 += static_cast<char>(0xC0 | (code >> 6));
        utf8 += static_cast<char>(0x80 | (code & 0x3F));
      }
    }
    return utf8;
  }

  friend bool operator==(const ORXUnicodeString&, const ORXUnicodeString&) noexcept = default;

private:
  ORXString characters;
};
