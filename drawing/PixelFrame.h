// How a drawing lies in a picture of pixels: its size, and where the interpreter's coordinates
// fall. Pixels have y downwards, (0, 0) being the upper left corner of the first pixel.
#pragma once

#include <cstddef>

#include "drawing/Geometry.h"

namespace orxdrawing {

// Pixels from left to right - 1, rows from top to bottom - 1.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  [[nodiscard]] int Width() const { return right - left; }
  [[nodiscard]] int Height() const { return bottom - top; }
};

struct PixelFrame {
  int width = 1;
  int height = 1;
  double pixelsPerPoint = 1;
  double pointsPerUnit = 1;
  Box area;  // in points; its upper left corner is that of the picture

  [[nodiscard]] double DotsPerInch() const { return pixelsPerPoint * 72; }
  [[nodiscard]] double PixelsPerUnit() const { return pixelsPerPoint * pointsPerUnit; }
  [[nodiscard]] PixelRect Bounds() const { return {0, 0, width, height}; }
  // By how many pixels the interpreter's numbers, which are floats, may be off in the picture.
  [[nodiscard]] double Rounding() const;
  // Not finite where the coordinates are not.
  [[nodiscard]] Point ToPixels(double x, double y) const {
    const double scale = PixelsPerUnit();
    return {x * scale - area.left * pixelsPerPoint, area.top * pixelsPerPoint - y * scale};
  }
};

// A picture of `area` has whole pixels, at least one each way. Sizes beyond what can be counted in
// a frame, and areas that are not finite, give the greatest frame there is, which no memory limit
// lets pass.
[[nodiscard]] PixelFrame FrameOfResolution(const Box& area, double pointsPerUnit,
                                           double dotsPerInch);
// The greatest picture of at most so many pixels each way; 0 leaves one way open.
// REQUIRES: not both are 0.
[[nodiscard]] PixelFrame FrameToFit(const Box& area, double pointsPerUnit, int mostWidth,
                                    int mostHeight);

}  // namespace orxdrawing
