#include "drawing/DisplayList.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orxdrawing {

namespace {

// Grows around points and boxes.
class ExtentCollector {
public:
  void Add(double x, double y, double margin) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    const Box around{x - margin, y - margin, x + margin, y + margin};
    Add(around);
  }
  void Add(const Box& box) {
    if (!extent) extent = box;
    extent->left = std::min(extent->left, box.left);
    extent->bottom = std::min(extent->bottom, box.bottom);
    extent->right = std::max(extent->right, box.right);
    extent->top = std::max(extent->top, box.top);
  }
  [[nodiscard]] const std::optional<Box>& Extent() const { return extent; }

private:
  std::optional<Box> extent;
};

Box Scaled(const Box& box, double factor) {
  return {box.left * factor, box.bottom * factor, box.right * factor, box.top * factor};
}

// How far the ink of a stroke reaches beyond its points.
double MarginOf(const Shape& shape) {
  if (shape.kind != Shape::Kind::Stroke || !(shape.lineWidth > 0)) return 0;
  const double half = shape.lineWidth / 2.0 * kPointsPerMillimetre;
  return shape.cap == LineCap::Square ? half * std::sqrt(2.0) : half;
}

}  // namespace

std::optional<Box> PlacedImage::Extent() const {
  const double farX = double{x} + samples.width * double{xPixelSize};
  const double farY = double{y} + samples.height * double{yPixelSize};
  const Box box{std::min<double>(x, farX), std::min<double>(y, farY), std::max<double>(x, farX),
                std::max<double>(y, farY)};
  const double area = box.Width() * box.Height();
  if (!std::isfinite(area) || !(area > 0)) return std::nullopt;
  return box;
}

void DisplayList::NewPage() { pageStarts.push_back(shapes.size()); }

void DisplayList::BeginStroke(Colour colour, float lineWidth, LineCap cap) {
  shapes.push_back(
      {Shape::Kind::Stroke, cap, colour, lineWidth, coordinates.size() / 2, contours.size(), 0});
}

// An odd coordinate or a contour without its point would displace everything that follows.
void DisplayList::AddPoint(float x, float y) {
  const std::size_t before = coordinates.size();
  try {
    coordinates.push_back(x);
    coordinates.push_back(y);
  } catch (...) {
    coordinates.resize(before);
    throw;
  }
}

void DisplayList::MoveTo(float x, float y) {
  contours.push_back(1);
  try {
    AddPoint(x, y);
  } catch (...) {
    contours.pop_back();
    throw;
  }
  ++shapes.back().contourCount;
}

void DisplayList::LineTo(float x, float y) {
  if (shapes.back().contourCount == 0) return MoveTo(x, y);
  AddPoint(x, y);
  ++contours.back();
}

void DisplayList::AddFill(Shape::Kind rule, Colour colour, std::span<const int> pointCounts,
                          std::span<const float> points) {
  Shape fill{rule, LineCap::Butt, colour, 0, coordinates.size() / 2, contours.size(), 0};
  coordinates.insert(coordinates.end(), points.begin(), points.end());
  contours.insert(contours.end(), pointCounts.begin(), pointCounts.end());
  fill.contourCount = pointCounts.size();
  shapes.push_back(fill);
}

void DisplayList::AddImage(PlacedImage image) {
  images.push_back(std::move(image));
  shapes.push_back({Shape::Kind::Image, LineCap::Butt, {}, 0, 0, images.size() - 1, 0});
}

std::span<const Shape> DisplayList::ShapesOfPage(std::size_t page) const {
  const std::size_t first = page == 0 ? 0 : pageStarts[page - 1];
  const std::size_t end = page < pageStarts.size() ? pageStarts[page] : shapes.size();
  return std::span(shapes).subspan(first, end - first);
}

std::optional<Box> DisplayList::Extent(std::size_t page, double pointsPerUnit) const {
  ExtentCollector collector;
  for (const Shape& shape : ShapesOfPage(page)) {
    if (shape.kind == Shape::Kind::Image) {
      const std::optional<Box> box = ImageOf(shape).Extent();
      if (box) collector.Add(Scaled(*box, pointsPerUnit));
      continue;
    }
    const double margin = MarginOf(shape);
    VisitContours(shape, [&](std::span<const float> points) {
      for (std::size_t i = 0; i < points.size(); i += 2) {
        collector.Add(points[i] * pointsPerUnit, points[i + 1] * pointsPerUnit, margin);
      }
    });
  }
  return collector.Extent();
}

}  // namespace orxdrawing
