// What is known of a shape without its points: enough to tell people which one it is.
//
// Made from a shape while it is drawn, and a value from then on: finding, comparing and telling
// work on records when the points are gone.
#pragma once

#include <cstdint>
#include <optional>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"
#include "host/ORXInterpreterWatcher.h"

namespace orxdrawing {

enum class ShapeKind : std::uint8_t { Stroke, Fill, Image };

struct ShapeRecord {
  ShapeKind kind = ShapeKind::Stroke;
  LineCap cap = LineCap::Butt;        // of a stroke
  FillRule rule = FillRule::Winding;  // of a fill
  std::uint32_t page = 1;
  ORXPlace place;
  std::optional<Box> extent;  // in points
  Colour colour;              // of a stroke and a fill
  float width = 0;            // of a stroke, in millimetres
  int columns = 0;            // of an image, in samples
  int rows = 0;
};

// Page and place are yet to be filled in.
[[nodiscard]] ShapeRecord RecordOf(const StrokeShape& stroke, double pointsPerUnit);
[[nodiscard]] ShapeRecord RecordOf(const FillShape& fill, double pointsPerUnit);
[[nodiscard]] ShapeRecord RecordOf(const ImageShape& image, double pointsPerUnit);

}  // namespace orxdrawing
