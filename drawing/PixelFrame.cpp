#include "drawing/PixelFrame.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orxdrawing {

namespace {

// What a PNG can be in each direction, and the rasteriser's fixed point numbers hold.
constexpr double kMostSide = 1 << 20;
constexpr double kPointsPerInch = 72;

int PixelsOf(double points, double pixelsPerPoint) {
  const double pixels = std::round(points * pixelsPerPoint);
  return std::isnan(pixels) ? static_cast<int>(kMostSide)
                            : static_cast<int>(std::clamp(pixels, 1.0, kMostSide));
}

}  // namespace

double PixelFrame::Rounding() const {
  constexpr double kRoundings = 8;  // one by one, until a place is computed
  const double farthest = std::max(
      {std::abs(area.left), std::abs(area.right), std::abs(area.bottom), std::abs(area.top)});
  return kRoundings * std::numeric_limits<float>::epsilon() * farthest * pixelsPerPoint;
}

PixelFrame FrameOfResolution(const Box& area, double pointsPerUnit, double dotsPerInch) {
  const double pixelsPerPoint = dotsPerInch / kPointsPerInch;
  return {PixelsOf(area.Width(), pixelsPerPoint), PixelsOf(area.Height(), pixelsPerPoint),
          pixelsPerPoint, pointsPerUnit, area};
}

PixelFrame FrameToFit(const Box& area, double pointsPerUnit, int mostWidth, int mostHeight) {
  double pixelsPerPoint = std::numeric_limits<double>::infinity();
  if (mostWidth > 0) pixelsPerPoint = std::min(pixelsPerPoint, mostWidth / area.Width());
  if (mostHeight > 0) pixelsPerPoint = std::min(pixelsPerPoint, mostHeight / area.Height());
  return FrameOfResolution(area, pointsPerUnit, pixelsPerPoint * kPointsPerInch);
}

}  // namespace orxdrawing
