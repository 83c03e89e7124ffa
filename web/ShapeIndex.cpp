#include "web/ShapeIndex.h"

#include <cmath>
#include <span>

#include "drawing/HitTest.h"
#include "drawing/Text.h"

namespace orxweb {

namespace {

using orxdrawing::Box;
using orxdrawing::Contours;
using orxdrawing::kPointsPerMillimetre;
using orxdrawing::ListedShape;
using orxdrawing::Point;
using orxdrawing::ShapeKind;
using orxdrawing::ShapeRecord;

// More than anybody points at. Growing takes up to three times as much.
constexpr std::size_t kMostBytes = 320'000'000;

bool IsWithin(const Box& box, Point point, double reach) {
  return point.x >= box.left - reach && point.x <= box.right + reach &&
         point.y >= box.bottom - reach && point.y <= box.top + reach;
}

void AddContour(std::string& path, std::span<const float> coordinates, double scale) {
  bool isBegun = false;
  for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2) {
    const Point point{coordinates[i] * scale, coordinates[i + 1] * scale};
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) continue;
    path += isBegun ? 'L' : 'M';
    isBegun = true;
    path += orxdrawing::ShortNumber(point.x);
    path += ' ';
    path += orxdrawing::ShortNumber(point.y);
  }
}

}  // namespace

template <typename AnyShape>
void ShapeIndex::Keep(const AnyShape& shape, const Contours& contours) {
  const std::size_t bytes =
      sizeof(ListedShape) + contours.lengths.size_bytes() + contours.coordinates.size_bytes();
  if (kept + bytes > kMostBytes) isComplete = false;
  if (!isComplete) return;
  kept += bytes;
  list.SetPlace(Place());
  list.Draw(shape);
}

void ShapeIndex::Draw(const orxdrawing::StrokeShape& stroke) { Keep(stroke, stroke.contours); }
void ShapeIndex::Draw(const orxdrawing::FillShape& fill) { Keep(fill, fill.contours); }
void ShapeIndex::Draw(const orxdrawing::ImageShape& image) { Keep(image, {}); }

std::optional<std::size_t> ShapeIndex::At(std::uint32_t page, Point point, double reach) const {
  const auto& shapes = list.Shapes();
  for (std::size_t i = shapes.size(); i-- > 0;) {
    if (shapes[i].record.page == page && IsHit(shapes[i], point, reach)) return i;
  }
  return std::nullopt;
}

bool ShapeIndex::IsHit(const ListedShape& shape, Point point, double reach) const {
  const ShapeRecord& record = shape.record;
  if (!record.extent || !IsWithin(*record.extent, point, reach)) return false;
  if (record.kind == ShapeKind::Image) return true;
  // Distances are in the unit of widths: millimetres.
  const Point place{point.x / kPointsPerMillimetre, point.y / kPointsPerMillimetre};
  const double scale = list.PointsPerUnit() / kPointsPerMillimetre;
  const double distance = record.kind == ShapeKind::Stroke
                              ? orxdrawing::DistanceTo(list.StrokeOf(shape), place, scale)
                              : orxdrawing::DistanceTo(list.FillOf(shape), place, scale);
  return distance <= reach / kPointsPerMillimetre;
}

std::string ShapeIndex::OutlineOf(const ListedShape& shape) const {
  std::string path;
  const Contours contours = list.ContoursOf(shape);
  if (shape.record.kind == ShapeKind::Image) {
    const std::span<const float> at = contours.coordinates;
    const float corners[] = {at[0], at[1], at[2], at[1], at[2], at[3], at[0], at[3]};
    AddContour(path, corners, list.PointsPerUnit());
    return path.empty() ? path : path + 'Z';
  }
  std::size_t first = 0;
  for (const std::uint32_t length : contours.lengths) {
    const auto points = contours.coordinates.subspan(first, 2 * std::size_t{length});
    AddContour(path, points, list.PointsPerUnit());
    if (shape.record.kind == ShapeKind::Fill && !path.empty()) path += 'Z';
    first += points.size();
  }
  return path;
}

}  // namespace orxweb
