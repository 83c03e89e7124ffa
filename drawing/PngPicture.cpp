#include "drawing/PngPicture.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "drawing/PngEncoder.h"

namespace orxdrawing {

namespace {

// Shapes on their way, the rasterisers of the threads, and what compressing takes.
constexpr std::size_t kBytesBesidePixels = 24 << 20;

std::string SizeText(double width, double height) {
  return std::to_string(std::llround(width)) + " x " + std::to_string(std::llround(height));
}

void RequireFits(const PixelFrame& frame, const PngSettings& settings) {
  const std::size_t room = settings.mostBytes - std::min(settings.mostBytes, kBytesBesidePixels);
  const std::size_t needed = PixelCanvas::BytesFor(frame.width, frame.height, !settings.background);
  if (needed <= room) return;
  const std::string text = "a picture of " + SizeText(frame.width, frame.height) +
                           " pixels takes more memory than it may";
  const double share = std::sqrt(static_cast<double>(room) / static_cast<double>(needed));
  const double width = std::floor(frame.width * share);
  const double height = std::floor(frame.height * share);
  if (width < 1 || height < 1) throw PictureTooLarge(text);
  const double dotsPerInch = std::floor(frame.DotsPerInch() * share);
  throw PictureTooLarge(
      text + ": " + SizeText(width, height) + " pixels would do" +
      (dotsPerInch >= 1 ? ", or " + std::to_string(std::llround(dotsPerInch)) + " dots per inch"
                        : ""));
}

}  // namespace

PngPicture::PngPicture(PngSettings pngSettings, ByteSink fileSink)
    : settings(std::move(pngSettings)), sink(std::move(fileSink)) {}

PixelFrame PngPicture::FrameOf(const Box& area) const {
  if (settings.mostWidth > 0 || settings.mostHeight > 0) {
    return FrameToFit(area, settings.pointsPerUnit, settings.mostWidth, settings.mostHeight);
  }
  return FrameOfResolution(area, settings.pointsPerUnit, settings.dotsPerInch);
}

ShapeSink& PngPicture::BeginPage(const PicturePage& page) {
  const PixelFrame frame = FrameOf(page.area);
  RequireFits(frame, settings);
  dotsPerInch = frame.DotsPerInch();
  painter.emplace(PaintSettings{frame, settings.background, settings.inGrey, settings.mayGoOn,
                                settings.workers});
  return *painter;
}

void PngPicture::Finish() {
  painter->Finish();
  EncodePng(painter->Canvas(), dotsPerInch, sink);
}

}  // namespace orxdrawing
