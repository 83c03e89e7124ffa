// Lengths as decimal numbers of points with as few digits as keep them exact.
//
// A document's numbers have few digits, and the interpreter's, in another unit and rounded to
// single precision, many. The shortest number of points that the unit turns back into the same
// float is nearly always the document's own.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "drawing/TextBuffer.h"

namespace orxdrawing {

// mantissa / 10 ^ decimals
struct Decimal {
  std::int64_t mantissa = 0;
  int decimals = 0;
  bool isExact = false;  // else it needs more decimals than these numbers have
};

inline constexpr int kMostDecimals = 9;

class DecimalPoints {
public:
  // With all decimals, still a whole number in double precision.
  static constexpr double kMostPoints = 4'000'000;

  explicit DecimalPoints(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  [[nodiscard]] Decimal Of(float value, int mostDecimals = kMostDecimals) const {
    const double points = value * pointsPerUnit;
    if (!(std::abs(points) < kMostPoints)) return {};
    for (int decimals = 0; decimals <= mostDecimals; ++decimals) {
      const std::int64_t mantissa = Mantissa(points, decimals);
      const double read = static_cast<double>(mantissa) / kPowers[decimals];
      if (static_cast<float>(read / pointsPerUnit) == value) return {mantissa, decimals, true};
    }
    return {};
  }
  // The nearest of so many decimals. REQUIRES: fewer than kMostPoints points.
  [[nodiscard]] static Decimal Nearest(double points, int decimals) {
    return {Mantissa(points, decimals), decimals, false};
  }
  [[nodiscard]] double PointsOf(double value) const { return value * pointsPerUnit; }
  // Adds the number of points, whatever the value is.
  void Add(TextBuffer& text, float value, NumberForm form = NumberForm::Free) const;

  // b - a, without rounding.
  [[nodiscard]] static Decimal Difference(const Decimal& a, const Decimal& b) {
    const int decimals = a.decimals > b.decimals ? a.decimals : b.decimals;
    return {b.mantissa * kIntegerPowers[decimals - b.decimals] -
                a.mantissa * kIntegerPowers[decimals - a.decimals],
            decimals, true};
  }

private:
  static std::int64_t Mantissa(double points, int decimals) {
    const double shifted = points * kPowers[decimals];
    return static_cast<std::int64_t>(shifted < 0 ? shifted - 0.5 : shifted + 0.5);
  }

  static constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  static constexpr std::int64_t kIntegerPowers[] = {
      1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

  double pointsPerUnit;
};

// Adds the width of a stroke, given in millimetres, as points of six digits: what is beyond them is
// the trace of conversions, and may take a line of a pixel's width across a threshold.
void AddWidth(TextBuffer& text, float millimetres, NumberForm form);

// The digits of one number: without a zero before the point, and without zeros at the end.
class DecimalText {
public:
  explicit DecimalText(Decimal number);
  [[nodiscard]] std::string_view View() const {
    return {start, static_cast<std::size_t>(digits + sizeof digits - start)};
  }

private:
  char digits[32];
  char* start = digits + sizeof digits;
};

}  // namespace orxdrawing
