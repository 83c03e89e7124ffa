// Paints the shapes of a page into pixels, with soft edges, on all cores.
//
// Shapes are gathered until there is enough for every core; then the picture's bands are painted
// next to each other, each with all shapes in their order. How the picture is divided follows from
// its size alone, so the same shapes give the same pixels however many cores there are.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "drawing/Picture.h"
#include "drawing/PixelCanvas.h"
#include "drawing/PixelFrame.h"
#include "drawing/ShapeBatch.h"
#include "drawing/Shapes.h"
#include "drawing/StopSignal.h"
#include "drawing/TilePainter.h"

namespace orxdrawing {

struct PaintSettings {
  PixelFrame frame;
  std::optional<Colour> background = Colour{1, 1, 1};  // none: transparent
  bool inGrey = false;
  // Asked again and again, within a long line too, always on the thread that draws; what is not
  // painted when it says no is left out. Must not throw. May be empty.
  MayGoOn mayGoOn;
  unsigned workers = 0;  // threads; 0 for as many as there are cores
  double thinning = kThinning;
};

// All calls may throw std::bad_alloc. Draw comes from one thread at a time.
class PixelPainter final : public ShapeSink {
public:
  explicit PixelPainter(const PaintSettings& paintSettings);

  // Throws std::logic_error: each page is a picture of its own.
  void NextPage() override;
  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

  // Paints what is still gathered. To be called before the canvas is looked at.
  void Finish();
  [[nodiscard]] const PixelCanvas& Canvas() const { return canvas; }
  [[nodiscard]] const PictureLosses& Lost() const { return losses; }
  // Whether painting was stopped before its end.
  [[nodiscard]] bool HasStopped() const { return stop.HasStopped(); }

private:
  [[nodiscard]] PixelColour ColourOf(const Colour& colour) const;
  [[nodiscard]] PixelRect Band(int index) const;
  void PaintIfFull();
  void PaintBatch();
  void ForEachBand(unsigned workers, const std::function<void(unsigned, const PixelRect&)>& paint);
  TilePainter& PainterOf(unsigned worker);

  PixelFrame frame;
  bool isGrey;
  unsigned workers;
  int bandHeight;
  StopSignal stop;
  PixelCanvas canvas;
  ShapeBatch batch;
  std::vector<std::unique_ptr<TilePainter>> painters;  // one for each worker
  PictureLosses losses;
};

}  // namespace orxdrawing
