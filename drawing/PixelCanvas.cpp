#include "drawing/PixelCanvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orxdrawing {

namespace {

std::uint8_t ByteOf(float component) {
  const double value = std::isnan(component) ? 0.0 : std::clamp<double>(component, 0, 1);
  return static_cast<std::uint8_t>(std::lround(value * 255));
}

}  // namespace

PixelColour PixelColourOf(const Colour& colour) {
  return {ByteOf(colour.red), ByteOf(colour.green), ByteOf(colour.blue)};
}

std::uint8_t GreyOf(PixelColour colour) {
  return static_cast<std::uint8_t>((30 * colour.red + 59 * colour.green + 11 * colour.blue + 50) /
                                   100);
}

PixelCanvas::PixelCanvas(int canvasWidth, int canvasHeight, std::optional<PixelColour> background)
    : width(canvasWidth),
      height(canvasHeight),
      channels(background ? 3 : 4),
      pixels(BytesFor(width, height, !background), background ? background->red : 0) {
  if (!background || *background == PixelColour{pixels[0], pixels[0], pixels[0]}) return;
  for (int y = 0; y < height; ++y) Paint(0, y, width, *background, 255);
}

void PixelCanvas::Fill(std::uint8_t* pixel, int length, PixelColour colour) const {
  const std::size_t size = static_cast<std::size_t>(length) * channels;
  if (colour.red == colour.green && colour.green == colour.blue &&
      (channels == 3 || colour.red == 255)) {
    std::memset(pixel, colour.red, size);
    return;
  }
  for (std::uint8_t* const end = pixel + size; pixel != end; pixel += channels) {
    pixel[0] = colour.red;
    pixel[1] = colour.green;
    pixel[2] = colour.blue;
    if (channels == 4) pixel[3] = 255;
  }
}

}  // namespace orxdrawing
