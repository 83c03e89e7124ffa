// A bounded number of strokes and areas on their way to a picture, in pixels: clear of points that
// are not finite, of what lies beside the picture and of what is too fine to be seen.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "drawing/PixelCanvas.h"
#include "drawing/PixelFrame.h"
#include "drawing/SegmentSet.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// Lines whose points are thinned out pass the points left out within this many pixels.
inline constexpr double kThinning = 1.0 / 32;
// Where joins become bevels, as a multiple of the line width.
inline constexpr double kMiterLimit = 10;

// The points of an outline or a line. Where a line is cut, it has no cap.
struct BatchedContour {
  std::span<const Point> points;
  bool isCutFirst = false;
  bool isCutLast = false;
};

struct BatchedShape {
  enum class Kind : std::uint8_t { Stroke, Area, Rectangle };

  Kind kind = Kind::Stroke;
  LineCap cap = LineCap::Butt;
  FillRule rule = FillRule::Winding;
  PixelColour colour;
  double width = 0;  // of a stroke, in pixels
  // Rows and columns that the ink may reach, cut at the picture.
  PixelRect reach;
  std::size_t firstPoint = 0;
  std::size_t firstContour = 0;
  std::size_t contourCount = 0;
};

class ShapeBatch {
public:
  explicit ShapeBatch(const PixelFrame& pictureFrame, double thinning = kThinning)
      : frame(pictureFrame), tolerance(thinning) {}

  // Strokes are a pixel wide at least. The colours are those to paint with. Return how many points
  // were left out because they are not finite. Throw std::bad_alloc.
  std::uint64_t Add(const StrokeShape& stroke, PixelColour colour);
  // An upright rectangle lies on whole pixels and is a pixel wide and high at least, so that
  // neighbours meet without a seam.
  std::uint64_t Add(const FillShape& fill, PixelColour colour);

  [[nodiscard]] bool IsFull() const {
    return points.size() >= kMostPoints || shapes.size() >= kMostShapes;
  }
  [[nodiscard]] std::span<const BatchedShape> Shapes() const { return shapes; }
  [[nodiscard]] std::size_t PointCount() const { return points.size(); }
  // Calls visit(const BatchedContour&) for each contour until it returns false.
  template <typename Visitor>
  void VisitContours(const BatchedShape& shape, Visitor visit) const {
    std::size_t first = shape.firstPoint;
    for (std::size_t i = 0; i < shape.contourCount; ++i) {
      const ContourEntry& entry = contours[shape.firstContour + i];
      const std::span<const Point> own = std::span(points).subspan(first, entry.length);
      if (!visit(BatchedContour{own, entry.isCutFirst, entry.isCutLast})) return;
      first += entry.length;
    }
  }
  // Gives back memory that single large shapes took.
  void Clear();

private:
  static constexpr std::size_t kMostPoints = 64 << 10;
  static constexpr std::size_t kMostShapes = 16 << 10;

  struct ContourEntry {
    std::size_t length = 0;  // points
    bool isCutFirst = false;
    bool isCutLast = false;
  };
  // What the points of a shape cover.
  struct Cover {
    Box box;
    std::uint64_t lost = 0;
  };

  [[nodiscard]] BatchedShape Begin(BatchedShape::Kind kind, PixelColour colour) const;
  // Of strokes of this width in pixels, or of areas, 0. Calls end(std::size_t first, Cover&) behind
  // each contour, whose points begin at `first`.
  template <typename Ending>
  Cover AddContours(const Contours& from, double width, Ending end);
  void AddContour(std::span<const float> coordinates, double width, Cover& cover);
  // Leaves out what of the line that begins at `first` the stroke has drawn before.
  void EndLine(std::size_t first);
  void AddNewPieces(std::span<const Point> line);
  void EndOutline(std::size_t first, Cover& cover);
  // The rectangle that begins at `first` with its edges on borders of pixels. It keeps its sense of
  // rotation, which the fill rule looks at.
  void SnapRectangle(std::size_t first, Cover& cover);
  void End(BatchedShape shape, const Cover& cover, double margin);

  PixelFrame frame;
  double tolerance;
  std::vector<BatchedShape> shapes;
  std::vector<ContourEntry> contours;
  std::vector<Point> points;
  // Of the stroke being added; reused.
  SegmentSet drawn;
  std::vector<bool> isNew;
  std::vector<Point> wholeLine;
};

}  // namespace orxdrawing
