// ITU-T T.6 (Group 4 facsimile) decoding.
//
// A line is coded as its differences from the line above, the reference line; above the first line
// is a white one. Lines are held as lists of changing elements: the positions where the colour
// differs from the pixel to the left, beginning with the first black pixel. So the elements at even
// places begin black runs and those at odd places end them, and a line costs in proportion to its
// changes, not to its width. The names a0, a1, b1 and b2 are those of T.6, clause 2.2.1.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <span>
#include <utility>
#include <vector>

#include "framework/BitReader.h"
#include "framework/CcittCodeTables.h"
#include "host/ORXRasterDecoders.h"

namespace orxframework::ccitt {

namespace {

constexpr auto kModes = MakeModeTable();
constexpr auto kWhiteRuns = MakeRunTable<kWhiteBits>(kWhiteTerminating, kWhiteMakeUp);
constexpr auto kBlackRuns = MakeRunTable<kBlackBits>(kBlackTerminating, kBlackMakeUp);

// The end-of-block code, T.6 clause 2.4.1.1: twice 000000000001.
constexpr unsigned kEndOfBlock = 0x001001;
constexpr unsigned kEndOfBlockBits = 24;

// The run codes of one colour.
struct RunTable {
  const RunCode* codes;
  unsigned indexBits;
};

// The two runs of horizontal mode, by the colour that it finds.
constexpr RunTable kWhiteFirst[] = {{kWhiteRuns.data(), kWhiteBits},
                                    {kBlackRuns.data(), kBlackBits}};
constexpr RunTable kBlackFirst[] = {{kBlackRuns.data(), kBlackBits},
                                    {kWhiteRuns.data(), kWhiteBits}};

// Positions are kept wider than the 31 bits that they need, so that adding a run or an offset to
// one never overflows.
using Position = std::int64_t;

// The changing elements of a line, increasing, with what lets searches do without checks: in front
// of them stands an element before every position, and behind them elements at the line's end.
class ChangeList {
public:
  explicit ChangeList(Position columns) : room(kFirstRoom) {
    room[0] = -1;
    SetEnd(Begin(), columns);
  }

  [[nodiscard]] std::int32_t* Begin() noexcept { return room.data() + 1; }
  [[nodiscard]] const std::int32_t* Begin() const noexcept { return room.data() + 1; }
  // The first element at the line's end.
  [[nodiscard]] const std::int32_t* End() const noexcept { return Begin() + count; }

  // Elements may be written from `to` on, as many as fit into `margin`. Gives their new place.
  std::int32_t* MakeRoom(std::int32_t* to, std::size_t margin) {
    const auto used = static_cast<std::size_t>(to - room.data());
    if (room.size() - used < margin) room.resize(room.size() * 2);
    return room.data() + used;
  }

  // The list ends in front of `to`. Behind it stand enough elements that the search for b1 stops,
  // at the second of them at the latest, and that b2 is one further. An element that is itself at
  // the line's end is one of those.
  // REQUIRES: there is room for three more.
  void SetEnd(std::int32_t* to, Position columns) noexcept {
    if (to[-1] == columns) --to;
    count = to - Begin();
    std::fill_n(to, 3, static_cast<std::int32_t>(columns));
  }

private:
  static constexpr std::size_t kFirstRoom = 1024;

  std::vector<std::int32_t> room;
  std::ptrdiff_t count = 0;
};

// Vertical modes without an offset are the most frequent codes by far: as many as stand together
// are taken at once, up to this number, and copied in strides, so that what is too much is written
// over by what follows.
constexpr unsigned kMostEqualChanges = 32;
constexpr unsigned kStride = 16;
constexpr std::size_t kMargin = kMostEqualChanges + 2 * kStride;

// A line while it is decoded, apart from its decoder so that the compiler keeps it in registers.
// Invariants between codes: b1 is the first element of its kind in the reference line to the right
// of a0, or one at the line's end; the elements in front of `to` are not to the right of a0, and
// their number tells the colour there.
class LineInProgress {
public:
  LineInProgress(const BitReader& data, const ChangeList& above, ChangeList& codingLine,
                 Position columnCount) noexcept
      : bits(data),
        reference(above),
        coding(codingLine),
        columns(columnCount),
        b1(above.Begin()),
        to(codingLine.Begin()) {}

