// One page of a drawing as a PNG file: takes its shapes, and writes the file at the end.
#pragma once

#include <cstddef>
#include <stdexcept>

#include "drawing/PixelPainter.h"
#include "drawing/PngEncoder.h"

namespace orxdrawing {

// A picture does not fit into the memory that it may take. The text says what would do.
struct PictureTooLarge : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class PngPicture final : public ShapeSink {
public:
  // Without a limit of its own a picture takes this many bytes.
  static constexpr std::size_t kMostBytes = 400 << 20;

  // `sink` takes the file, `mostBytes` bounds the picture's memory. Throws PictureTooLarge,
  // std::bad_alloc.
  PngPicture(const PaintSettings& settings, ByteSink fileSink, std::size_t mostBytes = kMostBytes);

  void NextPage() override { painter.NextPage(); }
  void Draw(const StrokeShape& stroke) override { painter.Draw(stroke); }
  void Draw(const FillShape& fill) override { painter.Draw(fill); }
  void Draw(const ImageShape& image) override { painter.Draw(image); }

  // Writes the file, of what was painted up to a stop. Returns whether the sink took all.
  bool Finish();
  [[nodiscard]] PaintLosses Losses() const { return painter.Losses(); }

private:
  ByteSink sink;
  double dotsPerInch;
  PixelPainter painter;
};

}  // namespace orxdrawing
