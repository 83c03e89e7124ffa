// The raster formats library's one conversion: a decoded fax page as a pixel image.
#include "host/ORXMMediaImage.h"

#include <cstdint>

ORXMMediaImageDecodingOption::ORXMMediaImageDecodingOption() noexcept = default;

ORXMMediaImageDecodingOption::~ORXMMediaImageDecodingOption() = default;

ORXPixelImage* ORXMMediaImageConverter::CreatePixelImage(
    const unsigned char* data, int size, int width, int height, ORXMMediaImageType type,
    const ORXMMediaImageDecodingOption* /*option*/) noexcept {
  constexpr ORXPixelImageFormat kFormat = ORXPixelImageFormat::Bilevel1;
  if (!data || type != ORXMMediaImageType::Fax || size <= 0 || width <= 0 || height <= 0) {
    return nullptr;
  }
  const std::uint64_t needed =
      std::uint64_t{ORXPixelImage::RowBytes(width, kFormat)} * static_cast<std::uint64_t>(height);
  if (static_cast<std::uint64_t>(size) != needed) return nullptr;
  // The bits stay as they are: whoever extracts them gets the bitmap that was converted.
  return ORXPixelImage::CreateCopy(width, height, kFormat, data);
}
