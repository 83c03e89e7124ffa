// Reading numbers as the C library's atoi and atof read them, in every locale alike: a point is
// always the decimal separator. Both read the longest prefix that is a number, 0 if none is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>

namespace orxeps {

// An optional sign and digits; leading white space is skipped. Beyond 32 bits the nearest integer
// that there is.
[[nodiscard]] std::int32_t ParseInteger(std::string_view text) noexcept;

// A decimal number with optional sign, fraction and exponent, to the nearest double; infinity when
// it is too large, 0 when it is too small. No white space is skipped.
[[nodiscard]] double ParseReal(std::string_view text) noexcept;

// Hexadecimal digits after an optional "0X", as an unsigned 32-bit number that wraps around.
[[nodiscard]] std::uint32_t ParseHexadecimal(std::string_view text) noexcept;

// A decimal number as nearly all are written: a sign or none, few digits, a point or none.
struct ShortNumber {
  std::size_t length = 0;  // in characters; 0 when the text begins with no such number
  bool isReal = false;
  std::int32_t intValue = 0;
  float realValue = 0.0F;
};

namespace detail {
inline constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
}

// Reads the longest such number that a text begins with; whether the number ends there is the
// caller's to see. Few digits and a small power of ten are exact in a double, and their quotient is
// the nearest. An integer worth 0 is one only as "0".
[[nodiscard]] inline ShortNumber ScanShortNumber(const char* const begin,
                                                 const char* const end) noexcept {
  const char* next = begin;
  const bool negative = *next == '-';
  if (negative || *next == '+') ++next;
  const char* const first = next;
  std::uint64_t digits = 0;
  const char* behindPoint = nullptr;
  for (; next != end; ++next) {
    const unsigned digit = static_cast<unsigned char>(*next) - unsigned{'0'};
    if (digit < 10) {
      digits = digits * 10 + digit;
    } else if (*next == '.' && !behindPoint) {
      behindPoint = next + 1;
    } else {
      break;
    }
  }
  const auto length = static_cast<std::size_t>(next - begin);
  const auto signless = next - first;
  if (signless >= std::ssize(detail::kPowersOfTen)) return {};
  if (behindPoint) {
    if (signless < 2) return {};
    const double value = static_cast<double>(static_cast<std::int64_t>(digits)) /
                         detail::kPowersOfTen[next - behindPoint];
    return {length, true, 0, static_cast<float>(negative ? -value : value)};
  }
  const bool isPlain = digits != 0 || (length == 1 && *begin == '0');
  if (!isPlain || digits > std::numeric_limits<std::int32_t>::max()) return {};
  const auto value = static_cast<std::int32_t>(digits);
  return {length, false, negative ? -value : value, 0.0F};
}

}  // namespace orxeps
