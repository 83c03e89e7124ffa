// The rows of an image as files hold them.
//
// Rows are counted from the one that is drawn topmost in memory; the image is borrowed, and what is
// read of it lasts as long as it does.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/ORXPixelImage.h"

namespace orxdrawing {

// REQUIRES: 0 <= row < height.
[[nodiscard]] inline std::span<const unsigned char> RowOf(const ORXPixelImage& image, int row) {
  const std::size_t size = ORXPixelImage::RowBytes(image.Width(), image.Format());
  return {image.Pixels() + static_cast<std::size_t>(row) * size, size};
}

// The light of a row: grey of one or eight bits, or red, green and blue of eight; black is 0.
// `light` is made as large as the row needs.
void LightOfRow(const ORXPixelImage& image, int row, std::vector<unsigned char>& light);

}  // namespace orxdrawing
