// The operators of a PDF page's content: paths and their attributes, each told when it changes.
// Coordinates are points with all the digits that the interpreter's floats have.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "drawing/ContourCleaner.h"
#include "drawing/Decimals.h"
#include "drawing/Shapes.h"
#include "drawing/TextBuffer.h"

namespace orxdrawing {

class PdfContent {
public:
  // The text is borrowed.
  PdfContent(TextBuffer& textBuffer, const Box& area, double pointsPerUnit)
      : text(textBuffer), decimals(pointsPerUnit), cleaner(area, pointsPerUnit) {}

  void Draw(const StrokeShape& stroke);
  void Draw(const FillShape& fill);
  // An image object of that name. REQUIRES: the image has an extent.
  void Draw(const ImageShape& image, std::string_view name);
  // Paints what is still open.
  void EndPath();

  [[nodiscard]] std::uint64_t LostPoints() const { return cleaner.LostPoints(); }

private:
  struct StrokeStyle {
    Colour colour;
    float width = 1;  // points until it is first set
    LineCap cap = LineCap::Butt;
    friend bool operator==(const StrokeStyle&, const StrokeStyle&) = default;
  };

  void SetStyle(const StrokeStyle& style);
  void AddColour(const Colour& colour, std::string_view greyOperator,
                 std::string_view colourOperator);
  void AddContour(std::span<const float> coordinates);
  // Whether the four points are a rectangle along the axes, which is then added as such.
  [[nodiscard]] bool AddRectangle(std::span<const float> corners);
  void AddNumber(float value);
  void AddNumber(const Decimal& number);

  TextBuffer& text;
  DecimalPoints decimals;
  ContourCleaner cleaner;
  std::optional<StrokeStyle> style;
  Colour fillColour;
  std::size_t openPoints = 0;  // in the path of strokes that is not painted yet
};

}  // namespace orxdrawing
