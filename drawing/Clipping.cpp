#include "drawing/Clipping.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orxdrawing {

namespace {

Point Between(const Point& a, const Point& b, double share) {
  return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

// One side of the box as a half-plane: the signed distance of a point, not negative inside.
struct Side {
  double factorX;
  double factorY;
  double offset;

  [[nodiscard]] double DistanceOf(const Point& p) const {
    return factorX * p.x + factorY * p.y + offset;
  }
};

std::vector<Side> SidesOf(const Box& box) {
  return {{1, 0, -box.left}, {-1, 0, box.right}, {0, 1, -box.bottom}, {0, -1, box.top}};
}

// The shares of the segment from a to b between which it lies inside.
std::optional<std::pair<double, double>> InsideShares(const Point& a, const Point& b,
                                                      std::span<const Side> sides) {
  double enter = 0;
  double leave = 1;
  for (const Side& side : sides) {
    const double atA = side.DistanceOf(a);
    const double atB = side.DistanceOf(b);
    if (atA < 0 && atB < 0) return std::nullopt;
    if (atA < 0) enter = std::max(enter, atA / (atA - atB));
    if (atB < 0) leave = std::min(leave, atA / (atA - atB));
  }
  if (enter > leave) return std::nullopt;
  return std::pair(enter, leave);
}

// One step of polygon clipping: keeps what is on the inner side.
Polyline ClipToSide(const Polyline& contour, const Side& side) {
  Polyline kept;
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const Point& from = contour[i == 0 ? contour.size() - 1 : i - 1];
    const Point& to = contour[i];
    const double atFrom = side.DistanceOf(from);
    const double atTo = side.DistanceOf(to);
    if ((atFrom < 0) != (atTo < 0)) kept.push_back(Between(from, to, atFrom / (atFrom - atTo)));
    if (!(atTo < 0)) kept.push_back(to);
  }
  return kept;
}

}  // namespace

std::vector<Polyline> ClipLine(std::span<const Point> line, const Box& box) {
  const std::vector<Side> sides = SidesOf(box);
  std::vector<Polyline> pieces;
  bool connected = false;  // whether the last piece ends at the point reached
  for (std::size_t i = 1; i < line.size(); ++i) {
    const auto inside = InsideShares(line[i - 1], line[i], sides);
    if (!inside) {
      connected = false;
      continue;
    }
    const auto [enter, leave] = *inside;
    if (!connected || enter > 0) pieces.push_back({Between(line[i - 1], line[i], enter)});
    pieces.back().push_back(leave < 1 ? Between(line[i - 1], line[i], leave) : line[i]);
    connected = leave == 1;
  }
  return pieces;
}

Polyline ClipArea(std::span<const Point> contour, const Box& box) {
  Polyline area(contour.begin(), contour.end());
  for (const Side& side : SidesOf(box)) area = ClipToSide(area, side);
  return area;
}

}  // namespace orxdrawing
