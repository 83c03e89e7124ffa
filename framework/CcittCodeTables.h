// Look-up tables for the codes of ITU-T T.6, made by the compiler from the lists of codes.
//
// A table is indexed with the next bits of the data, as many as its longest code has. Each index
// that begins with a code holds that code's entry, the others hold an entry of length 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "framework/CcittCodes.h"

namespace orxframework::ccitt {

// A run of pixels, complete if it is below 64.
struct RunCode {
  std::int16_t run = 0;
  std::uint8_t length = 0;
};

enum class Mode : std::uint8_t { None, Pass, Horizontal, Vertical };

struct ModeCode {
  Mode mode = Mode::None;
  std::int8_t offset = 0;  // of a vertical mode: a1 minus b1
  std::uint8_t length = 0;
};

inline constexpr unsigned kModeBits = 7;
inline constexpr unsigned kWhiteBits = 12;
inline constexpr unsigned kBlackBits = 13;

// Enters a code at each index that begins with it. Two codes of which one begins the other make
// the table invalid; being computed by the compiler, it then does not compile.
template <typename Entry, std::size_t size>
constexpr void EnterCode(std::array<Entry, size>& table, std::string_view code, Entry entry) {
  std::size_t first = 0;
  std::size_t count = size;
  for (const char digit : code) {
    count /= 2;
    if (digit == '1') first += count;
  }
  entry.length = static_cast<std::uint8_t>(code.size());
  for (std::size_t i = first; i < first + count; ++i) {
    if (table[i].length != 0) throw "two codes collide";
    table[i] = entry;
  }
}

template <unsigned bits>
constexpr auto MakeRunTable(std::string_view terminating, std::string_view makeUp) {
  std::array<RunCode, std::size_t{1} << bits> table{};
  ForEachRunCode(terminating, makeUp, [&table](int run, std::string_view code) {
    EnterCode(table, code, RunCode{static_cast<std::int16_t>(run)});
  });
  return table;
}

// T.6 table 1, without the extension 0000001xxx.
constexpr auto MakeModeTable() {
  std::array<ModeCode, std::size_t{1} << kModeBits> table{};
  EnterCode(table, "0001", ModeCode{Mode::Pass});
  EnterCode(table, "001", ModeCode{Mode::Horizontal});
  EnterCode(table, "1", ModeCode{Mode::Vertical, 0});
  EnterCode(table, "011", ModeCode{Mode::Vertical, 1});
  EnterCode(table, "000011", ModeCode{Mode::Vertical, 2});
  EnterCode(table, "0000011", ModeCode{Mode::Vertical, 3});
  EnterCode(table, "010", ModeCode{Mode::Vertical, -1});
  EnterCode(table, "000010", ModeCode{Mode::Vertical, -2});
  EnterCode(table, "0000010", ModeCode{Mode::Vertical, -3});
  return table;
}

}  // namespace orxframework::ccitt
