#include "drawing/TilePainter.h"

#include <algorithm>

namespace orxdrawing {

namespace {

constexpr unsigned kShapesPerLook = 64;
constexpr std::size_t kPointsPerLook = 256;

PixelRect Common(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

bool IsEmpty(const PixelRect& rect) { return rect.Width() <= 0 || rect.Height() <= 0; }

}  // namespace

void TilePainter::Paint(const ShapeBatch& batch, const PixelRect& tile) {
  unsigned untilLook = 0;
  for (const BatchedShape& shape : batch.Shapes()) {
    const PixelRect touched = Common(shape.reach, tile);
    if (IsEmpty(touched)) continue;
    if (untilLook-- == 0) {
      if (!stop.GoesOn()) return;
      untilLook = kShapesPerLook;
    }
    if (shape.kind == BatchedShape::Kind::Rectangle) {
      PaintRectangle(shape, touched);
    } else {
      // Cut by the tile alone, so that nothing depends on how far shapes are thought to reach.
      PaintSoft(batch, shape, tile);
    }
  }
}

void TilePainter::PaintRectangle(const BatchedShape& shape, const PixelRect& tile) {
  for (int y = tile.top; y < tile.bottom; ++y) {
    canvas.Paint(tile.left, y, tile.Width(), shape.colour, 255);
  }
}

void TilePainter::PaintSoft(const ShapeBatch& batch, const BatchedShape& shape,
                            const PixelRect& tile) {
  rasteriser.Begin(tile);
  AddOutlines(batch, shape, tile);
  if (!rasteriser.HasRoom() && AreaRasteriser::MayBeDense(tile)) {
    rasteriser.BeginDensely(tile);
    AddOutlines(batch, shape, tile);
  }
  if (stop.HasStopped()) return;
  if (rasteriser.HasRoom()) {
    return rasteriser.Sweep(shape.rule, [&](int x, int y, int length, unsigned cover) {
      canvas.Paint(x, y, length, shape.colour, cover);
    });
  }
  PixelRect first = tile;
  PixelRect second = tile;
  if (tile.Height() > 1) {
    first.bottom = second.top = tile.top + tile.Height() / 2;
  } else {
    first.right = second.left = tile.left + tile.Width() / 2;
  }
  PaintSoft(batch, shape, first);
  PaintSoft(batch, shape, second);
}

void TilePainter::AddOutlines(const ShapeBatch& batch, const BatchedShape& shape,
                              const PixelRect& tile) {
  const bool isStroke = shape.kind == BatchedShape::Kind::Stroke;
  if (isStroke) outliner.Begin(shape.width, shape.cap, tile);
  std::size_t untilLook = kPointsPerLook;
  batch.VisitContours(shape, [&](const BatchedContour& contour) {
    if (isStroke) {
      outliner.Add(contour, [this] { return MayAddMore(); });
    } else {
      AddArea(contour.points);
    }
    if (contour.points.size() < untilLook) {
      untilLook -= contour.points.size();
      return true;
    }
    untilLook = kPointsPerLook;
    return MayAddMore();
  });
}

void TilePainter::AddArea(std::span<const Point> contour) {
  rasteriser.MoveTo(contour[0].x, contour[0].y);
  for (std::size_t i = 1; i < contour.size(); ++i) {
    if (i % kPointsPerLook == 0 && !MayAddMore()) return;
    rasteriser.LineTo(contour[i].x, contour[i].y);
  }
}

}  // namespace orxdrawing
