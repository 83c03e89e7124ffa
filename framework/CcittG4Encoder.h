// ITU-T T.6 (Group 4 facsimile) encoding, the counterpart of the framework's decoder, for hosts
// that write formats which hold such data.
//
// Rows come in one after another and bytes leave through the sink as they come; nothing is kept but
// the changing elements of two lines. The names a0, a1, a2, b1 and b2 are those of T.6, clause
// 2.2.1.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/CcittCodes.h"

namespace orxframework::ccitt {

class G4RowEncoder {
public:
  using Sink = std::function<void(std::string_view bytes)>;

  G4RowEncoder(int columns, Sink byteSink) : width(columns), sink(std::move(byteSink)) {
    EndLine(reference);
  }

  // The pixels of a row, 1 for black, the first in the highest bit. REQUIRES: as many as there are
  // columns.
  void AddRow(std::span<const unsigned char> row) {
    FindChanges(row);
    EncodeLine();
    std::swap(reference, changes);
    if (bytes.size() >= kBlock) Flush();
  }

  // The end-of-block code, and the rest of the bytes.
  void Finish() {
    Add({0x001001, 24});
    if (pendingBits > 0) Add({0, 8 - pendingBits});
    Flush();
  }

private:
  struct Code {
    std::uint32_t digits = 0;
    unsigned length = 0;
  };
  static constexpr std::size_t kBlock = 1 << 14;
  static constexpr int kLongestMakeUp = 2560;
  // By the run for those that end one, and behind them by the run's 64ths.
  using RunCodes = std::array<Code, kFirstMakeUp + kLongestMakeUp / kMakeUpStep + 1>;

  static constexpr Code CodeOf(std::string_view text) {
    Code code;
    for (const char digit : text) code.digits = code.digits << 1 | (digit == '1' ? 1U : 0U);
    code.length = static_cast<unsigned>(text.size());
    return code;
  }
  static constexpr RunCodes MakeRunCodes(std::string_view terminating, std::string_view makeUp) {
    RunCodes codes{};
    ForEachRunCode(terminating, makeUp, [&codes](int run, std::string_view code) {
      const int index = run < kFirstMakeUp ? run : kFirstMakeUp + run / kMakeUpStep;
      codes[static_cast<std::size_t>(index)] = CodeOf(code);
    });
    return codes;
  }

  // The places where the colour differs from that of the pixel before, then the line's end.
  void FindChanges(std::span<const unsigned char> row) {
    changes.clear();
    unsigned last = 0;
    for (int x = 0; x < width; x += 8) {
      const unsigned pixels = row[static_cast<std::size_t>(x) / 8];
      unsigned differing = pixels ^ (pixels >> 1 | last << 7);
      last = pixels & 1U;
      while (differing != 0) {
        const int bit = std::countl_zero(static_cast<unsigned char>(differing));
        if (x + bit < width) changes.push_back(x + bit);
        differing &= 0x7FU >> bit;
      }
    }
    EndLine(changes);
  }
  void EndLine(std::vector<int>& line) const { line.insert(line.end(), 4, width); }

  void EncodeLine() {
    static constexpr Code kPass = {0b0001, 4};
    static constexpr Code kHorizontal = {0b001, 3};
    static constexpr std::array<Code, 7> kVertical = {{{0b0000010, 7},
                                                       {0b000010, 6},
                                                       {0b010, 3},
                                                       {1, 1},
                                                       {0b011, 3},
                                                       {0b000011, 6},
                                                       {0b0000011, 7}}};
    std::size_t next = 0;   // of this line's changes: a1
    std::size_t above = 0;  // of the reference line's: b1
    for (int a0 = -1; a0 < width;) {
      const bool isBlack = next % 2 == 1;
      above = OppositeChange(above, a0, isBlack);
      const int a1 = changes[next];
      const int b1 = reference[above];
      const int b2 = reference[above + 1];
      if (b2 < a1) {
        Add(kPass);
        a0 = b2;
      } else if (std::abs(a1 - b1) <= 3) {
        const int offset = a1 - b1 + 3;
        Add(kVertical[static_cast<std::size_t>(offset)]);
        a0 = a1;
        ++next;
      } else {
        const int a2 = changes[next + 1];
        Add(kHorizontal);
        AddRun(isBlack, a1 - std::max(a0, 0));
        AddRun(!isBlack, a2 - a1);
        a0 = a2;
        next += 2;
      }
    }
  }

  // The first change right of a0 that ends the colour, which may lie one before the last one found.
  [[nodiscard]] std::size_t OppositeChange(std::size_t place, int a0, bool isBlack) const {
    if ((place % 2 == 1) != isBlack) place = place > 0 ? place - 1 : 1;
    while (reference[place] <= a0 && reference[place] < width) place += 2;
    return place;
  }

  void AddRun(bool isBlack, int run) {
    static constexpr RunCodes kWhite = MakeRunCodes(kWhiteTerminating, kWhiteMakeUp);
    static constexpr RunCodes kBlack = MakeRunCodes(kBlackTerminating, kBlackMakeUp);
    const RunCodes& codes = isBlack ? kBlack : kWhite;
    while (run >= kFirstMakeUp) {
      const int part = std::min(run, kLongestMakeUp) / kMakeUpStep;
      const int index = kFirstMakeUp + part;
      Add(codes[static_cast<std::size_t>(index)]);
      run -= part * kMakeUpStep;
    }
    Add(codes[static_cast<std::size_t>(run)]);
  }

  void Add(Code code) {
    pending = pending << code.length | code.digits;
    pendingBits += code.length;
    for (; pendingBits >= 8; pendingBits -= 8) {
      bytes += static_cast<char>(pending >> (pendingBits - 8) & 0xFFU);
    }
  }
  void Flush() {
    sink(bytes);
    bytes.clear();
  }

  int width;
  Sink sink;
  std::vector<int> changes;
  std::vector<int> reference;  // the changes of the line above
  std::string bytes;
  std::uint64_t pending = 0;  // what does not fill a byte yet, in the lowest bits
  unsigned pendingBits = 0;
};

}  // namespace orxframework::ccitt
