// The graphics state: what path, painting and matrix operators share.
//
// Three levels of coordinates are told apart: user space (the document's numbers), device space
// (user space through the transformation matrix; what paths and the current point hold) and output
// units (device space times the interpreter's unit scale; what the generator gets). The matrix
// never contains the unit scale.
//
// A matrix [a b c d tx ty] maps (x, y) to (a*x + c*y + tx, b*x + d*y + ty).
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/ORXMath3x3Matrix.h"

namespace orxeps {

enum class PathPointKind : std::uint16_t {
  Line = 0,  // joined to the point before it by a straight segment
  Move = 1,  // starts a subpath
};

// In device space.
struct PathPoint {
  double x;
  double y;
  PathPointKind kind;
};

// Where the points of a path lie in the PathBuffer that holds the points of all states.
struct PathSpan {
  std::size_t begin = 0;
  std::size_t count = 0;

  [[nodiscard]] std::size_t End() const noexcept { return begin + count; }
};

// Plain values, so saving a state is a copy of this record. The points are in the PathBuffer.
struct GraphicsState {
  ORXMath3x3Matrix ctm;
  double currentX = 0.0;
  double currentY = 0.0;
  PathSpan path;
  std::int32_t subpathStart = 0;  // position, from 1, of the Move that began the subpath; 0: none
  float red = 0.0F;
  float green = 0.0F;
  float blue = 0.0F;
  float lineWidth = 0.1F;    // already in output units
  std::int32_t lineCap = 0;  // 10 butt, 11 projecting square, 12 round; 0 never set
  std::uint32_t mark = 0;    // a watcher's; nothing here reads it
};

// A point of single-precision coordinates, as operators take and give them.
struct FloatPoint {
  float x;
  float y;
};

// What maps points: the six numbers of a matrix.
struct PointMap {
  double a, b, c, d, tx, ty;

  explicit PointMap(const ORXMath3x3Matrix& matrix) noexcept
      : a(matrix.GetFirstColumn().x),
        b(matrix.GetSecondColumn().x),
        c(matrix.GetFirstColumn().y),
        d(matrix.GetSecondColumn().y),
        tx(matrix.GetFirstColumn().z),
        ty(matrix.GetSecondColumn().z) {}

  // Each product and sum in double precision, from left to right; each result rounded to single.
  [[nodiscard]] FloatPoint Point(double x, double y) const noexcept {
    return {static_cast<float>(a * x + c * y + tx), static_cast<float>(b * x + d * y + ty)};
  }
  // The same without the translation.
  [[nodiscard]] FloatPoint Displacement(double dx, double dy) const noexcept {
    return {static_cast<float>(a * dx + c * dy), static_cast<float>(b * dx + d * dy)};
  }
};

[[nodiscard]] inline FloatPoint TransformPoint(const ORXMath3x3Matrix& matrix,
                                               FloatPoint point) noexcept {
  return PointMap(matrix).Point(point.x, point.y);
}
[[nodiscard]] inline FloatPoint TransformDisplacement(const ORXMath3x3Matrix& matrix,
                                                      FloatPoint displacement) noexcept {
  return PointMap(matrix).Displacement(displacement.x, displacement.y);
}

}  // namespace orxeps
