#include "drawing/PdfContent.h"

#include <algorithm>
#include <cmath>

namespace orxdrawing {

namespace {

// Strokes of equal attributes share a path up to this many points: longer ones slow readers down.
constexpr std::size_t kPointsOfFullPath = 1000;
constexpr int kMostExactDecimals = 4;
// Of the ends of steps shorter than this part of their line's width.
constexpr int kFineDecimals = 5;
constexpr double kShortStep = 0.1;
constexpr double kLeastStep = 0.001;  // points

double Clamped(float component) {
  return std::isnan(component) ? 0.0 : std::clamp<double>(component, 0, 1);
}

bool IsFar(double points) { return !(std::abs(points) < DecimalPoints::kMostPoints); }

bool EndsWhereItBegins(std::span<const float> coordinates) {
  const std::size_t size = coordinates.size();
  return size > 4 && coordinates[0] == coordinates[size - 2] &&
         coordinates[1] == coordinates[size - 1];
}

bool IsOnePoint(std::span<const float> coordinates) {
  for (std::size_t i = 2; i < coordinates.size(); i += 2) {
    if (coordinates[i] != coordinates[0] || coordinates[i + 1] != coordinates[1]) return false;
  }
  return true;
}

}  // namespace

Decimal PdfContent::NumberOf(float value, int others) const {
  const Decimal exact = decimals.Of(value, kMostExactDecimals);
  if (exact.isExact) return exact;
  return DecimalPoints::Nearest(decimals.PointsOf(value), others);
}

void PdfContent::AddPoint(std::span<const float> point, int others) {
  AddNumber(point[0], others);
  AddNumber(point[1], others);
}

void PdfContent::AddNumber(float value, int others) {
  if (IsFar(decimals.PointsOf(value))) return AddNumber(decimals.PointsOf(value));
  AddNumber(NumberOf(value, others));
}

void PdfContent::AddNumber(double points) {
  if (!IsFar(points)) return AddNumber(DecimalPoints::Nearest(points, kDecimals));
  text.AddNumber(points, NumberForm::Plain);
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
  if (heldFill.IsThere() && heldFill.IsEdgedBy(stroke) &&
      cleaner.IsClean(stroke.contours.coordinates)) {
    return WriteEdged(heldFill.Release(), stroke);
  }
  WriteHeldFill();
  SetStyle({stroke.colour, stroke.width, stroke.cap});
  cleaner.VisitLines(stroke.contours, [this](std::span<const float> line) { AddLine(line); });
  if (openPoints >= kPointsOfFullPath) EndPath();
}

void PdfContent::AddLine(std::span<const float> line) {
  if (line.size() < 4) return;
  openPoints += line.size() / 2;
  if (style->cap == LineCap::Square && IsOnePoint(line)) return AddSquareDot(line.first(2));
  const bool isClosed = EndsWhereItBegins(line);
  if (isClosed && AddRectangle(line.first(line.size() - 2))) return;
  AddContour(line, isClosed, style->width * kPointsPerMillimetre);
  if (isClosed) text.Add("h\n");
}

// Readers draw nothing for a line of no length with such caps, as it has no direction.
void PdfContent::AddSquareDot(std::span<const float> point) {
  AddPoint(point, kDecimals);
  text.Add("m\n");
  AddNumber(decimals.PointsOf(point[0]) + kLeastStep);
  AddNumber(point[1]);
  text.Add("l\n");
}

void PdfContent::EndPath() {
  if (openPoints > 0) text.Add("S\n");
  openPoints = 0;
}

void PdfContent::Flush() {
  WriteHeldFill();
  EndPath();
}

void PdfContent::Draw(const FillShape& fill) {
  WriteHeldFill();
  if (!heldFill.Take(fill)) Write(fill);
}

void PdfContent::WriteHeldFill() {
  if (heldFill.IsThere()) Write(heldFill.Release());
}

void PdfContent::SetFillColour(const Colour& colour) {
  EndPath();
  if (fillColour != colour) AddColour(colour, "g\n", "rg\n");
  fillColour = colour;
}

void PdfContent::Write(const FillShape& fill) {
  SetFillColour(fill.colour);
  bool isEmpty = true;
  cleaner.VisitAreas(fill.contours, [&](std::span<const float> area) {
    if (area.size() < 6) return;
    const bool isClosed = EndsWhereItBegins(area);
    if (!AddRectangle(isClosed ? area.first(area.size() - 2) : area)) AddContour(area, isClosed, 0);
    isEmpty = false;
  });
  if (!isEmpty) text.Add(fill.rule == FillRule::EvenOdd ? "f*\n" : "f\n");
}

void PdfContent::WriteEdged(const FillShape& fill, const StrokeShape& stroke) {
  SetFillColour(fill.colour);
  SetStyle({stroke.colour, stroke.width, stroke.cap});
  cleaner.VisitLines(stroke.contours, [this](std::span<const float> line) { AddLine(line); });
  if (openPoints > 0) text.Add(fill.rule == FillRule::EvenOdd ? "B*\n" : "B\n");
  openPoints = 0;
}

void PdfContent::AddContour(std::span<const float> coordinates, bool isClosed, double width) {
  const std::size_t last = coordinates.size() - 2;
  const auto repeats = [&](std::size_t i) {
    return coordinates[i] == coordinates[i - 2] && coordinates[i + 1] == coordinates[i - 1];
  };
  for (std::size_t i = 0; i <= last; i += 2) {
    if (i > 0 && repeats(i)) {
      // A curve begins with the point that is there already.
      if (AddCurve(coordinates.subspan(i), width)) {
        i += 2 * (kCurvePoints - 1);
        continue;
      }
      if (i < last && !repeats(i + 2)) continue;
    }
    if (i == last && isClosed) break;
    const bool isFine = (i > 0 && IsShort(coordinates.subspan(i - 2, 4), width)) ||
                        (i < last && IsShort(coordinates.subspan(i, 4), width));
    AddPoint(coordinates.subspan(i, 2), isFine ? kFineDecimals : kDecimals);
    text.Add(i == 0 ? "m\n" : "l\n");
  }
}

// A step that may come of rounding is not meant to turn a join.
bool PdfContent::IsShort(std::span<const float> step, double width) const {
  const double length = std::max(std::abs(step[2] - step[0]), std::abs(step[3] - step[1]));
  return length > kLeastStep * unitsPerPoint && length < kShortStep * width * unitsPerPoint;
}

bool PdfContent::AddCurve(std::span<const float> coordinates, double width) {
  constexpr std::size_t kSize = 2 * kCurvePoints;
  if (coordinates.size() < kSize) return false;
  const auto controls = FindCurve(coordinates.first(kSize),
                                  {kCurveTolerancePoints * unitsPerPoint, width * unitsPerPoint});
  if (!controls) return false;
  for (const Point& point : {controls->first, controls->second}) {
    AddNumber(decimals.PointsOf(point.x));
    AddNumber(decimals.PointsOf(point.y));
  }
  AddPoint(coordinates.subspan(kSize - 2, 2), kDecimals);
  text.Add("c\n");
  return true;
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
  if (std::ranges::any_of(corners, [this](float v) { return IsFar(decimals.PointsOf(v)); })) {
    return false;
  }
  const std::size_t first = isUpright(0) ? 0 : 1;
  const Decimal left = NumberOf(x(first));
  const Decimal right = NumberOf(x(first + 2));
  const Decimal bottom = NumberOf(y(first));
  const Decimal top = NumberOf(y(first + 2));
  AddNumber(left);
  AddNumber(bottom);
  AddNumber(DecimalPoints::Difference(left, right));
  AddNumber(DecimalPoints::Difference(bottom, top));
  text.Add("re\n");
  return true;
}

// Image objects fill the unit square, their first row at its top.
void PdfContent::Draw(const ImageShape& shape, std::string_view name) {
  Flush();
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
