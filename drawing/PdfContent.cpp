#include "drawing/PdfContent.h"

#include <algorithm>
#include <cmath>

namespace orxdrawing {

namespace {

// Strokes of equal attributes share a path up to this many points: longer ones slow readers down.
constexpr std::size_t kPointsOfFullPath = 1000;

double Clamped(float component) {
  return std::isnan(component) ? 0.0 : std::clamp<double>(component, 0, 1);
}

bool EndsWhereItBegins(std::span<const float> coordinates) {
  const std::size_t size = coordinates.size();
  return size > 4 && coordinates[0] == coordinates[size - 2] &&
         coordinates[1] == coordinates[size - 1];
}

}  // namespace

void PdfContent::AddNumber(float value) {
  decimals.Add(text, value, NumberForm::Plain);
  text.Add(' ');
}

void PdfContent::AddNumber(const Decimal& number) {
  text.Add(DecimalText(number).View());
  text.Add(' ');
}

void PdfContent::AddColour(const Colour& colour, std::string_view greyOperator,
                           std::string_view colourOperator) {
  const auto add = [this](float component) {
    text.AddNumber(static_cast<float>(Clamped(component)), NumberForm::Plain);
    text.Add(' ');
  };
  const bool isGrey = colour.red == colour.green && colour.green == colour.blue;
  add(colour.red);
  if (isGrey) return text.Add(greyOperator);
  add(colour.green);
  add(colour.blue);
  text.Add(colourOperator);
}

void PdfContent::SetStyle(const StrokeStyle& wanted) {
  if (style == wanted) return;
  EndPath();
  if (!style || style->colour != wanted.colour) AddColour(wanted.colour, "G\n", "RG\n");
  if (!style || style->width != wanted.width) {
    AddWidth(text, wanted.width, NumberForm::Plain);
    text.Add(" w\n");
  }
  if (!style || style->cap != wanted.cap) {
    text.Add(wanted.cap == LineCap::Round    ? "1 J\n"
             : wanted.cap == LineCap::Square ? "2 J\n"
                                             : "0 J\n");
  }
  style = wanted;
}

void PdfContent::Draw(const StrokeShape& stroke) {
  SetStyle({stroke.colour, stroke.width, stroke.cap});
  cleaner.VisitLines(stroke.contours, [this](std::span<const float> line) {
    if (line.size() < 4) return;
    openPoints += line.size() / 2;
    const bool isClosed = EndsWhereItBegins(line);
    if (isClosed) line = line.first(line.size() - 2);
    if (isClosed && AddRectangle(line)) return;
    AddContour(line);
    if (isClosed) text.Add("h\n");
  });
  if (openPoints >= kPointsOfFullPath) EndPath();
}

void PdfContent::EndPath() {
  if (openPoints > 0) text.Add("S\n");
  openPoints = 0;
}

void PdfContent::Draw(const FillShape& fill) {
  EndPath();
  if (fillColour != fill.colour) AddColour(fill.colour, "g\n", "rg\n");
  fillColour = fill.colour;
  bool isEmpty = true;
  cleaner.VisitAreas(fill.contours, [&](std::span<const float> area) {
    if (area.size() < 6) return;
    if (EndsWhereItBegins(area)) area = area.first(area.size() - 2);
    if (!AddRectangle(area)) AddContour(area);
    isEmpty = false;
  });
  if (!isEmpty) text.Add(fill.rule == FillRule::EvenOdd ? "f*\n" : "f\n");
}

void PdfContent::AddContour(std::span<const float> coordinates) {
  for (std::size_t i = 0; i < coordinates.size(); i += 2) {
    AddNumber(coordinates[i]);
    AddNumber(coordinates[i + 1]);
    text.Add(i == 0 ? "m\n" : "l\n");
  }
}

// The operator goes along x first; a rectangle that goes along y first is told from its second
// corner, so that its sense of rotation stays.
bool PdfContent::AddRectangle(std::span<const float> corners) {
  if (corners.size() != 8) return false;
  const auto x = [&](std::size_t corner) { return corners[corner % 4 * 2]; };
  const auto y = [&](std::size_t corner) { return corners[corner % 4 * 2 + 1]; };
  const auto isUpright = [&](std::size_t first) {
    return y(first) == y(first + 1) && x(first + 1) == x(first + 2) &&
           y(first + 2) == y(first + 3) && x(first + 3) == x(first);
  };
  if (!isUpright(0) && !isUpright(1)) return false;
  const std::size_t first = isUpright(0) ? 0 : 1;
  const Decimal left = decimals.Of(x(first));
  const Decimal right = decimals.Of(x(first + 2));
  const Decimal bottom = decimals.Of(y(first));
  const Decimal top = decimals.Of(y(first + 2));
  if (!left.isExact || !right.isExact || !bottom.isExact || !top.isExact) return false;
  AddNumber(left);
  AddNumber(bottom);
  AddNumber(DecimalPoints::Difference(left, right));
  AddNumber(DecimalPoints::Difference(bottom, top));
  text.Add("re\n");
  return true;
}

// Image objects fill the unit square, their first row at its top.
void PdfContent::Draw(const ImageShape& shape, std::string_view name) {
  EndPath();
  const auto add = [this](double number) {
    text.AddNumber(number, NumberForm::Plain);
    text.Add(' ');
  };
  text.Add("q ");
  add(shape.image->Width() * decimals.PointsOf(shape.xPixelSize));
  text.Add("0 0 ");
  add(shape.image->Height() * decimals.PointsOf(shape.yPixelSize));
  AddNumber(shape.x);
  AddNumber(shape.y);
  text.Add("cm ");
  text.Add(name);
  text.Add(" Do Q\n");
}

}  // namespace orxdrawing
