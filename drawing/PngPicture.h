// A page of a drawing as a PNG file, painted with soft edges.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>

#include "drawing/Picture.h"
#include "drawing/PixelPainter.h"

namespace orxdrawing {

struct PngSettings {
  double pointsPerUnit = 1;
  double dotsPerInch = 150;
  // When either is not 0, the picture is as large as it can be within these pixels instead.
  int mostWidth = 0;
  int mostHeight = 0;
  std::optional<Colour> background = Colour{1, 1, 1};  // none: transparent
  bool inGrey = false;
  unsigned workers = 0;  // threads; 0 for as many as there are cores
  // Once it says no, the file is written with what was painted.
  MayGoOn mayGoOn;
  // What the picture may take in all while it is made.
  std::size_t mostBytes = 400 << 20;
};

class PngPicture final : public Picture {
public:
  PngPicture(PngSettings pngSettings, ByteSink fileSink);

  // REQUIRES: it is the first page. Throws PictureTooLarge, std::bad_alloc.
  ShapeSink& BeginPage(const PicturePage& page) override;
  void Finish() override;
  [[nodiscard]] PictureLosses Lost() const override { return painter->Lost(); }

private:
  [[nodiscard]] PixelFrame FrameOf(const Box& area) const;

  PngSettings settings;
  ByteSink sink;
  double dotsPerInch = 0;
  std::optional<PixelPainter> painter;
};

}  // namespace orxdrawing
