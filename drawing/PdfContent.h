// The operators of a PDF page's content: paths and their attributes, each told when it changes.
//
// Coordinates of up to four decimals are written as the document has them, others, which come of
// computing, to the nearest thousandth of a point, or finer where short steps of a wide line turn
// its joins. Chords no further from their curve than a fiftieth of a point become that curve again.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "drawing/ContourCleaner.h"
#include "drawing/CurveFinder.h"
#include "drawing/Decimals.h"
#include "drawing/HeldFill.h"
#include "drawing/Shapes.h"
#include "drawing/TextBuffer.h"

namespace orxdrawing {

class PdfContent {
public:
  // The text is borrowed.
  PdfContent(TextBuffer& textBuffer, const Box& area, double pointsPerUnit)
      : text(textBuffer),
        decimals(pointsPerUnit),
        cleaner(area, pointsPerUnit),
        unitsPerPoint(1 / pointsPerUnit) {}

  void Draw(const StrokeShape& stroke);
  void Draw(const FillShape& fill);
  // An image object of that name. REQUIRES: the image has an extent.
  void Draw(const ImageShape& image, std::string_view name);
  // Paints what is still open, or waits for what comes next.
  void Flush();

  [[nodiscard]] std::uint64_t LostPoints() const { return cleaner.LostPoints(); }

private:
  static constexpr double kCurveTolerancePoints = 0.02;
  static constexpr int kDecimals = 3;  // of coordinates that have more than a document writes

  struct StrokeStyle {
    Colour colour;
    float width = 1;  // points until it is first set
    LineCap cap = LineCap::Butt;
    friend bool operator==(const StrokeStyle&, const StrokeStyle&) = default;
  };

  void SetStyle(const StrokeStyle& style);
  void SetFillColour(const Colour& colour);
  void Write(const FillShape& fill);
  void WriteEdged(const FillShape& fill, const StrokeShape& stroke);
  void WriteHeldFill();
  // Paints the strokes that are still open.
  void EndPath();
  void AddLine(std::span<const float> line);
  void AddSquareDot(std::span<const float> point);
  void AddColour(const Colour& colour, std::string_view greyOperator,
                 std::string_view colourOperator);
  // Of a line of this width in points, or of an area, 0. The last point of a closed contour is
  // written only if a curve ends there.
  void AddContour(std::span<const float> coordinates, bool isClosed, double width);
  // Whether the step between two points needs finer numbers.
  [[nodiscard]] bool IsShort(std::span<const float> step, double width) const;
  // Whether a curve begins with the first of these points; it is then added.
  [[nodiscard]] bool AddCurve(std::span<const float> coordinates, double width);
  // Whether the four points are a rectangle along the axes, which is then added as such.
  [[nodiscard]] bool AddRectangle(std::span<const float> corners);
  // Numbers that have more decimals than a document writes get as many as `others`.
  void AddPoint(std::span<const float> point, int others);
  void AddNumber(float value, int others = kDecimals);
  void AddNumber(double points);
  void AddNumber(const Decimal& number);
  [[nodiscard]] Decimal NumberOf(float value, int others = kDecimals) const;

  TextBuffer& text;
  DecimalPoints decimals;
  ContourCleaner cleaner;
  double unitsPerPoint;
  HeldFill heldFill;
  std::optional<StrokeStyle> style;
  Colour fillColour;
  std::size_t openPoints = 0;  // in the path of strokes that is not painted yet
};

}  // namespace orxdrawing
