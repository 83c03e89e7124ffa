// The text of a path in SVG, as short as it can be: points relative to the one before, straight
// steps as such, and signs and points of numbers in the place of separators.
//
// Every number is exact, so the sums that a reader forms are the document's coordinates.
#pragma once

#include <cstddef>
#include <span>

#include "drawing/Decimals.h"
#include "drawing/TextBuffer.h"

namespace orxdrawing {

// Borrows both.
class SvgPath {
public:
  SvgPath(TextBuffer& textBuffer, const DecimalPoints& decimalPoints)
      : text(textBuffer), decimals(decimalPoints) {}

  // One contour. REQUIRES: it has points.
  void Add(std::span<const float> coordinates);
  void Close();

private:
  // A coordinate, and the number that it is where that is exact.
  struct Place {
    float value = 0;
    Decimal exact;
  };

  void MoveTo(const Place& x, const Place& y);
  void LineTo(const Place& x, const Place& y);
  void Command(char letter);
  void Number(const Decimal& number);
  void Number(const Place& place);
  void Number(std::string_view digits);

  TextBuffer& text;
  const DecimalPoints& decimals;
  Place lastX;
  Place lastY;
  char command = 0;          // in force
  bool afterNumber = false;  // a number stands before what is added next
  bool afterPoint = false;   // and it has a decimal point or an exponent
  std::size_t relativeSteps = 0;
};

}  // namespace orxdrawing
