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

// None unless the points are those of a curve, of which the chords between them are nowhere further
// away than `tolerance`. REQUIRES: kCurvePoints points, finite.
[[nodiscard]] std::optional<CurveControls> FindCurve(std::span<const float> coordinates,
                                                     double tolerance);

}  // namespace orxdrawing
