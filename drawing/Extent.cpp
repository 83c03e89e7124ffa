#include "drawing/Extent.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orxdrawing {

namespace {

// How far the ink of a stroke reaches beyond its points, in points.
double MarginOf(const StrokeShape& stroke) {
  if (!(stroke.width > 0)) return 0;
  const double half = stroke.width / 2.0 * kPointsPerMillimetre;
  return stroke.cap == LineCap::Square ? half * std::sqrt(2.0) : half;
}

Box Scaled(const Box& box, double scale) {
  return {box.left * scale, box.bottom * scale, box.right * scale, box.top * scale};
}

// `margin` is how far, in points, the ink reaches beyond the points.
std::optional<Box> ExtentOf(const Contours& contours, double margin, double pointsPerUnit) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Box box{kInfinity, kInfinity, -kInfinity, -kInfinity};
  for (std::size_t i = 0; i < contours.coordinates.size(); i += 2) {
    const double x = contours.coordinates[i];
    const double y = contours.coordinates[i + 1];
    if (!std::isfinite(x) || !std::isfinite(y)) continue;
    box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x),
           std::max(box.top, y)};
  }
  if (!(box.left <= box.right)) return std::nullopt;
  const double reach = margin / pointsPerUnit;
  return Scaled({box.left - reach, box.bottom - reach, box.right + reach, box.top + reach},
                pointsPerUnit);
}

}  // namespace

std::optional<Box> ExtentOf(const ImageShape& shape) {
  const double farX = double{shape.x} + shape.image->Width() * double{shape.xPixelSize};
  const double farY = double{shape.y} + shape.image->Height() * double{shape.yPixelSize};
  const Box box{std::min<double>(shape.x, farX), std::min<double>(shape.y, farY),
                std::max<double>(shape.x, farX), std::max<double>(shape.y, farY)};
  const double area = box.Width() * box.Height();
  if (!std::isfinite(area) || !(area > 0)) return std::nullopt;
  return box;
}

std::optional<Box> ExtentInPoints(const StrokeShape& stroke, double pointsPerUnit) {
  return ExtentOf(stroke.contours, MarginOf(stroke), pointsPerUnit);
}

std::optional<Box> ExtentInPoints(const FillShape& fill, double pointsPerUnit) {
  return ExtentOf(fill.contours, 0, pointsPerUnit);
}

std::optional<Box> ExtentInPoints(const ImageShape& image, double pointsPerUnit) {
  const std::optional<Box> box = ExtentOf(image);
  if (!box) return std::nullopt;
  return Scaled(*box, pointsPerUnit);
}

std::optional<Box> Union(const std::optional<Box>& a, const std::optional<Box>& b) {
  if (!a || !b) return a ? a : b;
  return Box{std::min(a->left, b->left), std::min(a->bottom, b->bottom),
             std::max(a->right, b->right), std::max(a->top, b->top)};
}

}  // namespace orxdrawing
