#include "web/ShapeIndex.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/Extent.h"
#include "drawing/Text.h"

namespace orxweb {

namespace {

using orxdrawing::Box;
using orxdrawing::Point;

// 160 MB; more than anybody points at.
constexpr std::size_t kMostCoordinates = 40'000'000;

double DistanceToSegment(Point point, Point a, Point b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  double along = square > 0 ? ((point.x - a.x) * dx + (point.y - a.y) * dy) / square : 0;
  along = std::clamp(along, 0.0, 1.0);
  return std::hypot(point.x - a.x - along * dx, point.y - a.y - along * dy);
}

Point PointAt(const float* points, std::size_t i) { return {points[2 * i], points[2 * i + 1]}; }

double DistanceToContour(Point point, const float* points, std::size_t count) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < count; ++i) {
    const Point before = PointAt(points, i > 0 ? i - 1 : 0);
    const double distance = DistanceToSegment(point, before, PointAt(points, i));
    if (distance < least) least = distance;
  }
  return least;
}

// How often the contour runs around the point, against the clock.
int WindingAround(Point point, const float* points, std::size_t count) {
  int winding = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const Point a = PointAt(points, i);
    const Point b = PointAt(points, i + 1 < count ? i + 1 : 0);
    if ((a.y <= point.y) == (b.y <= point.y)) continue;
    const double x = a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x);
    if (x > point.x) winding += b.y > a.y ? 1 : -1;
  }
  return winding;
}

void Extend(Box& box, float x, float y) {
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  box.left = std::min<double>(box.left, x);
  box.right = std::max<double>(box.right, x);
  box.bottom = std::min<double>(box.bottom, y);
  box.top = std::max<double>(box.top, y);
}

}  // namespace

void ShapeIndex::Draw(const orxdrawing::StrokeShape& stroke) {
  const auto width = static_cast<float>(stroke.width * orxdrawing::kPointsPerMillimetre);
  Add(IndexedShape::Kind::Stroke, width, stroke.contours);
}

void ShapeIndex::Draw(const orxdrawing::FillShape& fill) {
  const bool isWinding = fill.rule == orxdrawing::FillRule::Winding;
  Add(isWinding ? IndexedShape::Kind::WindingFill : IndexedShape::Kind::EvenOddFill, 0,
      fill.contours);
}

void ShapeIndex::Draw(const orxdrawing::ImageShape& image) {
  const std::optional<Box> box = orxdrawing::ExtentOf(image);
  if (!box) return;
  const auto left = static_cast<float>(box->left);
  const auto right = static_cast<float>(box->right);
  const auto bottom = static_cast<float>(box->bottom);
  const auto top = static_cast<float>(box->top);
  const float corners[] = {left, bottom, right, bottom, right, top, left, top};
  const std::uint32_t length[] = {4};
  Add(IndexedShape::Kind::Image, 0, {length, corners});
}

void ShapeIndex::Add(IndexedShape::Kind kind, float width, const orxdrawing::Contours& contours) {
  if (coordinates.size() + contours.coordinates.size() > kMostCoordinates) isComplete = false;
  if (!isComplete) return;
  constexpr double kFar = std::numeric_limits<double>::infinity();
  IndexedShape shape{kind,
                     page,
                     std::abs(width),
                     place,
                     lengths.size(),
                     contours.lengths.size(),
                     coordinates.size() / 2,
                     {kFar, kFar, -kFar, -kFar}};
  lengths.insert(lengths.end(), contours.lengths.begin(), contours.lengths.end());
  for (const float value : contours.coordinates) {
    coordinates.push_back(static_cast<float>(value * pointsPerUnit));
  }
  for (std::size_t i = 2 * shape.firstPoint; i + 1 < coordinates.size(); i += 2) {
    Extend(shape.box, coordinates[i], coordinates[i + 1]);
  }
  shapes.push_back(shape);
}

std::optional<std::size_t> ShapeIndex::At(std::uint32_t wantedPage, Point point,
                                          double reach) const {
  for (std::size_t i = shapes.size(); i-- > 0;) {
    if (shapes[i].page == wantedPage && IsHit(shapes[i], point, reach)) return i;
  }
  return std::nullopt;
}

bool ShapeIndex::IsHit(const IndexedShape& shape, Point point, double reach) const {
  const double margin = std::max<double>(reach, shape.width / 2);
  const Box& box = shape.box;
  if (!(point.x >= box.left - margin && point.x <= box.right + margin &&
        point.y >= box.bottom - margin && point.y <= box.top + margin)) {
    return false;
  }
  bool isNear = false;
  int winding = 0;
  int crossings = 0;
  VisitContours(shape, [&](const float* points, std::size_t count) {
    isNear = isNear || DistanceToContour(point, points, count) <= margin;
    const int around = WindingAround(point, points, count);
    winding += around;
    crossings += std::abs(around);
  });
  if (isNear || shape.kind == IndexedShape::Kind::Stroke) return isNear;
  return shape.kind == IndexedShape::Kind::EvenOddFill ? crossings % 2 != 0 : winding != 0;
}

std::string ShapeIndex::OutlineOf(const IndexedShape& shape) const {
  std::string path;
  VisitContours(shape, [&](const float* points, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const Point point = PointAt(points, i);
      if (!std::isfinite(point.x) || !std::isfinite(point.y)) continue;
      path += i == 0 || path.empty() ? 'M' : 'L';
      path += orxdrawing::ShortNumber(point.x);
      path += ' ';
      path += orxdrawing::ShortNumber(point.y);
    }
    if (shape.kind != IndexedShape::Kind::Stroke && !path.empty()) path += 'Z';
  });
  return path;
}

}  // namespace orxweb
