// Cuts lines and areas down to a rectangle, for coordinates that a drawing library cannot hold.
// Slopes stay what they are: a line is cut where it crosses the border, not bent towards it.
#pragma once

#include <span>
#include <vector>

#include "drawing/Geometry.h"

namespace orxdrawing {

using Polyline = std::vector<Point>;

// The pieces of a line that lie within the box. REQUIRES: points are finite, here and below.
[[nodiscard]] std::vector<Polyline> ClipLine(std::span<const Point> line, const Box& box);

// The part of an area that lies within the box, as one contour that may run along the border.
[[nodiscard]] Polyline ClipArea(std::span<const Point> contour, const Box& box);

}  // namespace orxdrawing
