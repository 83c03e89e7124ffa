// What a drawing covers.
#pragma once

#include <optional>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// The box of an image, in the interpreter's units. None when it has no area or is not finite.
[[nodiscard]] std::optional<Box> ExtentOf(const ImageShape& image);

// Measures each page: strokes with their width, without the points that are not finite.
class ExtentSink final : public ShapeSink {
public:
  explicit ExtentSink(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  // In points, for each page; none for one that shows nothing.
  [[nodiscard]] const std::vector<std::optional<Box>>& Extents() const { return extents; }

  void NextPage() override { extents.emplace_back(); }
  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

private:
  // `margin` is how far, in points, the ink reaches beyond the points.
  void Add(const Contours& contours, double margin);
  void Add(const Box& box);

  double pointsPerUnit;
  std::vector<std::optional<Box>> extents = {std::nullopt};
};

}  // namespace orxdrawing
