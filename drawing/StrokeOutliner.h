// The outlines of strokes, made by AGG: lines of one width with mitred joins, bevelled beyond the
// limit, and caps.
//
// A line is outlined in pieces that meet in the middle of a segment, where their edges cancel each
// other, and only where it can reach the tile. Every turn runs through the line's own point on its
// inner side when segments are short, so an outline never takes away what another one covers.
#pragma once

#include <agg_math_stroke.h>
#include <agg_vertex_sequence.h>

#include <vector>

#include "drawing/AreaRasteriser.h"
#include "drawing/Geometry.h"
#include "drawing/PixelFrame.h"
#include "drawing/ShapeBatch.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

class StrokeOutliner {
public:
  explicit StrokeOutliner(AreaRasteriser& rasteriser);

  // What follows has this width, in pixels, and is wanted on the tile.
  void Begin(double strokeWidth, LineCap strokeCap, const PixelRect& tile);
  // Adds the outline of a line of two points at least. One that ends where it began, and is not
  // cut, is closed; one that has no length is a dot, except with butt caps. Calls goesOn() every
  // few hundred points and gives up when it says no.
  template <typename Question>
  void Add(const BatchedContour& line, Question goesOn) {
    BeginLine(line);
    for (std::size_t i = 1; i < line.points.size(); ++i) {
      if (i % kPointsPerLook == 0 && !goesOn()) return Abandon();
      AddPoint(line.points[i]);
    }
    EndLine(line);
  }

private:
  static constexpr std::size_t kPointsPerLook = 256;
  static constexpr std::size_t kPiece = 256;

  // Hands AGG's points to the rasteriser.
  class Pen {
  public:
    using value_type = agg::point_d;

    explicit Pen(AreaRasteriser& target) : rasteriser(target) {}
    void Lift() { isUp = true; }
    void remove_all() {}
    void add(const value_type& point) {
      if (isUp) {
        rasteriser.MoveTo(point.x, point.y);
      } else {
        rasteriser.LineTo(point.x, point.y);
      }
      isUp = false;
    }

  private:
    AreaRasteriser& rasteriser;
    bool isUp = true;
  };

  [[nodiscard]] bool Reaches(const Point& a, const Point& b) const;
  void BeginLine(const BatchedContour& line);
  void AddPoint(const Point& point);
  void EndLine(const BatchedContour& line);
  void Abandon() { piece.clear(); }
  // A segment that reaches the tile, of positive length.
  void AddSegment(const Point& from, const Point& to);
  // One with an end so far away that the width would be lost in its coordinates.
  void AddFarSegment(const Point& from, const Point& to);
  void AddToPiece(const Point& point);
  void EndPiece(LineCap lastCap);
  void OutlinePiece(LineCap lastCap);
  void AddDot(const Point& centre);

  Pen pen;
  agg::math_stroke<Pen> stroke;
  double halfWidth = 0;
  LineCap cap = LineCap::Butt;
  Box reach;  // points beyond it leave nothing on the tile

  Point previous;
  LineCap firstCap = LineCap::Butt;     // of the piece
  std::vector<agg::vertex_dist> piece;  // reused
};

}  // namespace orxdrawing
