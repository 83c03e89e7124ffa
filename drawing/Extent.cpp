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

void ExtentSink::Draw(const StrokeShape& stroke) { Add(stroke.contours, MarginOf(stroke)); }

void ExtentSink::Draw(const FillShape& fill) { Add(fill.contours, 0); }

void ExtentSink::Draw(const ImageShape& image) {
  const std::optional<Box> box = ExtentOf(image);
  if (box) Add(*box);
}

void ExtentSink::Add(const Contours& contours, double margin) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Box box{kInfinity, kInfinity, -kInfinity, -kInfinity};
  for (std::size_t i = 0; i < contours.coordinates.size(); i += 2) {
    const double x = contours.coordinates[i];
    const double y = contours.coordinates[i + 1];
    if (!std::isfinite(x) || !std::isfinite(y)) continue;
    box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x),
           std::max(box.top, y)};
  }
  if (!(box.left <= box.right)) return;
  const double reach = margin / pointsPerUnit;
  Add(Box{box.left - reach, box.bottom - reach, box.right + reach, box.top + reach});
}

void ExtentSink::Add(const Box& box) {
  const double scale = pointsPerUnit;
  const Box added{box.left * scale, box.bottom * scale, box.right * scale, box.top * scale};
  std::optional<Box>& extent = extents.back();
  if (!extent) extent = added;
  extent->left = std::min(extent->left, added.left);
  extent->bottom = std::min(extent->bottom, added.bottom);
  extent->right = std::max(extent->right, added.right);
  extent->top = std::max(extent->top, added.top);
}

}  // namespace orxdrawing
