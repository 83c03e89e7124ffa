#include "drawing/SvgPath.h"

#include <charconv>
#include <string_view>

namespace orxdrawing {

namespace {

// Readers that add up in single precision get a place anew after so many steps.
constexpr std::size_t kMostRelativeSteps = 64;

}  // namespace

void SvgPath::Add(std::span<const float> coordinates) {
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    const Place x{coordinates[i], decimals.Of(coordinates[i])};
    const Place y{coordinates[i + 1], decimals.Of(coordinates[i + 1])};
    i == 0 ? MoveTo(x, y) : LineTo(x, y);
    lastX = x;
    lastY = y;
  }
}

void SvgPath::Close() {
  Command('Z');
  command = 0;
}

void SvgPath::MoveTo(const Place& x, const Place& y) {
  command = 0;
  Command('M');
  command = 'L';  // is what further numbers mean
  Number(x);
  Number(y);
  relativeSteps = 0;
}

void SvgPath::LineTo(const Place& x, const Place& y) {
  const bool isExact =
      x.exact.isExact && y.exact.isExact && lastX.exact.isExact && lastY.exact.isExact;
  if (!isExact || ++relativeSteps > kMostRelativeSteps) {
    Command('L');
    Number(x);
    Number(y);
    relativeSteps = 0;
    return;
  }
  const Decimal stepX = DecimalPoints::Difference(lastX.exact, x.exact);
  const Decimal stepY = DecimalPoints::Difference(lastY.exact, y.exact);
  Command(stepY.mantissa == 0 ? 'h' : stepX.mantissa == 0 ? 'v' : 'l');
  if (command != 'v') Number(stepX);
  if (command != 'h') Number(stepY);
}

void SvgPath::Command(char letter) {
  if (command == letter) return;
  command = letter;
  text.Add(letter);
  afterNumber = false;
}

void SvgPath::Number(const Decimal& number) { Number(DecimalText(number).View()); }

void SvgPath::Number(const Place& place) {
  if (place.exact.isExact) return Number(place.exact);
  char digits[32];
  char* const end =
      std::to_chars(digits, digits + sizeof digits, decimals.PointsOf(place.value)).ptr;
  Number(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void SvgPath::Number(std::string_view digits) {
  const bool separates = digits[0] == '-' || (digits[0] == '.' && afterPoint);
  if (afterNumber && !separates) text.Add(' ');
  text.Add(digits);
  afterNumber = true;
  afterPoint = digits.find_first_of(".e") != std::string_view::npos;
}

}  // namespace orxdrawing
