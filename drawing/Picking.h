// The shapes that touch a place.
//
// A sink for one place: let the drawing pass, then ask what was found. It keeps records, not
// points, so that memory does not grow with the drawing.
#pragma once

#include <cstdint>
#include <deque>

#include "drawing/Geometry.h"
#include "drawing/PlacedShapes.h"
#include "drawing/ShapeRecord.h"

namespace orxdrawing {

class PickingSink final : public PlacedSink {
public:
  // More shapes are not kept; those drawn first go.
  static constexpr std::size_t kMost = 10'000;

  // Shapes whose ink is no further than `reach` from the place, both in millimetres from the
  // document's origin.
  PickingSink(const Point& placeInMillimetres, double reach, double unitInPoints)
      : target(placeInMillimetres), within(reach), pointsPerUnit(unitInPoints) {}

  // In the order in which they were drawn: the last is the topmost of the last page.
  [[nodiscard]] const std::deque<ShapeRecord>& Found() const { return found; }
  [[nodiscard]] std::uint64_t LeftOut() const { return leftOut; }

  void Draw(const StrokeShape& stroke) override { Take(stroke); }
  void Draw(const FillShape& fill) override { Take(fill); }
  void Draw(const ImageShape& image) override { Take(image); }

private:
  template <typename AnyShape>
  void Take(const AnyShape& shape);

  Point target;
  double within;
  double pointsPerUnit;
  std::deque<ShapeRecord> found;
  std::uint64_t leftOut = 0;
};

}  // namespace orxdrawing
