#include "drawing/Text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace orxdrawing {

namespace {

struct Decoded {
  std::uint32_t code = 0;
  std::size_t length = 0;  // 0: not UTF-8
};

// The first character of a text.
Decoded DecodeFirst(std::string_view text) {
  if (text.empty()) return {};
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {};
  std::uint32_t code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return {};
    code = code << 6 | (byte & 0x3FU);
  }
  constexpr std::uint32_t kLeastOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kLeastOfLength[length] || code > 0x10FFFF || isSurrogate) return {};
  return {code, length};
}

bool ChangesDirection(std::uint32_t code) {
  return code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

// C0, DEL and C1: a terminal obeys them.
bool IsControl(std::uint32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

void AppendEscape(std::string& text, const char* format, unsigned value) {
  char escape[16];
  std::snprintf(escape, sizeof escape, format, value);
  text += escape;
}

}  // namespace

void AppendFloat(std::string& text, float value) {
  if (std::isnan(value)) {
    text += "nan";  // whatever its sign
    return;
  }
  char digits[32];
  const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value);
  text.append(digits, result.ptr);
}

std::string WithCommas(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
  return text;
}

std::string ShortNumber(double value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.6g", value);
  return digits;
}

std::string EscapeForTerminal(std::string_view text) {
  std::string harmless;
  while (!text.empty()) {
    const Decoded character = DecodeFirst(text);
    const std::size_t length = character.length ? character.length : 1;
    if (!character.length || character.code < 0x20 || character.code == 0x7F) {
      AppendEscape(harmless, "\\x%02x", static_cast<unsigned char>(text[0]));
    } else if (IsControl(character.code) || ChangesDirection(character.code)) {
      AppendEscape(harmless, "\\u%04x", character.code);
    } else {
      harmless += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return harmless;
}

std::string ToUtf8(std::string_view text) {
  bool isUtf8 = true;
  std::string_view rest = text;
  while (isUtf8 && !rest.empty()) {
    const std::size_t length = DecodeFirst(rest).length;
    isUtf8 = length > 0;
    rest.remove_prefix(length);
  }
  std::string result;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7F) {
      result += ' ';
    } else if (byte < 0x80 || isUtf8) {
      result += character;
    } else {
      result += static_cast<char>(0xC0 | byte >> 6);
      result += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return result;
}

std::string_view Shortened(std::string_view text, std::size_t mostBytes) {
  if (text.size() <= mostBytes) return text;
  std::size_t size = mostBytes;
  constexpr std::size_t kMostTrailing = 3;
  while (size > 0 && mostBytes - size < kMostTrailing &&
         (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) {
    --size;
  }
  return text.substr(0, size);
}

std::string QuoteForJson(std::string_view text) {
  std::string quoted = "\"";
  while (!text.empty()) {
    const Decoded character = DecodeFirst(text);
    const std::size_t length = character.length ? character.length : 1;
    if (!character.length) {
      quoted += "\uFFFD";
    } else if (IsControl(character.code)) {
      AppendEscape(quoted, "\\u%04x", character.code);
    } else {
      if (character.code == '"' || character.code == '\\') quoted += '\\';
      quoted += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return quoted += '"';
}

}  // namespace orxdrawing
