#include "drawing/HeldFill.h"

#include <algorithm>
#include <cstddef>

namespace orxdrawing {

namespace {

constexpr std::size_t kMostHeldCoordinates = 4096;

// How many coordinates a contour has without the point that only closes it.
std::size_t OpenSize(std::span<const float> contour) {
  const std::size_t size = contour.size();
  const bool isClosed =
      size > 4 && contour[0] == contour[size - 2] && contour[1] == contour[size - 1];
  return isClosed ? size - 2 : size;
}

}  // namespace

bool HeldFill::Take(const FillShape& fill) {
  if (fill.contours.coordinates.size() > kMostHeldCoordinates) return false;
  isThere = true;
  colour = fill.colour;
  rule = fill.rule;
  lengths.assign(fill.contours.lengths.begin(), fill.contours.lengths.end());
  coordinates.assign(fill.contours.coordinates.begin(), fill.contours.coordinates.end());
  return true;
}

bool HeldFill::IsEdgedBy(const StrokeShape& stroke) const {
  if (stroke.contours.lengths.size() != lengths.size()) return false;
  std::span<const float> edge = stroke.contours.coordinates;
  std::span<const float> area = coordinates;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    const auto edgeContour = edge.first(2 * std::size_t{stroke.contours.lengths[i]});
    const auto areaContour = area.first(2 * std::size_t{lengths[i]});
    if (!std::ranges::equal(edgeContour.first(OpenSize(edgeContour)),
                            areaContour.first(OpenSize(areaContour)))) {
      return false;
    }
    edge = edge.subspan(edgeContour.size());
    area = area.subspan(areaContour.size());
  }
  return true;
}

FillShape HeldFill::Release() {
  isThere = false;
  return {{lengths, coordinates}, colour, rule};
}

}  // namespace orxdrawing
