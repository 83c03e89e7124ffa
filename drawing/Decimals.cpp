#include "drawing/Decimals.h"

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

void DecimalPoints::Add(TextBuffer& text, float value, NumberForm form) const {
  const Decimal exact = Of(value);
  if (exact.isExact) return text.Add(DecimalText(exact).View());
  text.AddNumber(value * pointsPerUnit, form);
}

}  // namespace orxdrawing