  // False if a code is bad.
  bool Decode() {
    while (a0 < columns) {
      to = coding.MakeRoom(to, kMargin);
      bits.Refill();
      if (bits.Peek(1) != 0) CopyEqualChanges();
      if (a0 < columns && !ApplyMode()) return false;
    }
    coding.SetEnd(to, columns);
    return true;
  }

  [[nodiscard]] const BitReader& Bits() const noexcept { return bits; }

private:
  // As the elements of the reference line increase, b1 of each such mode is the next one.
  void CopyEqualChanges() noexcept {
    const unsigned modes = std::min(bits.CountOnes(), kMostEqualChanges);
    const std::ptrdiff_t left = reference.End() - b1;
    if (left < static_cast<std::ptrdiff_t>(modes)) {
      // One more mode beyond the last element ends the line.
      const auto elements = static_cast<unsigned>(std::max<std::ptrdiff_t>(left, 0));
      to = std::copy_n(b1, elements, to);
      bits.Skip(elements + 1);
      a0 = columns;
      return;
    }
    bits.Skip(modes);
    for (unsigned done = 0; done < modes; done += kStride) {
      std::memcpy(to + done, b1 + done, kStride * sizeof *to);
    }
    to += modes;
    b1 += modes;
    a0 = b1[-1];
  }

  bool ApplyMode() noexcept {
    const ModeCode code = kModes[bits.Peek(kModeBits)];
    bits.Skip(code.length);
    switch (code.mode) {
      case Mode::Vertical:
        return ApplyVertical(code.offset);
      case Mode::Horizontal:
        return ApplyHorizontal();
      case Mode::Pass:
        a0 = b1[1];
        FindB1();
        return true;
      case Mode::None:
        break;
    }
    return false;
  }

  bool ApplyVertical(int offset) noexcept {
    const Position a1 = Position{*b1} + offset;
    if (a1 < std::max<Position>(a0, 0) || a1 > columns) return false;
    ChangeColour(a1);
    a0 = a1;
    // Of the other kind, the element before b1 may be to the right of a0, but none before that.
    b1 += b1[-1] > a1 ? -1 : 1;
    FindB1();
    return true;
  }

  bool ApplyHorizontal() noexcept {
    Position place = std::max<Position>(a0, 0);
    const bool isBlack = (to - coding.Begin()) % 2 != 0;
    bits.Refill();
    for (const RunTable& table : isBlack ? kBlackFirst : kWhiteFirst) {
      const Position run = TakeRun(table);
      if (run < 0 || run > columns - place) return false;
      place += run;
      ChangeColour(place);
    }
    a0 = place;
    FindB1();
    return true;
  }

  // The length of the run whose codes come next, negative if one is bad.
  // REQUIRES: the bits of both runs' first codes are there.
  Position TakeRun(const RunTable& table) noexcept {
    Position total = 0;
    while (true) {
      const RunCode code = table.codes[bits.Peek(table.indexBits)];
      if (code.length == 0) return -1;
      bits.Skip(code.length);
      total += code.run;
      if (code.run < kFirstMakeUp) return total;
      bits.Refill();
    }
  }

  // Two changes at one position are none, as after a run of no pixels.
  void ChangeColour(Position position) noexcept {
    if (to[-1] == position) {
      --to;
    } else {
      *to++ = static_cast<std::int32_t>(position);
    }
  }

  void FindB1() noexcept {
    while (*b1 <= a0 && *b1 < columns) b1 += 2;
  }

