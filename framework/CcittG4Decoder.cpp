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

constexpr RunTable kWhiteTable{kWhiteRuns.data(), kWhiteBits};
constexpr RunTable kBlackTable{kBlackRuns.data(), kBlackBits};

// Positions are kept wider than the 31 bits that they need, so that adding a run or an offset to
// one never overflows.
using Position = std::int64_t;

// Clears the bits from `begin` to before `end` of a row, the high bit of each byte first.
void ClearBits(unsigned char* row, std::size_t begin, std::size_t end) noexcept {
  const std::size_t firstByte = begin / 8;
  const std::size_t lastByte = end / 8;
  const auto keptInFirst = static_cast<unsigned char>(~(0xFFU >> begin % 8));
  const auto keptInLast = static_cast<unsigned char>(0xFFU >> end % 8);
  if (firstByte == lastByte) {
    row[firstByte] &= static_cast<unsigned char>(keptInFirst | keptInLast);
    return;
  }
  row[firstByte] &= keptInFirst;
  std::memset(row + firstByte + 1, 0, lastByte - firstByte - 1);
  if (end % 8 != 0) row[lastByte] &= keptInLast;
}

// Decodes one line after the other. Invariants between codes: the elements of `coding` increase;
// their number tells the colour at a0; b1 is the first place of that colour's kind in `reference`
// whose element lies to the right of a0.
class LineDecoder {
public:
  LineDecoder(BitReader& bitReader, int columnCount) : bits(bitReader), columns(columnCount) {
    EndLine();
  }

  // Decodes the next line; false if its code is bad or the data ends inside it.
  bool DecodeLine() {
    std::swap(reference, coding);
    coding.clear();
    a0 = -1;
    b1 = 0;
    while (a0 < columns) {
      const ModeCode code = kModes[bits.Peek(kModeBits)];
      bits.Skip(code.length);
      if (!Apply(code) || bits.IsOverrun()) return false;
    }
    EndLine();
    return true;
  }

  // Clears the black pixels of the line just decoded in a row of white ones.
  void Paint(unsigned char* row) const noexcept {
    for (std::size_t i = 0; coding[i] < columns; i += 2) {
      ClearBits(row, static_cast<std::size_t>(coding[i]), static_cast<std::size_t>(coding[i + 1]));
    }
  }

private:
  bool Apply(const ModeCode& code) {
    switch (code.mode) {
      case Mode::Vertical:
        return ApplyVertical(code.offset);
      case Mode::Horizontal:
        return ApplyHorizontal();
      case Mode::Pass:
        a0 = reference[b1 + 1];
        FindB1();
        return true;
      case Mode::None:
        break;
    }
    return false;
  }

  bool ApplyVertical(int offset) {
    const Position a1 = Position{reference[b1]} + offset;
    if (a1 < std::max<Position>(a0, 0) || a1 > columns) return false;
    ChangeColour(a1);
    a0 = a1;
    // Of the other kind, the element before b1 may be to the right of a0, but none before that.
    b1 = b1 == 0 ? 1 : b1 - 1;
    FindB1();
    return true;
  }

  bool ApplyHorizontal() {
    Position place = std::max<Position>(a0, 0);
    for (int i = 0; i < 2; ++i) {
      const Position run = TakeRun(IsBlack() ? kBlackTable : kWhiteTable);
      if (run < 0 || run > columns - place) return false;
      place += run;
      ChangeColour(place);
    }
    a0 = place;
    FindB1();
    return true;
  }

  // The length of the run whose codes come next, negative if one is bad.
  Position TakeRun(const RunTable& table) noexcept {
    Position total = 0;
    while (true) {
      const RunCode code = table.codes[bits.Peek(table.indexBits)];
      if (code.length == 0) return -1;
      bits.Skip(code.length);
      total += code.run;
      if (code.run < kFirstMakeUp) return total;
    }
  }

  [[nodiscard]] bool IsBlack() const noexcept { return coding.size() % 2 != 0; }

  // Two changes at one position are none, as after a run of no pixels.
  void ChangeColour(Position position) {
    if (!coding.empty() && coding.back() == position) {
      coding.pop_back();
    } else {
      coding.push_back(static_cast<std::int32_t>(position));
    }
  }

  void FindB1() noexcept {
    while (reference[b1] <= a0 && reference[b1] < columns) b1 += 2;
  }

  // Behind the last change stand changes at the line's end, which no search goes beyond: b1 stops
  // at the second of them at the latest, and b2 is one further.
  void EndLine() { coding.insert(coding.end(), 3, static_cast<std::int32_t>(columns)); }

  BitReader& bits;
  const Position columns;
  std::vector<std::int32_t> reference;
  std::vector<std::int32_t> coding;
  Position a0 = -1;
  std::size_t b1 = 0;
};

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
    LineDecoder line(bits, columns);
    while (outcome.rows < rows && bits.Peek(kEndOfBlockBits) != kEndOfBlock) {
      if (!line.DecodeLine()) return {outcome.rows, 1};
      line.Paint(bitmap + static_cast<std::size_t>(outcome.rows) * rowBytes);
      ++outcome.rows;
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
