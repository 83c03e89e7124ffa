// Shapes and what differs between them, in words.
//
// Whoever tells people or programs of shapes uses these, so that each is called the same
// everywhere. Functions on values; they keep nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/ShapeRecord.h"

namespace orxdrawing {

[[nodiscard]] const char* NameOf(ShapeKind kind);
[[nodiscard]] const char* NameOf(LineCap cap);
// "#rrggbb", components beyond 0 and 1 cut off.
[[nodiscard]] std::string NameOf(const Colour& colour);
// Of a set of ShapeDifference: "place", "colour".
[[nodiscard]] std::vector<std::string> NamesOf(std::uint8_t what);

// To a micrometre or a thousandth of a point: what floats blur behind it says nothing.
[[nodiscard]] double Rounded(double value);
// "0 0 to 10 20 mm", of a box in points.
[[nodiscard]] std::string DescribeInMillimetres(const Box& box);
// "stroke of 0.1 mm, #ff0000, 0 0 to 10 20 mm"
[[nodiscard]] std::string Describe(const ShapeRecord& shape);

}  // namespace orxdrawing
