#include "drawing/ImageRows.h"

#include <algorithm>

namespace orxdrawing {

namespace {

// One ink and black as the light of one colour.
unsigned char LightOf(unsigned char ink, unsigned char black) {
  return static_cast<unsigned char>(255 - std::min(255, ink + black));
}

}  // namespace

void LightOfRow(const ORXPixelImage& image, int row, std::vector<unsigned char>& light) {
  const std::span<const unsigned char> samples = RowOf(image, row);
  if (image.Format() == ORXPixelImageFormat::Cmyk32) {
    light.resize(samples.size() / 4 * 3);
    for (std::size_t from = 0, to = 0; from < samples.size(); from += 4) {
      for (std::size_t ink = 0; ink < 3; ++ink) {
        light[to++] = LightOf(samples[from + ink], samples[from + 3]);
      }
    }
    return;
  }
  light.assign(samples.begin(), samples.end());
  if (image.Format() != ORXPixelImageFormat::Bilevel1) return;
  for (unsigned char& bits : light) bits = static_cast<unsigned char>(~bits);
}

}  // namespace orxdrawing
