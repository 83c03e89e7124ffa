#include "drawing/LineThinner.h"

#include <algorithm>
#include <cmath>

namespace orxdrawing {

namespace {

// How much farther than before a join may reach, in tolerances.
constexpr double kReachOfJoin = 4;

double Cross(const Point& a, const Point& b) { return a.x * b.y - a.y * b.x; }
double Dot(const Point& a, const Point& b) { return a.x * b.x + a.y * b.y; }
double Length(const Point& way) { return std::sqrt(Dot(way, way)); }

}  // namespace

// A mitre reaches half the width, divided by the cosine of half the turn. Leaving out points on
// both sides may double the turn.
LineThinner::LineThinner(std::vector<Point>& kept, const Thinning& thinning)
    : points(kept),
      tolerance(thinning.distance),
      rounding(std::min(thinning.rounding, thinning.distance)),
      hasJoins(thinning.width > 0),
      leastCosine(thinning.width / (thinning.width + 2 * kReachOfJoin * thinning.distance)) {}

void LineThinner::Begin(const Point& first) {
  begin = points.size();
  Keep(first);
  isLine = false;
  last = end = beforeLast = first;
  direction = directionOfAnchor = {};
}

void LineThinner::Add(const Point& point) {
  isLine = true;
  end = point;
  if (!hasJoins) return GoOnTo(point);
  const Point step{point.x - last.x, point.y - last.y};
  const double length = Length(step);
  if (length <= rounding) return;
  const Point before = direction;
  direction = {step.x / length, step.y / length};
  if (IsCorner(before, direction)) return KeepCornerBefore(point);
  if (isPending && IsCorner(directionOfAnchor, direction)) Keep(last);
  GoOnTo(point);
}

bool LineThinner::IsCorner(const Point& before, const Point& after) const {
  return Dot(before, after) < leastCosine && before != Point{};
}

// The corner is the last point. A join is made from the steps on both sides of it.
void LineThinner::KeepCornerBefore(const Point& point) {
  if (isPending) {
    if (beforeLast != anchor) Keep(beforeLast);
    Keep(last);
  }
  beforeLast = last;
  last = point;
  Keep(last);
}

void LineThinner::GoOnTo(const Point& point) {
  const Point way{point.x - anchor.x, point.y - anchor.y};
  if (!MayGo(way, Length(way))) {
    Keep(last);
    const Point onward{point.x - anchor.x, point.y - anchor.y};
    MayGo(onward, Length(onward));
  }
  if (!isPending) directionOfAnchor = direction;
  beforeLast = last;
  last = point;
  isPending = true;
}

void LineThinner::End() {
  if (!isLine) return;
  if (isPending || points.size() == begin + 1) return Keep(end);
  points.back() = end;
}

LineThinner::Cone LineThinner::ConeAround(const Point& way, double length) const {
  const double sine = tolerance / length;
  const double cosine = std::sqrt(1 - sine * sine);
  return {{cosine * way.x - sine * way.y, sine * way.x + cosine * way.y},
          {cosine * way.x + sine * way.y, cosine * way.y - sine * way.x}};
}

bool LineThinner::MayGo(const Point& way, double length) {
  if (reached == 0) {
    if (length <= tolerance) return true;
    reached = length;
    cone = ConeAround(way, length);
    return true;
  }
  if (length < reached || Cross(cone.right, way) < 0 || Cross(way, cone.left) < 0) return false;
  reached = length;
  const Cone around = ConeAround(way, length);
  if (Cross(cone.right, around.right) > 0) cone.right = around.right;
  if (Cross(around.left, cone.left) > 0) cone.left = around.left;
  return true;
}

void LineThinner::Keep(const Point& point) {
  points.push_back(point);
  anchor = point;
  reached = 0;
  isPending = false;
}

}  // namespace orxdrawing
