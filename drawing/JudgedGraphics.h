// What the judge of losses asks of a graphics state: its colour, its place in the document.
//
// Small functions on values; shared by the judge's files and nobody else.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "drawing/Findings.h"
#include "host/ORXInterpreterWatcher.h"

namespace orxdrawing {

inline LossPlace PlaceIn(const ORXWatchable& interpreter) {
  const ORXPlace place = interpreter.Place();
  return {place.token, place.definition};
}

// Within what an eye tells apart.
inline bool IsNear(std::array<float, 3> a, std::array<float, 3> b) {
  constexpr double kColorTolerance = 0.02;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::fabs(a[i] - b[i]) > kColorTolerance) return false;
  }
  return true;
}

inline std::array<float, 3> ColorIn(const ORXGraphics& graphics) {
  return {graphics.red, graphics.green, graphics.blue};
}

inline bool IsWhite(const ORXGraphics& graphics) { return IsNear(ColorIn(graphics), {1, 1, 1}); }

}  // namespace orxdrawing
