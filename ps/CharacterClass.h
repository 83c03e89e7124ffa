// What the scanner tells bytes apart by: one table of 256 entries, made by the compiler.
//
// A byte has any number of traits, so one look answers several questions about it. The language's
// own classes - regular, delimiter, white space, other - do not overlap; the other traits cut
// across them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orxeps {

// Traits of a byte, as bits.
enum ByteTrait : std::uint8_t {
  kRegular = 1,        // may be part of a name or a number
  kDelimiter = 2,      // a token of its own
  kWhiteSpace = 4,     //
  kNumeric = 8,        // may be part of a number: a digit or one of + - . E e
  kNamesComment = 16,  // kept of a comment: what regular bytes are, but digits and dots
  kBlank = 64,         // skipped outside of strings: white space but the newline, bytes of no class
  kBeginsBinary = 32,  // 128 to 159 begin a token of the binary encoding
};

namespace detail {

constexpr std::array<std::uint8_t, 256> MakeByteTraits() {
  std::array<std::uint8_t, 256> traits{};
  const auto add = [&traits](std::string_view bytes, unsigned trait) {
    for (const char c : bytes) {
      auto& entry = traits[static_cast<unsigned char>(c)];
      entry = static_cast<std::uint8_t>(entry | trait);
    }
  };
  add("abcdefghijklmnopqrstuvwxyz", kRegular | kNamesComment);
  add("ABCDEFGHIJKLMNOPQRSTUVWXYZ", kRegular | kNamesComment);
  add("!#$&*+,-:;=?^_~@`", kRegular | kNamesComment);
  add("0123456789.", kRegular | kNumeric);
  add("+-Ee", kNumeric);
  add("%()/<>[\\]{}", kDelimiter);
  add(" \t\n\v\f\r", kWhiteSpace);
  for (std::size_t byte = 128; byte <= 159; ++byte) traits[byte] = kBeginsBinary;
  for (std::uint8_t& entry : traits) {
    if (entry == 0 || entry == kWhiteSpace) entry = static_cast<std::uint8_t>(entry | kBlank);
  }
  traits['\n'] = kWhiteSpace;
  return traits;
}

inline constexpr std::array<std::uint8_t, 256> kByteTraits = MakeByteTraits();

}  // namespace detail

[[nodiscard]] constexpr std::uint8_t TraitsOf(char byte) noexcept {
  return detail::kByteTraits[static_cast<unsigned char>(byte)];
}
[[nodiscard]] constexpr bool Is(char byte, ByteTrait trait) noexcept {
  return (TraitsOf(byte) & trait) != 0;
}

}  // namespace orxeps
