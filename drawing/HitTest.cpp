#include "drawing/HitTest.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "drawing/Extent.h"

namespace orxdrawing {

namespace {

constexpr double kNowhere = std::numeric_limits<double>::infinity();

// Calls visit(points) for each contour that has some, without those that are not finite.
template <typename Visitor>
void VisitContours(const Contours& contours, double scale, Visitor visit) {
  std::vector<Point> points;
  std::size_t next = 0;
  for (const std::uint32_t length : contours.lengths) {
    points.clear();
    for (const std::size_t end = next + 2 * std::size_t{length}; next < end; next += 2) {
      const Point point{contours.coordinates[next] * scale, contours.coordinates[next + 1] * scale};
      if (std::isfinite(point.x) && std::isfinite(point.y)) points.push_back(point);
    }
    if (!points.empty()) visit(std::span<const Point>(points));
  }
}

double DistanceToDisc(const Point& centre, double radius, const Point& place) {
  return std::max(0.0, std::hypot(place.x - centre.x, place.y - centre.y) - radius);
}

// A rectangle along the line from `start` to `end`, to both sides of it and beyond its ends.
struct Bar {
  Point start;
  Point end;
  double toSides = 0;
  double beforeStart = 0;
  double behindEnd = 0;
};

double DistanceTo(const Bar& bar, const Point& place) {
  const Point step{bar.end.x - bar.start.x, bar.end.y - bar.start.y};
  const double length = std::hypot(step.x, step.y);
  const Point way = length > 0 ? Point{step.x / length, step.y / length} : Point{1, 0};
  const double along = (place.x - bar.start.x) * way.x + (place.y - bar.start.y) * way.y;
  const double across = (place.y - bar.start.y) * way.x - (place.x - bar.start.x) * way.y;
  return std::hypot(std::max({0.0, -bar.beforeStart - along, along - length - bar.behindEnd}),
                    std::max(0.0, std::abs(across) - bar.toSides));
}

double DistanceToLine(std::span<const Point> points, double half, LineCap cap, const Point& place) {
  const std::size_t last = points.size() - 1;
  const bool isClosed = points.size() > 2 && points[0] == points[last];
  const bool endsAreRound = isClosed || cap == LineCap::Round;
  const double beyond = !isClosed && cap == LineCap::Square ? half : 0;
  double nearest = kNowhere;
  for (std::size_t i = 0; i <= last; ++i) {
    const bool isEnd = i == 0 || i == last;
    if (!isEnd || endsAreRound) nearest = std::min(nearest, DistanceToDisc(points[i], half, place));
    if (i == last) break;
    const Bar bar{points[i], points[i + 1], half, i == 0 ? beyond : 0, i + 1 == last ? beyond : 0};
    nearest = std::min(nearest, DistanceTo(bar, place));
  }
  return nearest;
}

// Takes the edges of a fill one after the other.
class AreaMeasure {
public:
  explicit AreaMeasure(const Point& itsPlace) : place(itsPlace) {}

  void AddEdge(const Point& a, const Point& b) {
    toEdge = std::min(toEdge, DistanceTo(Bar{a, b}, place));
    const bool goesUp = a.y <= place.y && b.y > place.y;
    const bool goesDown = b.y <= place.y && a.y > place.y;
    if (!goesUp && !goesDown) return;
    const double side = (b.x - a.x) * (place.y - a.y) - (place.x - a.x) * (b.y - a.y);
    const bool isToTheRight = goesUp ? side > 0 : side < 0;
    if (!isToTheRight) return;
    turns += goesUp ? 1 : -1;
    ++crossings;
  }
  [[nodiscard]] double Distance(FillRule rule) const {
    const bool isInside = rule == FillRule::EvenOdd ? crossings % 2 == 1 : turns != 0;
    return isInside ? 0 : toEdge;
  }

private:
  Point place;
  double toEdge = kNowhere;
  std::int64_t turns = 0;
  std::uint64_t crossings = 0;
};

}  // namespace

double DistanceTo(const StrokeShape& stroke, const Point& place, double scale) {
  const double half = stroke.width > 0 ? stroke.width / 2.0 : 0;
  double nearest = kNowhere;
  VisitContours(stroke.contours, scale, [&](std::span<const Point> points) {
    nearest = std::min(nearest, DistanceToLine(points, half, stroke.cap, place));
  });
  return nearest;
}

double DistanceTo(const FillShape& fill, const Point& place, double scale) {
  AreaMeasure area(place);
  VisitContours(fill.contours, scale, [&](std::span<const Point> points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      area.AddEdge(points[i], points[(i + 1) % points.size()]);
    }
  });
  return area.Distance(fill.rule);
}

double DistanceTo(const ImageShape& image, const Point& place, double scale) {
  const std::optional<Box> box = ExtentOf(image);
  if (!box) return kNowhere;
  return std::hypot(std::max({0.0, box->left * scale - place.x, place.x - box->right * scale}),
                    std::max({0.0, box->bottom * scale - place.y, place.y - box->top * scale}));
}

}  // namespace orxdrawing
