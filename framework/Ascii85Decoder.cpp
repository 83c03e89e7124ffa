// ASCII base-85 decoding: five digits "!" to "u" for four bytes, "z" for four zero bytes.
//
// One pass counts what there is, which gives the exact size of the result and finds foreign
// characters; the second decodes, five digits at a time where they stand together.
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

#include "framework/DecodedBuffer.h"
#include "host/ORXRasterDecoders.h"

using orxframework::DecodedBuffer;

namespace {

constexpr unsigned char kFirstDigit = '!';
constexpr unsigned kBase = 85;

constexpr bool IsDigit(unsigned char c) noexcept {
  return static_cast<unsigned char>(c - kFirstDigit) < kBase;
}

constexpr bool IsWhiteSpace(unsigned char c) noexcept {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

// The text in front of "~>", or nothing without that marker.
std::optional<std::span<const unsigned char>> TextBeforeMarker(const unsigned char* in,
                                                               std::size_t length) noexcept {
  const void* found = length != 0 ? std::memchr(in, '~', length) : nullptr;
  if (!found) return std::nullopt;
  const auto count = static_cast<std::size_t>(static_cast<const unsigned char*>(found) - in);
  if (count + 1 >= length || in[count + 1] != '>') return std::nullopt;
  return std::span(in, count);
}

struct Census {
  std::size_t digits = 0;
  std::size_t zeroGroups = 0;
  std::size_t whiteSpace = 0;

  [[nodiscard]] std::size_t DecodedBytes() const noexcept {
    const std::size_t rest = digits % 5;
    return 4 * zeroGroups + digits / 5 * 4 + (rest != 0 ? rest - 1 : 0);
  }
};

Census Count(std::span<const unsigned char> text) noexcept {
  Census census;
  for (const unsigned char c : text) {
    census.digits += IsDigit(c) ? 1 : 0;
    census.zeroGroups += c == 'z' ? 1 : 0;
    census.whiteSpace += IsWhiteSpace(c) ? 1 : 0;
  }
  return census;
}

// Writes the high `count` bytes of a group; false if the group is above 2^32-1.
bool WriteGroup(std::uint64_t group, std::size_t count, unsigned char*& to) noexcept {
  if (group > UINT32_MAX) return false;
  for (std::size_t i = 0; i < count; ++i) {
    *to++ = static_cast<unsigned char>(group >> (24 - 8 * i));
  }
  return true;
}

// The value of five characters, or more than 2^32-1 if they are not five digits.
std::uint64_t FiveDigits(const unsigned char* text) noexcept {
  std::uint64_t group = 0;
  bool areDigits = true;
  for (int i = 0; i < 5; ++i) {
    areDigits &= IsDigit(text[i]);
    group = group * kBase + static_cast<unsigned char>(text[i] - kFirstDigit);
  }
  return areDigits ? group : UINT64_MAX;
}

// Decodes as many whole groups without white space as stand at the front, and drops them.
void DecodeTightGroups(std::span<const unsigned char>& text, unsigned char*& to) noexcept {
  const unsigned char* from = text.data();
  const unsigned char* end = from + text.size();
  while (from != end) {
    if (*from == 'z') {
      WriteGroup(0, 4, to);
      ++from;
    } else if (end - from >= 5 && WriteGroup(FiveDigits(from), 4, to)) {
      from += 5;
    } else {
      break;
    }
  }
  text = {from, end};
}

// Decodes text of digits, "z" and white space only. `to` has the room that its census gives.
bool Decode(std::span<const unsigned char> text, unsigned char* to) noexcept {
  std::uint64_t group = 0;
  std::size_t digits = 0;
  while (true) {
    if (digits == 0) DecodeTightGroups(text, to);
    if (text.empty()) break;
    const unsigned char c = text.front();
    text = text.subspan(1);
    if (c == 'z') return false;  // inside a group, as those between groups are decoded already
    if (!IsDigit(c)) continue;
    group = group * kBase + (c - kFirstDigit);
    if (++digits < 5) continue;
    if (!WriteGroup(group, 4, to)) return false;
    group = 0;
    digits = 0;
  }
  if (digits == 0) return true;
  if (digits == 1) return false;
  // The missing digits count as the largest one, which makes the bytes kept come out right.
  for (std::size_t i = digits; i < 5; ++i) group = group * kBase + (kBase - 1);
  return WriteGroup(group, digits - 1, to);
}

}  // namespace

int ASCII85Decode(const unsigned char* in, unsigned int length, unsigned char*& out,
                  unsigned int& outLength, int /*reserved*/) noexcept {
  out = nullptr;
  outLength = 0;
  const auto text = TextBeforeMarker(in, length);
  if (!text) return -1;
  const Census census = Count(*text);
  if (census.digits + census.zeroGroups + census.whiteSpace != text->size()) return -1;
  DecodedBuffer decoded = orxframework::MakeDecodedBuffer(census.DecodedBytes());
  if (!decoded || !Decode(*text, decoded.get())) return -1;
  out = decoded.release();
  outLength = static_cast<unsigned>(census.DecodedBytes());
  return 0;
}
