#include "image/ImagePlacement.h"

#include "ps/Limits.h"

namespace orxeps {

ImagePlacement PlaceImage(const Canvas& canvas, std::int32_t width, std::int32_t height) noexcept {
  const ORXMath3x3Matrix& ctm = canvas.Current().ctm;
  const FloatPoint origin = TransformPoint(ctm, {0.0F, 0.0F});
  const double a = ctm.GetFirstColumn().x;
  const double d = ctm.GetSecondColumn().y;
  const double scale = canvas.unitScale;
  return {origin.x, origin.y, static_cast<float>(a / width * scale),
          static_cast<float>(d / height * scale)};
}

void DrawPlaced(Canvas& canvas, const ImagePlacement& placement, ORXPixelImage& image) {
  image.SetXPixelSize(placement.xPixelSize);
  image.SetYPixelSize(placement.yPixelSize);
  canvas.DrawImage({placement.x, placement.y}, image);
}

std::optional<std::size_t> LayoutBytes(std::int32_t width, std::int32_t height,
                                       ORXPixelImageFormat format) noexcept {
  if (width <= 0 || height <= 0) return std::nullopt;
  const std::size_t rowBytes = ORXPixelImage::RowBytes(width, format);
  if (rowBytes > kMaxImageBytes / static_cast<std::size_t>(height)) return std::nullopt;
  return rowBytes * static_cast<std::size_t>(height);
}

}  // namespace orxeps
