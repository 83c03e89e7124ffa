#include "drawing/Decimals.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orxdrawing {

DecimalText::DecimalText(Decimal number) {
  while (number.decimals > 0 && number.mantissa % 10 == 0) {
    number.mantissa /= 10;
    --number.decimals;
  }
  std::int64_t rest = std::abs(number.mantissa);
  for (int place = 0; place < number.decimals; ++place, rest /= 10) {
    *--start = static_cast<char>('0' + rest % 10);
  }
  if (number.decimals > 0) *--start = '.';
  for (; rest > 0; rest /= 10) *--start = static_cast<char>('0' + rest % 10);
  if (start == digits + sizeof digits) *--start = '0';
  if (number.mantissa < 0) *--start = '-';
}

void AddWidth(TextBuffer& text, float millimetres, NumberForm form) {
  constexpr double kMostPoints = 1e7;
  if (!(millimetres > 0)) return text.Add('0');
  const double points = std::min(millimetres * kPointsPerMillimetre, kMostPoints);
  const double unit = std::pow(10, std::floor(std::log10(points)) - 5);
  // The nearest number of six digits, written in single precision, has no more of them.
  text.AddNumber(static_cast<float>(std::round(points / unit) * unit), form);
}

void DecimalPoints::Add(TextBuffer& text, float value, NumberForm form) const {
  const Decimal exact = Of(value);
  if (exact.isExact) return text.Add(DecimalText(exact).View());
  text.AddNumber(value * pointsPerUnit, form);
}

}  // namespace orxdrawing
