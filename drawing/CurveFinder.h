// Finds the curve behind the points that the interpreter makes of one.
//
// It makes eleven points of a cubic Bezier curve, at equal steps of its parameter, and draws the
// chords between them. Where these lie so close to the curve that nobody can tell them apart, a
// format that has curves says the same with three points.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "drawing/Geometry.h"

namespace orxdrawing {

inline constexpr std::size_t kCurvePoints = 11;

// The points that pull a curve between its ends.
struct CurveControls {
  Point first;
  Point second;
};

// What tells chords from their curve, in the units of the coordinates.
struct CurveLimits {
  // Between a chord and the curve, and between the tips of the joins of two chords and the curve's
  // edge.
  double distance = 0;
  // Of the line that follows the chords; 0 for the outlines of areas.
  double width = 0;
};

// None unless the points are those of a curve from which the chords between them are not told.
// REQUIRES: kCurvePoints points, finite.
[[nodiscard]] std::optional<CurveControls> FindCurve(std::span<const float> coordinates,
                                                     const CurveLimits& limits);

}  // namespace orxdrawing
