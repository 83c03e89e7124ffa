// Leaves out the points of a line that nobody can see: what is left passes every point that is left
// out at a given distance at most. First and last point stay, and so does every turn back.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/Geometry.h"

namespace orxdrawing {

class LineThinner {
public:
  // Appends to `kept`, which outlives the thinner. With a tolerance of 0, all but points that
  // repeat the one before are kept.
  LineThinner(std::vector<Point>& kept, double distance) : points(kept), tolerance(distance) {}

  void Begin(const Point& first);
  // REQUIRES: Begin was called, and the point is finite.
  void Add(const Point& point);
  // The line ends at the point added last; it has two points at least, if only the first one twice.
  void End();

private:
  // Vectors from the anchor; `left` and `right` bound the directions in which the line may go on
  // and still pass all points since the anchor.
  struct Cone {
    Point left;
    Point right;
  };

  [[nodiscard]] Cone ConeAround(const Point& way, double length) const;
  // Whether the line may go from the anchor straight to where `way` leads.
  bool GoesOn(const Point& way, double length);
  void Keep(const Point& point);

  std::vector<Point>& points;
  double tolerance;
  std::size_t begin = 0;  // of the line
  Point anchor;           // kept last
  Point last;             // added last
  Cone cone;
  double reached = 0;  // how far from the anchor; 0 while the cone is not yet known
  bool isPending = false;
};

}  // namespace orxdrawing
