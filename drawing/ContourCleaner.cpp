#include "drawing/ContourCleaner.h"

#include <algorithm>
#include <cmath>

#include "drawing/Clipping.h"

namespace orxdrawing {

ContourCleaner::ContourCleaner(const Box& area, double pointsPerUnit)
    : range{(area.left - kReachPoints) / pointsPerUnit,
            (area.bottom - kReachPoints) / pointsPerUnit,
            (area.right + kReachPoints) / pointsPerUnit, (area.top + kReachPoints) / pointsPerUnit},
      // What is within this of the origin is in range without a closer look.
      reach(static_cast<float>(
          std::max(0.0, std::min({-range.left, -range.bottom, range.right, range.top})) * 0.999)) {}

bool ContourCleaner::IsClean(std::span<const float> coordinates) const {
  bool isClean = true;
  for (const float value : coordinates) isClean &= std::abs(value) <= reach;
  return isClean;
}

std::vector<Point> ContourCleaner::FinitePoints(std::span<const float> coordinates) {
  std::vector<Point> points;
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    const Point point{coordinates[i], coordinates[i + 1]};
    if (std::isfinite(point.x) && std::isfinite(point.y)) {
      points.push_back(point);
    } else {
      ++lostPoints;
    }
  }
  cleaned.clear();
  pieces.clear();
  return points;
}

void ContourCleaner::AddPiece(std::span<const Point> piece) {
  for (const Point& point : piece) {
    cleaned.push_back(static_cast<float>(point.x));
    cleaned.push_back(static_cast<float>(point.y));
  }
  pieces.push_back(2 * piece.size());
}

void ContourCleaner::CutLine(std::span<const float> coordinates) {
  const std::vector<Point> points = FinitePoints(coordinates);
  const bool isWithin = std::all_of(points.begin(), points.end(), [this](const Point& point) {
    return point.x >= range.left && point.x <= range.right && point.y >= range.bottom &&
           point.y <= range.top;
  });
  if (isWithin) return AddPiece(points);
  for (const Polyline& piece : ClipLine(points, range)) AddPiece(piece);
}

void ContourCleaner::CutArea(std::span<const float> coordinates) {
  AddPiece(ClipArea(FinitePoints(coordinates), range));
}

}  // namespace orxdrawing
