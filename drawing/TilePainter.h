// Paints strokes and areas on one part of a canvas after the other. Each thread has one of its own.
//
// It borrows the canvas and the signal. Tiles of one canvas do not overlap, so painters need no
// locks.
#pragma once

#include "drawing/AreaRasteriser.h"
#include "drawing/PixelCanvas.h"
#include "drawing/PixelFrame.h"
#include "drawing/ShapeBatch.h"
#include "drawing/StopSignal.h"
#include "drawing/StrokeOutliner.h"

namespace orxdrawing {

class TilePainter {
public:
  TilePainter(PixelCanvas& paintedCanvas, StopSignal& stopSignal)
      : canvas(paintedCanvas), stop(stopSignal) {}

  // Paints what of the batch lies on the tile, up to a stop. Throws std::bad_alloc.
  void Paint(const ShapeBatch& batch, const PixelRect& tile);

private:
  void PaintRectangle(const BatchedShape& shape, const PixelRect& tile);
  // Divides the tile until the shape's outlines fit into the rasteriser.
  void PaintSoft(const ShapeBatch& batch, const BatchedShape& shape, const PixelRect& tile);
  void AddOutlines(const ShapeBatch& batch, const BatchedShape& shape, const PixelRect& tile);
  void AddArea(std::span<const Point> contour);
  [[nodiscard]] bool MayAddMore() { return rasteriser.HasRoom() && stop.GoesOn(); }

  PixelCanvas& canvas;
  StopSignal& stop;
  AreaRasteriser rasteriser;
  StrokeOutliner outliner{rasteriser};
};

}  // namespace orxdrawing
