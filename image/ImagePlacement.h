// Where an image lands on the page and how large its pixels are: the transformation matrix alone
// decides, without its rotation and skew and without any image matrix.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "graphics/Canvas.h"
#include "host/ORXPixelImage.h"

namespace orxeps {

// In device space, single precision; the pixel sizes are in output units.
struct ImagePlacement {
  float x;
  float y;
  float xPixelSize;
  float yPixelSize;
};

// REQUIRES: width and height are above 0.
[[nodiscard]] ImagePlacement PlaceImage(const Canvas& canvas, std::int32_t width,
                                        std::int32_t height) noexcept;

// Gives the image its pixel sizes and hands it to the generator.
void DrawPlaced(Canvas& canvas, const ImagePlacement& placement, ORXPixelImage& image);

// The bytes that an image of this layout has; nothing for a size that is not positive or above the
// ceiling of images.
[[nodiscard]] std::optional<std::size_t> LayoutBytes(std::int32_t width, std::int32_t height,
                                                     ORXPixelImageFormat format) noexcept;

}  // namespace orxeps
