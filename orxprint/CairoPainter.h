// Paints pages of a display list on a Cairo context.
//
// The context's user space is the page in points, origin at the upper left corner of the drawn
// area, y downwards. Cairo keeps coordinates as 24.8 fixed point numbers of device space, so lines
// and areas that leave a safe range are cut, and what is not finite is left out and counted.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <optional>
#include <span>

#include "drawing/Clipping.h"
#include "drawing/DisplayList.h"
#include "drawing/Geometry.h"
#include "orxprint/ImageSurfaces.h"
#include "orxprint/RunControl.h"

namespace orxprint {

using orxdrawing::Box;
using orxdrawing::Colour;
using orxdrawing::DisplayList;
using orxdrawing::LineCap;
using orxdrawing::PlacedImage;
using orxdrawing::Point;
using orxdrawing::Polyline;
using orxdrawing::Shape;

// What kind of surface is painted on, for images are handed over in the form that it keeps best.
enum class Canvas {
  Pixels,
  Pictures,  // keeps compressed pictures as they are
  Stencils,  // keeps one-bit masks as such
};

// What could not be painted.
struct Losses {
  std::uint64_t points = 0;  // not finite
  std::uint64_t images = 0;  // without an area, or of one beyond all bounds
  std::optional<Stop> stop;  // why painting ended early
};

class CairoPainter {
public:
  // `pixelsPerPoint` is 1 except on pixels. After the deadline, shapes are left out.
  CairoPainter(Canvas paintCanvas, double paintPixelsPerPoint,
               std::optional<Clock::time_point> paintDeadline)
      : canvas(paintCanvas), pixelsPerPoint(paintPixelsPerPoint), deadline(paintDeadline) {}

  // Paints one page of a list whose units are `pointsPerUnit` points; `area`, in points, is what
  // the context shows.
  void PaintPage(cairo_t* context, const DisplayList& list, std::size_t page, double pointsPerUnit,
                 const Box& area);

  [[nodiscard]] const Losses& Lost() const { return losses; }

private:
  [[nodiscard]] Point ToPage(float x, float y) const;
  // How far from the page's corner coordinates may lie, and the same as a box.
  [[nodiscard]] double Reach() const;
  [[nodiscard]] Box SafeRange() const;
  void LookAtLimits();
  void PaintShape(const DisplayList& list, const Shape& shape);
  void PaintStroke(const DisplayList& list, const Shape& shape);
  void PaintFill(const DisplayList& list, const Shape& shape);
  // The finite points of a contour in page coordinates; says whether they are within safe range.
  bool GatherContour(std::span<const float> coordinates);
  void AddLine(std::span<const Point> line);
  // The rectangle in `contour` with its edges on borders of pixels and a pixel wide at least, so
  // that neighbours meet without a seam. It keeps its sense of rotation, which the fill rule looks
  // at.
  void AddPixelRectangle();
  void PaintImage(const PlacedImage& image);
  void AddOutline(const PlacedImage& image);
  void FillWithImage(const PlacedImage& image, Reduction reduction, double pixelsPerSurfacePixel);
  void FillWithPixels(const ImageSamples& samples, Reduction reduction,
                      double pixelsPerSurfacePixel);
  void FillWithStencil(const ImageSamples& samples);
  void FillWithPicture(const ImageSamples& samples, Reduction reduction);
  void SetColour(const Colour& colour);

  Canvas canvas;
  double pixelsPerPoint;
  std::optional<Clock::time_point> deadline;
  Losses losses;

  // Of the page being painted.
  cairo_t* cairo = nullptr;
  double scale = 1;  // points per unit
  Box pageArea;
  Polyline contour;  // reused
};

}  // namespace orxprint
