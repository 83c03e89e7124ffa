// Which shapes tell two drawings apart.
//
// Shapes that look the same are matched first, as many as stand in the same order in both; the
// rest of a page is matched by form: as many points in as many contours. What then has no partner
// was added or removed, and partners that differ were changed. The time that it takes grows little
// faster than the number of shapes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/ShapeList.h"

namespace orxdrawing {

// What differs between two shapes, as a set of bits.
enum ShapeDifference : std::uint8_t {
  kPlaceDiffers = 1,    // all points by the same way
  kOutlineDiffers = 2,  // points in other ways
  kColourDiffers = 4,
  kWidthDiffers = 8,
  kStyleDiffers = 16,   // the cap or the fill rule
  kSamplesDiffer = 32,  // of an image
  kOrderDiffers = 64,   // it is drawn before or after others than it was
};

struct Difference {
  std::optional<std::size_t> before;  // in the list of the one drawing; none: added
  std::optional<std::size_t> after;   // in that of the other; none: removed
  std::uint8_t what = 0;              // of partners: a set of ShapeDifference
};

// Coordinates and widths no further apart, in millimetres, are the same where nothing else is
// asked.
inline constexpr double kUsualTolerance = 0.001;

struct DifferenceNumbers {
  std::size_t added = 0;
  std::size_t removed = 0;
  std::size_t changed = 0;
};
[[nodiscard]] DifferenceNumbers Count(const std::vector<Difference>& differences);

// Coordinates and widths that are no further apart than the tolerance, in millimetres, count as the
// same. The result is in the order of pages, and of the shapes of the later drawing.
[[nodiscard]] std::vector<Difference> Compare(const ShapeList& before, const ShapeList& after,
                                              double tolerance);

}  // namespace orxdrawing
