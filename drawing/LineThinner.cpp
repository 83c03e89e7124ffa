#include "drawing/LineThinner.h"

#include <cmath>

namespace orxdrawing {

namespace {

double Cross(const Point& a, const Point& b) { return a.x * b.y - a.y * b.x; }

}  // namespace

void LineThinner::Begin(const Point& first) {
  begin = points.size();
  Keep(first);
  last = first;
}

void LineThinner::Add(const Point& point) {
  const Point way{point.x - anchor.x, point.y - anchor.y};
  const double length = std::sqrt(way.x * way.x + way.y * way.y);
  if (!GoesOn(way, length)) {
    Keep(last);
    const Point onward{point.x - anchor.x, point.y - anchor.y};
    GoesOn(onward, std::sqrt(onward.x * onward.x + onward.y * onward.y));
  }
  last = point;
  isPending = true;
}

void LineThinner::End() {
  if (!isPending) return;
  // A last step too short to be seen would still turn the line anywhere.
  const bool isUnseen = tolerance > 0 && reached == 0;
  if (isUnseen && points.size() - begin > 1) points.pop_back();
  Keep(last);
}

LineThinner::Cone LineThinner::ConeAround(const Point& way, double length) const {
  const double sine = tolerance / length;
  const double cosine = std::sqrt(1 - sine * sine);
  return {{cosine * way.x - sine * way.y, sine * way.x + cosine * way.y},
          {cosine * way.x + sine * way.y, cosine * way.y - sine * way.x}};
}

bool LineThinner::GoesOn(const Point& way, double length) {
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
