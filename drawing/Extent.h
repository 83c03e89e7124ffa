// What a drawing covers.
//
// Boxes are values in points unless said otherwise; a shape that covers nothing has none. The sink
// keeps one box a page, for areas that a document does not state.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// The box of an image, in the interpreter's units. None when it has no area or is not finite.
[[nodiscard]] std::optional<Box> ExtentOf(const ImageShape& image);

// What a shape covers, in points: a stroke with its width, anything without the points that are not
// finite. None when that is nothing.
[[nodiscard]] std::optional<Box> ExtentInPoints(const StrokeShape& stroke, double pointsPerUnit);
[[nodiscard]] std::optional<Box> ExtentInPoints(const FillShape& fill, double pointsPerUnit);
[[nodiscard]] std::optional<Box> ExtentInPoints(const ImageShape& image, double pointsPerUnit);
// The least box around both; what is not there counts for nothing.
[[nodiscard]] std::optional<Box> Union(const std::optional<Box>& a, const std::optional<Box>& b);

// The box, at least a point wide and high: a line without width and a single dot can be shown, too.
[[nodiscard]] inline Box AtLeastVisible(Box box) {
  box.right = std::max(box.right, box.left + 1);
  box.top = std::max(box.top, box.bottom + 1);
  return box;
}

// Measures each page: strokes with their width, without the points that are not finite.
class ExtentSink final : public ShapeSink {
public:
  explicit ExtentSink(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  // In points, for each page; none for one that shows nothing.
  [[nodiscard]] const std::vector<std::optional<Box>>& Extents() const { return extents; }

  void NextPage() override { extents.emplace_back(); }
  void Draw(const StrokeShape& stroke) override { Add(ExtentInPoints(stroke, pointsPerUnit)); }
  void Draw(const FillShape& fill) override { Add(ExtentInPoints(fill, pointsPerUnit)); }
  void Draw(const ImageShape& image) override { Add(ExtentInPoints(image, pointsPerUnit)); }

private:
  void Add(const std::optional<Box>& box) { extents.back() = Union(extents.back(), box); }

  double pointsPerUnit;
  std::vector<std::optional<Box>> extents = {std::nullopt};
};

}  // namespace orxdrawing
