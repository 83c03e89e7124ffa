// How far a place is from the ink of a shape.
//
// Places and distances are in the shape's units times `scale`; the result is 0 where the place is
// on the ink, and infinite for a shape that has none. Points that are not finite are left out.
// A stroke has ink to half of its width on either side, around the corners of its line as a circle,
// and at its ends as its cap has it; its width counts in the unit of the result.
#pragma once

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

[[nodiscard]] double DistanceTo(const StrokeShape& stroke, const Point& place, double scale);
[[nodiscard]] double DistanceTo(const FillShape& fill, const Point& place, double scale);
[[nodiscard]] double DistanceTo(const ImageShape& image, const Point& place, double scale);

}  // namespace orxdrawing
