#include "drawing/StrokeOutliner.h"

#include <agg_clip_liang_barsky.h>

#include <algorithm>
#include <cmath>

namespace orxdrawing {

namespace {

agg::line_cap_e AggCap(LineCap cap) {
  switch (cap) {
    case LineCap::Square:
      return agg::square_cap;
    case LineCap::Round:
      return agg::round_cap;
    case LineCap::Butt:
      break;
  }
  return agg::butt_cap;
}

// By how much rounder than its usual eighth of a pixel AGG's arcs are.
constexpr double kRoundness = 4;
// Farther from the picture's corner, in pixels, segments are cut where they leave the tile's reach.
constexpr double kFar = 1e8;

bool IsFar(const Point& a, const Point& b) {
  return std::max({std::abs(a.x), std::abs(a.y), std::abs(b.x), std::abs(b.y)}) > kFar;
}

bool IsClosed(const BatchedContour& line) {
  const auto& points = line.points;
  return points.size() > 2 && points.front() == points.back() && !line.isCutFirst &&
         !line.isCutLast;
}

Point Middle(const Point& a, const Point& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

}  // namespace

StrokeOutliner::StrokeOutliner(AreaRasteriser& rasteriser) : pen(rasteriser) {
  stroke.line_join(agg::miter_join_revert);
  stroke.inner_join(agg::inner_jag);
  stroke.miter_limit(kMiterLimit);
  stroke.approximation_scale(kRoundness);
}

void StrokeOutliner::Begin(double strokeWidth, LineCap strokeCap, const PixelRect& tile) {
  halfWidth = strokeWidth / 2;
  cap = strokeCap;
  stroke.width(strokeWidth);
  const double margin = halfWidth * kMiterLimit + 1;
  reach = {tile.left - margin, tile.top - margin, tile.right + margin, tile.bottom + margin};
}

bool StrokeOutliner::Reaches(const Point& a, const Point& b) const {
  return !(a.y < reach.bottom && b.y < reach.bottom) && !(a.y > reach.top && b.y > reach.top) &&
         !(a.x < reach.left && b.x < reach.left) && !(a.x > reach.right && b.x > reach.right);
}

void StrokeOutliner::BeginLine(const BatchedContour& line) {
  const bool isClosed = IsClosed(line);
  piece.clear();
  firstCap = isClosed || line.isCutFirst ? LineCap::Butt : cap;
  previous = isClosed ? Middle(line.points[0], line.points[1]) : line.points[0];
}

void StrokeOutliner::AddPoint(const Point& point) {
  if (point == previous) return;
  if (Reaches(previous, point)) {
    if (IsFar(previous, point)) {
      AddFarSegment(previous, point);
    } else {
      AddSegment(previous, point);
    }
  } else {
    EndPiece(LineCap::Butt);
    firstCap = LineCap::Butt;
  }
  previous = point;
}

void StrokeOutliner::EndLine(const BatchedContour& line) {
  const auto& points = line.points;
  if (IsClosed(line)) {
    AddPoint(Middle(points[0], points[1]));
    EndPiece(LineCap::Butt);
  } else if (points.size() == 2 && points[0] == points[1]) {
    AddDot(points[0]);
  } else {
    EndPiece(line.isCutLast ? LineCap::Butt : cap);
  }
}

void StrokeOutliner::AddSegment(const Point& from, const Point& to) {
  if (piece.empty()) AddToPiece(from);
  if (piece.size() >= kPiece) {
    const Point middle = Middle(from, to);
    AddToPiece(middle);
    EndPiece(LineCap::Butt);
    firstCap = LineCap::Butt;
    AddToPiece(middle);
  }
  AddToPiece(to);
}

void StrokeOutliner::AddFarSegment(const Point& from, const Point& to) {
  constexpr unsigned kMovedFirst = 1;
  constexpr unsigned kMovedLast = 2;
  constexpr unsigned kOutside = 4;
  Point first = from;
  Point last = to;
  const unsigned moved = agg::clip_line_segment<double>(
      &first.x, &first.y, &last.x, &last.y, {reach.left, reach.bottom, reach.right, reach.top});
  if ((moved & kMovedFirst) != 0 || moved >= kOutside) {
    EndPiece(LineCap::Butt);
    firstCap = LineCap::Butt;
  }
  if (moved >= kOutside) return;
  AddSegment(first, last);
  if ((moved & kMovedLast) == 0) return;
  EndPiece(LineCap::Butt);
  firstCap = LineCap::Butt;
}

void StrokeOutliner::AddToPiece(const Point& point) {
  const agg::vertex_dist next(point.x, point.y);
  if (!piece.empty() && !piece.back()(next)) return;
  piece.push_back(next);
}

void StrokeOutliner::EndPiece(LineCap lastCap) {
  if (piece.size() > 1) OutlinePiece(lastCap);
  piece.clear();
}

// Along one side, around the last cap, and back along the other side.
void StrokeOutliner::OutlinePiece(LineCap lastCap) {
  const std::size_t last = piece.size() - 1;
  pen.Lift();
  stroke.line_cap(AggCap(firstCap));
  stroke.calc_cap(pen, piece[0], piece[1], piece[0].dist);
  for (std::size_t i = 1; i < last; ++i) {
    stroke.calc_join(pen, piece[i - 1], piece[i], piece[i + 1], piece[i - 1].dist, piece[i].dist);
  }
  stroke.line_cap(AggCap(lastCap));
  stroke.calc_cap(pen, piece[last], piece[last - 1], piece[last - 1].dist);
  for (std::size_t i = last - 1; i > 0; --i) {
    stroke.calc_join(pen, piece[i + 1], piece[i], piece[i - 1], piece[i].dist, piece[i - 1].dist);
  }
}

void StrokeOutliner::AddDot(const Point& centre) {
  if (cap == LineCap::Butt) return;
  // Two caps back to back.
  const agg::vertex_dist middle(centre.x, centre.y);
  const agg::vertex_dist right(centre.x + 1, centre.y);
  const agg::vertex_dist left(centre.x - 1, centre.y);
  pen.Lift();
  stroke.line_cap(AggCap(cap));
  stroke.calc_cap(pen, middle, right, 1);
  stroke.calc_cap(pen, middle, left, 1);
}

}  // namespace orxdrawing
