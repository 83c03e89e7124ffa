#include "ps/Numbers.h"

#include <charconv>
#include <iterator>
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

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

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

// Few digits and a small power of ten are exact in a double, and their quotient is the nearest.
ShortNumber ParseShortNumber(std::string_view text) noexcept {
  const char* next = text.data();
  const char* const end = next + text.size();
  const bool negative = next != end && *next == '-';
  if (next != end && (negative || *next == '+')) ++next;
  const char* const first = next;
  if (end - first >= std::ssize(kPowersOfTen)) return {};
  std::int64_t digits = 0;
  const char* behindPoint = nullptr;
  for (; next != end; ++next) {
    if (IsDigit(*next)) {
      digits = digits * 10 + (*next - '0');
    } else if (*next == '.' && !behindPoint) {
      behindPoint = next + 1;
    } else {
      return {};
    }
  }
  if (behindPoint) {
    if (end - first < 2) return {};
    const double value = static_cast<double>(digits) / kPowersOfTen[end - behindPoint];
    return {true, true, 0, static_cast<float>(negative ? -value : value)};
  }
  const bool isPlain = digits != 0 || text == "0";
  if (!isPlain || digits > std::numeric_limits<std::int32_t>::max()) return {};
  return {true, false, static_cast<std::int32_t>(negative ? -digits : digits), 0.0F};
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
