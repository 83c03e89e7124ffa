// ASCII base-85 decoding: five digits "!" to "u" for four bytes, "z" for four zero bytes.
//
// One pass counts what there is, which gives the exact size of the result; the second decodes, five
// digits at a time where they stand together, and finds foreign characters on the way.
#include <algorithm>
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

// What a character is worth at each place of a group. A character that is no digit is worth more
// than any group, so that one look at the sum tells five good digits from all else.
constexpr auto kWorth = [] {
  std::array<std::array<std::uint64_t, 256>, 5> worth{};
  std::uint64_t weight = 1;
  for (std::size_t place = worth.size(); place-- > 0; weight *= kBase) {
    worth[place].fill(std::uint64_t{1} << 40);
    for (unsigned digit = 0; digit < kBase; ++digit) {
      worth[place][kFirstDigit + digit] = digit * weight;
    }
  }
  return worth;
}();

// The text in front of "~>", or nothing without that marker.
std::optional<std::span<const unsigned char>> TextBeforeMarker(const unsigned char* in,
                                                               std::size_t length) noexcept {
  const void* found = length != 0 ? std::memchr(in, '~', length) : nullptr;
  if (!found) return std::nullopt;
  const auto count = static_cast<std::size_t>(static_cast<const unsigned char*>(found) - in);
  if (count + 1 >= length || in[count + 1] != '>') return std::nullopt;
  return std::span(in, count);
}

// The bytes that a text stands for if it is well formed. Counters of a byte each, for as many
// characters as cannot overflow them, let the compiler count many characters at a time.
std::size_t DecodedBytes(std::span<const unsigned char> text) noexcept {
  constexpr std::size_t kCountableBytes = 240;
  std::size_t digits = 0;
  std::size_t zeroGroups = 0;
  while (!text.empty()) {
    unsigned char digitsHere = 0;
    unsigned char zeroGroupsHere = 0;
    const auto part = text.first(std::min(text.size(), kCountableBytes));
    for (const unsigned char c : part) {
      digitsHere = static_cast<unsigned char>(digitsHere + (IsDigit(c) ? 1 : 0));
      zeroGroupsHere = static_cast<unsigned char>(zeroGroupsHere + (c == 'z' ? 1 : 0));
    }
    digits += digitsHere;
    zeroGroups += zeroGroupsHere;
    text = text.subspan(part.size());
  }
  const std::size_t rest = digits % 5;
  return 4 * zeroGroups + digits / 5 * 4 + (rest != 0 ? rest - 1 : 0);
}

// The value of five characters, or more than 2^32-1 if they are no group.
std::uint64_t FiveDigits(const unsigned char* text) noexcept {
  return kWorth[0][text[0]] + kWorth[1][text[1]] + kWorth[2][text[2]] + kWorth[3][text[3]] +
         kWorth[4][text[4]];
}

void WriteFourBytes(std::uint64_t group, unsigned char* to) noexcept {
  const unsigned char bytes[] = {
      static_cast<unsigned char>(group >> 24), static_cast<unsigned char>(group >> 16),
      static_cast<unsigned char>(group >> 8), static_cast<unsigned char>(group)};
  std::memcpy(to, bytes, sizeof bytes);
}

// Decodes as many whole groups without white space as stand at the front, and drops them.
void DecodeTightGroups(std::span<const unsigned char>& text, unsigned char*& to) noexcept {
  const unsigned char* from = text.data();
  const unsigned char* end = from + text.size();
  while (from != end) {
    const std::uint64_t group = end - from >= 5 ? FiveDigits(from) : UINT64_MAX;
    if (group <= UINT32_MAX) {
      WriteFourBytes(group, to);
      from += 5;
    } else if (*from == 'z') {
      WriteFourBytes(0, to);
      ++from;
    } else {
      break;
    }
    to += 4;
  }
  text = {from, end};
}

// Decodes the group at the front, which may hold white space and end with the text, and drops it;
// false if it is none. Text without a digit is a group of no bytes.
bool DecodeLooseGroup(std::span<const unsigned char>& text, unsigned char*& to) noexcept {
  std::uint64_t group = 0;
  std::size_t digits = 0;
  for (; digits < 5 && !text.empty(); text = text.subspan(1)) {
    const unsigned char c = text.front();
    if (IsDigit(c)) {
      group = group * kBase + (c - kFirstDigit);
      ++digits;
    } else if (c == 'z' && digits == 0) {
      return true;  // it begins what comes next
    } else if (!IsWhiteSpace(c)) {
      return false;
    }
  }
  if (digits == 0) return true;
  // The missing digits count as the largest one, which makes the bytes kept come out right.
  for (std::size_t i = digits; i < 5; ++i) group = group * kBase + (kBase - 1);
  if (digits == 1 || group > UINT32_MAX) return false;
  for (std::size_t i = 0; i < digits - 1; ++i) {
    *to++ = static_cast<unsigned char>(group >> (24 - 8 * i));
  }
  return true;
}

// `to` has the room that DecodedBytes gives.
bool Decode(std::span<const unsigned char> text, unsigned char* to) noexcept {
  while (!text.empty()) {
    DecodeTightGroups(text, to);
    if (!DecodeLooseGroup(text, to)) return false;
  }
  return true;
}

}  // namespace

int ASCII85Decode(const unsigned char* in, unsigned int length, unsigned char*& out,
                  unsigned int& outLength, int /*reserved*/) noexcept {
  out = nullptr;
  outLength = 0;
  const auto text = TextBeforeMarker(in, length);
  if (!text) return -1;
  const std::size_t size = DecodedBytes(*text);
  DecodedBuffer decoded = orxframework::MakeDecodedBuffer(size);
  if (!decoded || !Decode(*text, decoded.get())) return -1;
  out = decoded.release();
  outLength = static_cast<unsigned>(size);
  return 0;
}
