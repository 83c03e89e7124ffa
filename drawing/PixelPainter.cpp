#include "drawing/PixelPainter.h"

#include <algorithm>
#include <stdexcept>

#include "drawing/Extent.h"
#include "drawing/ImagePainter.h"
#include "drawing/ParallelWork.h"

namespace orxdrawing {

namespace {

constexpr int kBands = 16;
constexpr int kLeastBandHeight = 64;
// Less than this is painted before other threads have begun.
constexpr std::size_t kPointsWorthThreads = 4096;
constexpr std::int64_t kPixelsWorthThreads = 256 << 10;

std::optional<PixelColour> BackgroundOf(const PaintSettings& settings) {
  if (!settings.background) return std::nullopt;
  PixelColour colour = PixelColourOf(*settings.background);
  if (settings.inGrey) colour.red = colour.green = colour.blue = GreyOf(colour);
  return colour;
}

}  // namespace

PixelPainter::PixelPainter(const PaintSettings& paintSettings)
    : frame(paintSettings.frame),
      isGrey(paintSettings.inGrey),
      workers(paintSettings.workers > 0 ? paintSettings.workers : CoreCount()),
      bandHeight(std::max(kLeastBandHeight, (frame.height + kBands - 1) / kBands)),
      stop(paintSettings.mayGoOn),
      canvas(frame.width, frame.height, BackgroundOf(paintSettings)),
      batch(frame, paintSettings.thinning),
      painters(workers) {}

PixelColour PixelPainter::ColourOf(const Colour& colour) const {
  PixelColour pixel = PixelColourOf(colour);
  if (isGrey) pixel.red = pixel.green = pixel.blue = GreyOf(pixel);
  return pixel;
}

void PixelPainter::NextPage() { throw std::logic_error("a picture of pixels has one page"); }

void PixelPainter::Draw(const StrokeShape& stroke) {
  if (stop.HasStopped()) return;
  losses.points += batch.Add(stroke, ColourOf(stroke.colour));
  PaintIfFull();
}

void PixelPainter::Draw(const FillShape& fill) {
  if (stop.HasStopped()) return;
  losses.points += batch.Add(fill, ColourOf(fill.colour));
  PaintIfFull();
}

void PixelPainter::Draw(const ImageShape& image) {
  if (stop.HasStopped() || image.image == nullptr || image.image->ByteCount() == 0) return;
  if (!ExtentOf(image)) {
    ++losses.images;
    return;
  }
  PaintBatch();
  const ImagePainter painter(image, frame, isGrey);
  const PixelRect covered = painter.Covered();
  const std::int64_t work = std::max(static_cast<std::int64_t>(image.image->ByteCount()),
                                     std::int64_t{covered.Width()} * covered.Height());
  ForEachBand(work < kPixelsWorthThreads ? 1 : workers, [&](unsigned, const PixelRect& band) {
    painter.Paint(canvas, band.top, band.bottom, stop);
  });
}

void PixelPainter::PaintIfFull() {
  if (batch.IsFull()) PaintBatch();
}

void PixelPainter::Finish() { PaintBatch(); }

void PixelPainter::PaintBatch() {
  if (batch.Shapes().empty()) return batch.Clear();
  ForEachBand(
      batch.PointCount() < kPointsWorthThreads ? 1 : workers,
      [this](unsigned worker, const PixelRect& band) { PainterOf(worker).Paint(batch, band); });
  batch.Clear();
}

void PixelPainter::ForEachBand(unsigned threads,
                               const std::function<void(unsigned, const PixelRect&)>& paint) {
  stop.BecomeAsker();
  DoInParallel(threads, {(frame.height + bandHeight - 1) / bandHeight,
                         [&](unsigned worker, int piece) {
                           if (!stop.HasStopped()) paint(worker, Band(piece));
                         },
                         [this] { static_cast<void>(stop.GoesOn()); }});
}

PixelRect PixelPainter::Band(int index) const {
  const int top = index * bandHeight;
  return {0, top, frame.width, std::min(top + bandHeight, frame.height)};
}

TilePainter& PixelPainter::PainterOf(unsigned worker) {
  std::unique_ptr<TilePainter>& painter = painters[worker];
  if (!painter) painter = std::make_unique<TilePainter>(canvas, stop);
  return *painter;
}

}  // namespace orxdrawing
