// The pixels of a picture: red, green and blue, eight bits each, and opacity where the background
// is not painted; colours are multiplied by the opacity then.
//
// Different threads may paint different rows at the same time.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "drawing/Shapes.h"

namespace orxdrawing {

// Colour components as bytes; what is not a number is 0.
struct PixelColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const PixelColour&, const PixelColour&) = default;
};

[[nodiscard]] PixelColour PixelColourOf(const Colour& colour);
// The grey that is as bright.
[[nodiscard]] std::uint8_t GreyOf(PixelColour colour);

class PixelCanvas {
public:
  // Without a background all is transparent. Throws std::bad_alloc.
  PixelCanvas(int canvasWidth, int canvasHeight, std::optional<PixelColour> background);

  [[nodiscard]] static std::size_t BytesFor(int width, int height, bool hasOpacity) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
           (hasOpacity ? 4 : 3);
  }

  [[nodiscard]] int Width() const { return width; }
  [[nodiscard]] int Height() const { return height; }
  [[nodiscard]] bool HasOpacity() const { return channels == 4; }
  [[nodiscard]] std::span<const std::uint8_t> Row(int y) const {
    return {pixels.data() + Offset(0, y), static_cast<std::size_t>(width) * channels};
  }

  // REQUIRES, both: the pixels are on the canvas.
  // Paints `length` pixels from (x, y) to the right; a cover of 255 hides what was there.
  void Paint(int x, int y, int length, PixelColour colour, unsigned cover) {
    std::uint8_t* pixel = pixels.data() + Offset(x, y);
    if (cover == 255) return Fill(pixel, length, colour);
    for (; length > 0; --length, pixel += channels) Mix(pixel, colour, cover);
  }
  void Paint(int x, int y, PixelColour colour) { Fill(pixels.data() + Offset(x, y), 1, colour); }

private:
  [[nodiscard]] std::size_t Offset(int x, int y) const {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
            static_cast<std::size_t>(x)) *
           channels;
  }
  static std::uint8_t Mixed(unsigned below, unsigned above, unsigned cover) {
    const unsigned sum = below * (255 - cover) + above * cover + 128;
    return static_cast<std::uint8_t>((sum + (sum >> 8)) >> 8);
  }
  void Mix(std::uint8_t* pixel, PixelColour colour, unsigned cover) const {
    pixel[0] = Mixed(pixel[0], colour.red, cover);
    pixel[1] = Mixed(pixel[1], colour.green, cover);
    pixel[2] = Mixed(pixel[2], colour.blue, cover);
    if (channels == 4) pixel[3] = Mixed(pixel[3], 255, cover);
  }
  void Fill(std::uint8_t* pixel, int length, PixelColour colour) const;

  int width;
  int height;
  std::size_t channels;
  std::vector<std::uint8_t> pixels;
};

}  // namespace orxdrawing
