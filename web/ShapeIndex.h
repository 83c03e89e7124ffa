// The way from a place on the paper back to the document, and from the document to the paper.
//
// Keeps the outline of everything that was drawn, with the place in the document that drew it.
// Coordinates are in points, y upwards. Whoever draws sets `place` before each shape.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"
#include "host/ORXInterpreterWatcher.h"

namespace orxweb {

struct IndexedShape {
  enum class Kind : std::uint8_t { Stroke, WindingFill, EvenOddFill, Image };

  Kind kind = Kind::Stroke;
  std::uint32_t page = 0;  // from 0
  float width = 0;         // of a stroke, in points
  ORXPlace place;
  std::size_t firstContour = 0;
  std::size_t contourCount = 0;
  std::size_t firstPoint = 0;
  orxdrawing::Box box;  // of its points
};

class ShapeIndex final : public orxdrawing::ShapeSink {
public:
  explicit ShapeIndex(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  ORXPlace place;

  [[nodiscard]] const std::vector<IndexedShape>& Shapes() const { return shapes; }
  // False when there were more points than are kept: what came then cannot be found.
  [[nodiscard]] bool IsComplete() const { return isComplete; }

  // The uppermost shape of the page that has ink within `reach` of the point.
  [[nodiscard]] std::optional<std::size_t> At(std::uint32_t page, orxdrawing::Point point,
                                              double reach) const;
  // Its contours as the data of an SVG path.
  [[nodiscard]] std::string OutlineOf(const IndexedShape& shape) const;

  void NextPage() override { ++page; }
  void Draw(const orxdrawing::StrokeShape& stroke) override;
  void Draw(const orxdrawing::FillShape& fill) override;
  void Draw(const orxdrawing::ImageShape& image) override;

private:
  void Add(IndexedShape::Kind kind, float width, const orxdrawing::Contours& contours);
  [[nodiscard]] bool IsHit(const IndexedShape& shape, orxdrawing::Point point, double reach) const;
  // Calls visit(const float* points, std::size_t count) for each contour.
  template <typename Visitor>
  void VisitContours(const IndexedShape& shape, Visitor visit) const {
    const float* next = coordinates.data() + 2 * shape.firstPoint;
    for (std::size_t i = 0; i < shape.contourCount; ++i) {
      const std::size_t count = lengths[shape.firstContour + i];
      visit(next, count);
      next += 2 * count;
    }
  }

  double pointsPerUnit;
  std::uint32_t page = 0;
  bool isComplete = true;
  std::vector<IndexedShape> shapes;
  std::vector<std::uint32_t> lengths;
  std::vector<float> coordinates;  // points
};

}  // namespace orxweb
