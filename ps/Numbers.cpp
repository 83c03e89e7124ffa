#include "ps/Numbers.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace orxeps {

namespace {

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

bool IsSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The digits in front of the decimal point, leading zeros left out, or minus the zeros behind it:
// the decimal exponent of a number too large or too small for a double, without its written one.
std::int64_t LeadingExponent(std::string_view digits) noexcept {
  std::int64_t exponent = 0;
  bool significant = false;
  std::size_t i = 0;
  for (; i < digits.size() && IsDigit(digits[i]); ++i) {
    significant = significant || digits[i] != '0';
    if (significant) ++exponent;
  }
  if (significant || i == digits.size() || digits[i] != '.') return exponent;
  for (++i; i < digits.size() && digits[i] == '0'; ++i) --exponent;
  return exponent;
}

// Whether an unsigned number out of a double's range is too large rather than too small.
bool IsTooLarge(std::string_view number) noexcept {
  const std::size_t e = number.find_first_of("eE");
  std::int64_t written = 0;
  if (e != std::string_view::npos) written = ParseInteger(number.substr(e + 1));
  return LeadingExponent(number.substr(0, e)) + written > 0;
}

}  // namespace

std::int32_t ParseInteger(std::string_view text) noexcept {
  std::size_t i = 0;
  while (i < text.size() && IsSpace(text[i])) ++i;
  const bool negative = i < text.size() && text[i] == '-';
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
  constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > kLargest + 1) value = kLargest + 1;
  }
  if (negative) return static_cast<std::int32_t>(-value);
  return static_cast<std::int32_t>(value > kLargest ? kLargest : value);
}

double ParseReal(std::string_view text) noexcept {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // A second sign would be accepted below.
  if (text.starts_with('-')) return 0.0;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    const std::string_view number(text.data(), static_cast<std::size_t>(end - text.data()));
    value = IsTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
  } else if (error != std::errc()) {
    return 0.0;
  }
  return negative ? -value : value;
}

std::uint32_t ParseHexadecimal(std::string_view text) noexcept {
  if (text.starts_with("0X")) text.remove_prefix(2);
  std::uint32_t value = 0;
  for (const char c : text) {
    std::uint32_t digit = 0;
    if (IsDigit(c)) {
      digit = static_cast<std::uint32_t>(c - '0');
    } else if (c >= 'a' && c <= 'f') {
      digit = static_cast<std::uint32_t>(c - 'a' + 10);
    } else if (c >= 'A' && c <= 'F') {
      digit = static_cast<std::uint32_t>(c - 'A' + 10);
    } else {
      break;
    }
    value = value * 16 + digit;
  }
  return value;
}

}  // namespace orxeps
