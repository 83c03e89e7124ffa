#include "drawing/DenseCells.h"

#include <algorithm>

namespace orxdrawing {

namespace {

constexpr int kShift = 8;
constexpr int kScale = 1 << kShift;
constexpr int kMask = kScale - 1;

// Where a line is after a first part of its length and then after steps of a pixel each, rounded
// down: the first part and every step cost no division.
template <typename Number>
class Steps {
public:
  // `rise` over `length`, which is above 0.
  Steps(Number rise, Number length, Number firstPart)
      : divisor(length),
        whole(FloorOf(kScale * rise, length)),
        part(kScale * rise - whole * length),
        now(FloorOf(firstPart * rise, length)),
        rest(firstPart * rise - now * length) {}

  [[nodiscard]] Number Now() const { return now; }
  void Next() {
    now += whole;
    rest += part;
    if (rest < divisor) return;
    rest -= divisor;
    ++now;
  }

private:
  static Number FloorOf(Number numerator, Number denominator) {
    const Number quotient = numerator / denominator;
    return quotient - (quotient * denominator > numerator ? 1 : 0);
  }

  Number divisor;
  Number whole;  // of a step
  Number part;
  Number now;
  Number rest;
};

}  // namespace

void DenseCells::Begin(const PixelRect& tileOfLines) {
  tile = tileOfLines;
  stride = static_cast<std::size_t>(tile.Width()) + 1;
  cells.assign(stride * static_cast<std::size_t>(tile.Height()), Cell());
}

// Row by row from the upper end; what goes up counts against what goes down.
void DenseCells::line(int x1, int y1, int x2, int y2) {
  if (y1 == y2) return;
  const bool goesDown = y1 < y2;
  const int lowerX = goesDown ? x2 : x1;
  const int upper = std::min(y1, y2);
  const int lower = std::max(y1, y2);
  int x = goesDown ? x1 : x2;
  int row = upper >> kShift;
  const int lastRow = lower >> kShift;
  int from = upper & kMask;
  if (row < lastRow) {
    Steps<std::int64_t> steps(std::int64_t{lowerX} - x, std::int64_t{lower} - upper, kScale - from);
    for (const int begin = x; row < lastRow; ++row, steps.Next()) {
      const int endX = begin + static_cast<int>(steps.Now());
      AddInRow(row, x, from, endX, kScale, goesDown);
      x = endX;
      from = 0;
    }
  }
  AddInRow(row, x, from, lowerX, lower & kMask, goesDown);
}

// From the line's upper end in the row to its lower one, pixel by pixel.
void DenseCells::AddInRow(int row, int x1, int y1, int x2, int y2, bool goesDown) {
  if (y1 == y2) return;
  Cell* const left = cells.data() + static_cast<std::size_t>(row - tile.top) * stride;
  const auto add = [&](int column, int from, int to, int height) {
    Cell& cell = left[column - tile.left];
    const int cover = goesDown ? height : -height;
    cell.cover += cover;
    cell.area += std::int64_t{from + to} * cover;
  };
  int column = x1 >> kShift;
  const int lastColumn = x2 >> kShift;
  int place = x1 & kMask;
  int y = y1;
  if (column != lastColumn) {
    const bool goesRight = x1 < x2;
    const int leaving = goesRight ? kScale : 0;
    Steps<int> steps(y2 - y1, goesRight ? x2 - x1 : x1 - x2, goesRight ? kScale - place : place);
    for (; column != lastColumn; column += goesRight ? 1 : -1, steps.Next()) {
      const int sideY = y1 + steps.Now();
      add(column, place, leaving, sideY - y);
      place = kScale - leaving;
      y = sideY;
    }
  }
  add(column, place, x2 & kMask, y2 - y);
}

}  // namespace orxdrawing
