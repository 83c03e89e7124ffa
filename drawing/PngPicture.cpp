#include "drawing/PngPicture.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace orxdrawing {

namespace {

constexpr double kPointsPerInch = 72;
// Shapes on their way, the rasterisers of the threads, and what compressing takes.
constexpr std::size_t kBytesBesidePixels = 24 << 20;

std::string SizeText(double width, double height) {
  return std::to_string(std::llround(width)) + " x " + std::to_string(std::llround(height));
}

const PaintSettings& RequireFits(const PaintSettings& settings, std::size_t mostBytes) {
  const PixelFrame& frame = settings.frame;
  const std::size_t room = mostBytes - std::min(mostBytes, kBytesBesidePixels);
  const std::size_t needed = PixelCanvas::BytesFor(frame.width, frame.height, !settings.background);
  if (needed <= room) return settings;
  const std::string text = "a picture of " + SizeText(frame.width, frame.height) +
                           " pixels takes more memory than it may";
  const double share = std::sqrt(static_cast<double>(room) / static_cast<double>(needed));
  const double width = std::floor(frame.width * share);
  const double height = std::floor(frame.height * share);
  if (width < 1 || height < 1) throw PictureTooLarge(text);
  const double dotsPerInch = std::floor(frame.pixelsPerPoint * kPointsPerInch * share);
  throw PictureTooLarge(
      text + ": " + SizeText(width, height) + " pixels would do" +
      (dotsPerInch >= 1 ? ", or " + std::to_string(std::llround(dotsPerInch)) + " dots per inch"
                        : ""));
}

}  // namespace

PngPicture::PngPicture(const PaintSettings& settings, ByteSink fileSink, std::size_t mostBytes)
    : sink(std::move(fileSink)),
      dotsPerInch(settings.frame.pixelsPerPoint * kPointsPerInch),
      painter(RequireFits(settings, mostBytes)) {}

bool PngPicture::Finish() {
  painter.Finish();
  return EncodePng(painter.Canvas(), dotsPerInch, sink);
}

}  // namespace orxdrawing
