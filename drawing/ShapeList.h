// Everything that a document draws, shape by shape and page by page, kept to be compared.
//
// Images are kept by their place and the check sum of their samples.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "drawing/PlacedShapes.h"
#include "drawing/ShapeRecord.h"

namespace orxdrawing {

struct ListedShape {
  ShapeRecord record;
  std::size_t firstLength = 0;  // its contours among the lengths of all
  std::size_t lengthCount = 0;
  std::size_t firstCoordinate = 0;  // its points among the coordinates of all
  std::size_t coordinateCount = 0;
  std::uint64_t form = 0;     // a hash of its kind and the lengths of its contours
  std::uint64_t content = 0;  // a hash of all that it looks like, the place included
  std::uint32_t samples = 0;  // of an image: its format and samples, as a check sum
};

class ShapeList final : public PlacedSink {
public:
  explicit ShapeList(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  [[nodiscard]] const std::vector<ListedShape>& Shapes() const { return shapes; }
  // Borrowed from the list. An image has one contour: the corner that its first sample begins at
  // and the one that its last ends at.
  [[nodiscard]] Contours ContoursOf(const ListedShape& shape) const {
    return {std::span(lengths).subspan(shape.firstLength, shape.lengthCount),
            std::span(coordinates).subspan(shape.firstCoordinate, shape.coordinateCount)};
  }
  // The same as a shape to be drawn, of one that is a stroke or a fill.
  [[nodiscard]] StrokeShape StrokeOf(const ListedShape& shape) const {
    return {ContoursOf(shape), shape.record.colour, shape.record.width, shape.record.cap};
  }
  [[nodiscard]] FillShape FillOf(const ListedShape& shape) const {
    return {ContoursOf(shape), shape.record.colour, shape.record.rule};
  }
  [[nodiscard]] double PointsPerUnit() const { return pointsPerUnit; }

  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

private:
  ListedShape& Add(const ShapeRecord& record, const Contours& contours);

  double pointsPerUnit;
  std::vector<ListedShape> shapes;
  std::vector<std::uint32_t> lengths;
  std::vector<float> coordinates;
};

}  // namespace orxdrawing
