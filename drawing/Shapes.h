// What a document draws, one shape at a time, and what takes it: writers of files, painters,
// measurers.
//
// Coordinates and pixel sizes are in the interpreter's units, y upwards; line widths are in
// millimetres. Coordinates are as the document has them, whether finite or not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/ORXPixelImage.h"

namespace orxdrawing {

struct Colour {
  float red = 0;
  float green = 0;
  float blue = 0;

  friend bool operator==(const Colour&, const Colour&) = default;
};

enum class LineCap : std::uint8_t { Butt, Square, Round };
enum class FillRule : std::uint8_t { Winding, EvenOdd };

// Contours one after another: how many points each has, and their x and y in turn.
struct Contours {
  std::span<const std::uint32_t> lengths;
  std::span<const float> coordinates;
};

struct StrokeShape {
  Contours contours;
  Colour colour;
  float width = 0;  // mm
  LineCap cap = LineCap::Butt;
};

struct FillShape {
  Contours contours;
  Colour colour;
  FillRule rule = FillRule::Winding;
};

// Samples fill the box from (x, y) to (x + width * xPixelSize, y + height * yPixelSize), the first
// row at the top when yPixelSize is positive; negative sizes mirror.
struct ImageShape {
  const ORXPixelImage* image = nullptr;
  float x = 0;
  float y = 0;
  float xPixelSize = 0;
  float yPixelSize = 0;
};

// What a shape refers to lasts for the call only. A call may throw, which ends the drawing.
class ShapeSink {
public:
  ShapeSink() = default;
  virtual ~ShapeSink() = default;
  ShapeSink(const ShapeSink&) = delete;
  ShapeSink& operator=(const ShapeSink&) = delete;

  // Before each page but the first.
  virtual void NextPage() = 0;
  virtual void Draw(const StrokeShape& stroke) = 0;
  virtual void Draw(const FillShape& fill) = 0;
  virtual void Draw(const ImageShape& image) = 0;
};

}  // namespace orxdrawing