  BitReader bits;
  const ChangeList& reference;
  ChangeList& coding;
  const Position columns;
  const std::int32_t* b1;
  std::int32_t* to;
  Position a0 = -1;
};

std::uint64_t LoadBits(const unsigned char* bytes, std::size_t count) noexcept {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < count; ++i) word |= std::uint64_t{bytes[i]} << (56 - 8 * i);
  return word;
}

void StoreBits(unsigned char* bytes, std::size_t count, std::uint64_t word) noexcept {
  for (std::size_t i = 0; i < count; ++i) {
    bytes[i] = static_cast<unsigned char>(word >> (56 - 8 * i));
  }
}

// Makes marks, a 0 where the colour changes, into pixels from there on. `above` has all bits set
// while the colour is black and changes with every mark.
std::uint64_t PixelsOfMarks(std::uint64_t marks, std::uint64_t& above) noexcept {
  std::uint64_t changes = ~marks;
  for (unsigned shift = 1; shift < 64; shift *= 2) changes ^= changes >> shift;
  changes ^= above;
  above = 0 - (changes & 1);
  return ~changes;
}

// Paints a line on a row of white pixels: a mark at each change, then everything between marks.
void Paint(const ChangeList& line, Position columns, unsigned char* row,
           std::size_t rowBytes) noexcept {
  const auto mark = [row](auto position) {
    row[position / 8] ^= static_cast<unsigned char>(0x80U >> position % 8);
  };
  if (line.Begin() == line.End()) return;
  for (const std::int32_t* change = line.Begin(); change != line.End(); ++change) {
    mark(static_cast<std::uint32_t>(*change));
  }
  const bool isBlackAtEnd = (line.End() - line.Begin()) % 2 != 0;
  if (isBlackAtEnd && columns % 8 != 0) mark(static_cast<std::uint64_t>(columns));
  std::uint64_t above = 0;
  std::size_t i = 0;
  for (; i + 8 <= rowBytes; i += 8) {
    StoreBits(row + i, 8, PixelsOfMarks(LoadBits(row + i, 8), above));
  }
  const std::size_t rest = rowBytes - i;
  if (rest != 0) {
    // Bits that are not there are 0 and must not count as marks.
    const std::uint64_t marks = LoadBits(row + i, rest) | UINT64_MAX >> 8 * rest;
    StoreBits(row + i, rest, PixelsOfMarks(marks, above));
  }
}

struct Outcome {
  int rows = 0;
  int errors = 0;
};

// Decodes into a white bitmap until the last row, the end-of-block code or the first error, behind
// which nothing can be made sense of.
Outcome DecodeRows(std::span<const unsigned char> data, int columns, int rows,
                   unsigned char* bitmap) noexcept {
  const std::size_t rowBytes = (static_cast<std::size_t>(columns) + 7) / 8;
  Outcome outcome;
  try {
    BitReader bits(data);
    ChangeList reference(columns);
    ChangeList coding(columns);
    for (; outcome.rows < rows; ++outcome.rows) {
      bits.Refill();
      if (bits.Peek(kEndOfBlockBits) == kEndOfBlock) break;
      LineInProgress line(bits, reference, coding, columns);
      if (!line.Decode() || line.Bits().IsOverrun()) return {outcome.rows, 1};
      bits = line.Bits();
      Paint(coding, columns, bitmap + static_cast<std::size_t>(outcome.rows) * rowBytes, rowBytes);
      std::swap(reference, coding);
    }
  } catch (const std::exception&) {
    return {outcome.rows, 1};
  }
  if (outcome.rows == 0) outcome.errors = 1;
  return outcome;
}

}  // namespace

}  // namespace orxframework::ccitt

int CCITT_G4_dec(const unsigned char* in, int length, int* size, unsigned char* bitmap,
                 int& rowCount, int& errorCount) noexcept {
  rowCount = 0;
  errorCount = 1;
  if (length < 0 || (!in && length > 0) || !size || !bitmap) return -1;
  const int columns = size[0];
  const int rows = size[1];
  if (columns <= 0 || rows <= 0) return -1;
  const std::size_t rowBytes = (static_cast<std::size_t>(columns) + 7) / 8;
  std::memset(bitmap, 0xFF, rowBytes * static_cast<std::size_t>(rows));
  const auto outcome = orxframework::ccitt::DecodeRows(
      std::span(in, static_cast<std::size_t>(length)), columns, rows, bitmap);
  rowCount = outcome.rows;
  errorCount = outcome.errors;
  return errorCount == 0 ? 0 : -1;
}
