// Reading numbers as the C library's atoi and atof read them, in every locale alike: a point is
// always the decimal separator. Both read the longest prefix that is a number, 0 if none is.
#pragma once

#include <cstdint>
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

// A decimal number as nearly all are written: a sign or none, few digits, a point or none. Anything
// else, a 0 that is not just "0" included, is not valid here and may still be a number.
struct ShortNumber {
  bool isValid = false;
  bool isReal = false;
  std::int32_t intValue = 0;
  float realValue = 0.0F;
};
[[nodiscard]] ShortNumber ParseShortNumber(std::string_view text) noexcept;

}  // namespace orxeps
