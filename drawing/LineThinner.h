// Leaves out the points of a line that nobody can see: what is left passes every point that is left
// out at a given distance at most, and its joins reach where those of the whole line do. First and
// last point stay, and so does every turn back.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/Geometry.h"

namespace orxdrawing {

struct Thinning {
  // With 0, all but points that repeat the one before are kept.
  double distance = 0;
  // Of the line that a stroke draws, whose turns show in its joins. Outlines of areas have none: 0.
  double width = 0;
  // By how much points may be off: steps that are no longer do not tell where a stroke's line goes.
  double rounding = 0;
};

class LineThinner {
public:
  // Appends to `kept`, which outlives the thinner.
  LineThinner(std::vector<Point>& kept, const Thinning& thinning);

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

  [[nodiscard]] bool IsCorner(const Point& before, const Point& after) const;
  void KeepCornerBefore(const Point& point);
  void GoOnTo(const Point& point);
  [[nodiscard]] Cone ConeAround(const Point& way, double length) const;
  // Whether the line may go from the anchor straight to where `way` leads.
  bool MayGo(const Point& way, double length);
  void Keep(const Point& point);

  std::vector<Point>& points;
  double tolerance;
  double rounding;
  bool hasJoins;
  double leastCosine;     // of turns that may be left out
  std::size_t begin = 0;  // of the line
  Point anchor;           // kept last
  Point last;             // added last, but for steps too short to have a direction
  Point end;              // added last
  Cone cone;
  double reached = 0;      // how far from the anchor; 0 while the cone is not yet known
  bool isLine = false;     // of two points at least
  bool isPending = false;  // whether the last point is not kept yet

  // Of lines with joins. Directions are of length 1, or 0 before there is one.
  Point beforeLast;
  Point direction;          // of the step to `last`
  Point directionOfAnchor;  // of the step away from it
};

}  // namespace orxdrawing
