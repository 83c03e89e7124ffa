// Paints an image on a canvas, upright as images lie. Its edges fall on borders of pixels, a pixel
// apart at least, so that strips of one picture meet without a seam. Samples larger than a pixel
// keep sharp edges; of smaller ones each pixel shows the mean of those that it covers.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "drawing/PixelCanvas.h"
#include "drawing/PixelFrame.h"
#include "drawing/Shapes.h"
#include "drawing/StopSignal.h"

namespace orxdrawing {

class ImagePainter {
public:
  // The image lasts as long as the painter. `inGrey` paints its brightness. REQUIRES: the image has
  // an extent. Throws std::bad_alloc.
  ImagePainter(const ImageShape& shape, const PixelFrame& frame, bool inGrey);

  // The pixels of the canvas that it covers.
  [[nodiscard]] PixelRect Covered() const;
  // Paints the rows from `top` to `bottom` - 1 of those, up to a stop. Different threads may paint
  // different rows. Throws std::bad_alloc.
  void Paint(PixelCanvas& canvas, int top, int bottom, StopSignal& stop) const;

private:
  // Which samples make up a pixel, in one direction: `count` from `first` on, those between the
  // outer two counted once.
  struct Share {
    int first = 0;
    int count = 1;
    float firstWeight = 1;
    float lastWeight = 0;
  };
  // The pixels from `begin` on and what of the samples each shows.
  struct Axis {
    int begin = 0;
    std::vector<Share> shares;
    [[nodiscard]] int End() const { return begin + static_cast<int>(shares.size()); }
  };
  class RowSum;

  static Axis AxisOf(double firstEdge, double lastEdge, int samples, int pixels);
  static Share ShareOf(double from, double to, int samples);

  const ORXPixelImage& image;
  bool isGrey;  // the canvas
  Axis columns;
  Axis rows;
};

}  // namespace orxdrawing
