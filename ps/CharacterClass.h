// What the scanner tells bytes apart by.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orxeps {

enum class ByteKind : std::uint8_t { Other, Regular, Delimiter, WhiteSpace };

struct ByteClass {
  ByteKind kind = ByteKind::Other;
  bool isNumeric = false;     // may be part of a number: a digit or one of + - . E e
  bool namesComment = false;  // kept of a comment: what regular bytes are, but digits and dots
  bool beginsBinary = false;  // 128 to 159 begin a token of the binary encoding
};

namespace detail {

constexpr std::array<ByteClass, 256> MakeByteClasses() {
  std::array<ByteClass, 256> classes{};
  const auto at = [&classes](char c) -> ByteClass& {
    return classes[static_cast<unsigned char>(c)];
  };
  for (char c = 'a'; c <= 'z'; ++c) at(c) = {ByteKind::Regular, false, true, false};
  for (char c = 'A'; c <= 'Z'; ++c) at(c) = {ByteKind::Regular, false, true, false};
  for (const char c : std::string_view("!#$&*+,-:;=?^_~@`")) {
    at(c) = {ByteKind::Regular, false, true, false};
  }
  for (const char c : std::string_view("0123456789."))
    at(c) = {ByteKind::Regular, true, false, false};
  for (const char c : std::string_view("+-Ee")) at(c).isNumeric = true;
  for (const char c : std::string_view("%()/<>[\\]{}")) at(c).kind = ByteKind::Delimiter;
  for (const char c : std::string_view(" \t\n\v\f\r")) at(c).kind = ByteKind::WhiteSpace;
  for (int byte = 128; byte <= 159; ++byte)
    classes[static_cast<std::size_t>(byte)].beginsBinary = true;
  return classes;
}

inline constexpr std::array<ByteClass, 256> kByteClasses = MakeByteClasses();

}  // namespace detail

[[nodiscard]] constexpr const ByteClass& ClassOf(char byte) noexcept {
  return detail::kByteClasses[static_cast<unsigned char>(byte)];
}

}  // namespace orxeps
