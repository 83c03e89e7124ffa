#include "image/ImagePlacement.h"

#include "host/PrintGenerator.h"
#include "ps/Limits.h"

namespace orxeps {

ImagePlacement PlaceImage(const ORXPrintEPSInterpreter& interpreter, std::int32_t width,
                          std::int32_t height) noexcept {
  const ORXMath3x3Matrix& ctm = interpreter.graphics.current.ctm;
  const FloatPoint origin = TransformPoint(ctm, {0.0F, 0.0F});
  const double a = ctm.GetFirstColumn().x;
  const double d = ctm.GetSecondColumn().y;
  const double scale = interpreter.unitScale;
  return {origin.x, origin.y, static_cast<float>(a / width * scale),
          static_cast<float>(d / height * scale)};
}

void DrawPlaced(ORXPrintEPSInterpreter& interpreter, const ImagePlacement& placement,
                ORXPixelImage& image) {
  image.SetXPixelSize(placement.xPixelSize);
  image.SetYPixelSize(placement.yPixelSize);
  const float scale = interpreter.unitScale;
  interpreter.generator->DrawImage(scale * placement.x, scale * placement.y, 0, &image);
}

std::optional<std::size_t> LayoutBytes(std::int32_t width, std::int32_t height,
                                       ORXPixelImageFormat format) noexcept {
  if (width <= 0 || height <= 0) return std::nullopt;
  const std::size_t rowBytes = ORXPixelImage::RowBytes(width, format);
  if (rowBytes > kMaxImageBytes / static_cast<std::size_t>(height)) return std::nullopt;
  return rowBytes * static_cast<std::size_t>(height);
}

}  // namespace orxeps
