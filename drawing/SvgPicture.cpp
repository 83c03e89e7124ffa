#include "drawing/SvgPicture.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "drawing/Base64.h"
#include "drawing/Extent.h"
#include "drawing/PngImage.h"
#include "drawing/Text.h"

namespace orxdrawing {

namespace {

// Larger pages no reader shows.
constexpr double kMostPoints = 1'000'000;
// A path takes no more strokes when it has so many points: readers bound the length of its text.
constexpr std::size_t kPointsOfFullPath = 50'000;
// Colours of eight bits are written as such when they are no further off than this.
constexpr double kSameColour = 0.01;

double Clamped(float component) {
  return std::isnan(component) ? 0.0 : std::clamp<double>(component, 0, 1);
}

// Lengths are sums and differences of numbers with few digits, and so have few digits themselves.
double WithoutNoise(double length) { return std::round(length * 1e6) / 1e6; }

bool EndsWhereItBegins(std::span<const float> coordinates) {
  const std::size_t size = coordinates.size();
  return size > 4 && coordinates[0] == coordinates[size - 2] &&
         coordinates[1] == coordinates[size - 1];
}

}  // namespace

SvgPicture::SvgPicture(SvgSettings svgSettings, ByteSink sink)
    : settings(std::move(svgSettings)), text(std::move(sink)), decimals(settings.pointsPerUnit) {}

ShapeSink& SvgPicture::BeginPage(const PicturePage& page) {
  const Box& area = page.area;
  if (area.Width() > kMostPoints || area.Height() > kMostPoints) {
    throw std::runtime_error("a page of " + ShortNumber(area.Width()) + " x " +
                             ShortNumber(area.Height()) + " points is too large to be drawn");
  }
  cleaner.emplace(area, settings.pointsPerUnit);
  farImages.emplace(area, settings.pointsPerUnit);
  const double width = WithoutNoise(area.Width());
  const double height = WithoutNoise(area.Height());
  text.Add(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
      "width=\"");
  text.AddNumber(width);
  text.Add("pt\" height=\"");
  text.AddNumber(height);
  text.Add("pt\" viewBox=\"0 0 ");
  text.AddNumber(width);
  text.Add(' ');
  text.AddNumber(height);
  text.Add("\">\n<g transform=\"matrix(1 0 0 -1 ");
  text.AddNumber(WithoutNoise(0 - area.left));
  text.Add(' ');
  text.AddNumber(WithoutNoise(area.top));
  text.Add(")\" stroke-miterlimit=\"10\">\n");
  return *this;
}

void SvgPicture::Finish() {
  WriteHeldFill();
  EndRun();
  text.Add("</g>\n</svg>\n");
  text.Flush();
}

PictureLosses SvgPicture::Lost() const { return {cleaner ? cleaner->LostPoints() : 0, lostImages}; }

void SvgPicture::EndRun() {
  if (strokes) text.Add("\"/>\n");
  if (fills) text.Add("</g>\n");
  strokes.reset();
  fills.reset();
}

void SvgPicture::AddColour(const Colour& colour) {
  const double parts[] = {Clamped(colour.red) * 255, Clamped(colour.green) * 255,
                          Clamped(colour.blue) * 255};
  const bool isOfBytes = std::all_of(std::begin(parts), std::end(parts), [](double part) {
    return std::abs(part - std::round(part)) < kSameColour;
  });
  if (!isOfBytes) {
    text.Add("rgb(");
    for (std::size_t i = 0; i < 3; ++i) {
      if (i > 0) text.Add(',');
      text.AddNumber(std::round(parts[i] / 255 * 1e6) / 1e4);
      text.Add('%');
    }
    return text.Add(')');
  }
  static constexpr char kDigits[] = "0123456789abcdef";
  unsigned bytes[3];
  std::transform(std::begin(parts), std::end(parts), bytes,
                 [](double part) { return static_cast<unsigned>(std::round(part)); });
  const bool isShort =
      std::all_of(std::begin(bytes), std::end(bytes), [](unsigned byte) { return byte % 17 == 0; });
  text.Add('#');
  for (const unsigned byte : bytes) {
    if (!isShort) text.Add(kDigits[byte >> 4]);
    text.Add(kDigits[byte & 15]);
  }
}

void SvgPicture::Draw(const StrokeShape& stroke) {
  if (heldFill.IsThere() && heldFill.IsEdgedBy(stroke) &&
      cleaner->IsClean(stroke.contours.coordinates)) {
    return WriteEdged(heldFill.Release(), stroke);
  }
  WriteHeldFill();
  const StrokeStyle style{stroke.colour, stroke.width, stroke.cap};
  if (strokes != style || pathPoints >= kPointsOfFullPath) BeginStrokes(style);
  cleaner->VisitLines(stroke.contours,
                      [this](std::span<const float> line) { AddStrokeContour(line); });
}

void SvgPicture::BeginStrokes(const StrokeStyle& style) {
  EndRun();
  pathPoints = 0;
  strokes = style;
  text.Add("<path fill=\"none");
  AddStrokeAttributes(style);
  text.Add("\" d=\"");
}

// Behind the value of another attribute.
void SvgPicture::AddStrokeAttributes(const StrokeStyle& style) {
  text.Add("\" stroke=\"");
  AddColour(style.colour);
  text.Add("\" stroke-width=\"");
  AddWidth(text, style.width, NumberForm::Free);
  if (style.cap == LineCap::Round) text.Add("\" stroke-linecap=\"round");
  if (style.cap == LineCap::Square) text.Add("\" stroke-linecap=\"square");
}

void SvgPicture::AddStrokeContour(std::span<const float> coordinates) {
  if (coordinates.size() < 4) return;
  const bool isClosed = EndsWhereItBegins(coordinates);
  pathPoints += coordinates.size() / 2;
  path.Add(isClosed ? coordinates.first(coordinates.size() - 2) : coordinates);
  if (isClosed) path.Close();
}

void SvgPicture::Draw(const FillShape& fill) {
  WriteHeldFill();
  if (!heldFill.Take(fill)) Write(fill);
}

void SvgPicture::WriteHeldFill() {
  if (heldFill.IsThere()) Write(heldFill.Release());
}

void SvgPicture::WriteEdged(const FillShape& fill, const StrokeShape& stroke) {
  const FillStyle style{fill.colour, fill.rule,
                        StrokeStyle{stroke.colour, stroke.width, stroke.cap}};
  if (fills != style) BeginFills(style);
  text.Add("<path d=\"");
  cleaner->VisitLines(stroke.contours,
                      [this](std::span<const float> line) { AddStrokeContour(line); });
  text.Add("\"/>\n");
}

void SvgPicture::Write(const FillShape& fill) {
  const FillStyle style{fill.colour, fill.rule, {}};
  if (fills != style) BeginFills(style);
  text.Add("<path d=\"");
  cleaner->VisitAreas(fill.contours, [this](std::span<const float> area) { AddFillContour(area); });
  text.Add("\"/>\n");
}

void SvgPicture::BeginFills(const FillStyle& style) {
  EndRun();
  fills = style;
  text.Add("<g fill=\"");
  AddColour(style.colour);
  if (style.rule == FillRule::EvenOdd) text.Add("\" fill-rule=\"evenodd");
  if (style.edge) AddStrokeAttributes(*style.edge);
  text.Add("\">\n");
}

void SvgPicture::AddFillContour(std::span<const float> coordinates) {
  if (coordinates.size() < 6) return;
  const bool isClosed = EndsWhereItBegins(coordinates);
  path.Add(isClosed ? coordinates.first(coordinates.size() - 2) : coordinates);
}

// The data's own space has its first row at y 0 and samples of size 1.
void SvgPicture::Draw(const ImageShape& shape) {
  if (!ExtentOf(shape)) {
    ++lostImages;
    return;
  }
  if (farImages->Include(shape)) {
    return farImages->Draw(shape, [this](const FillShape& sample) { Draw(sample); });
  }
  WriteHeldFill();
  EndRun();
  const ORXPixelImage& image = *shape.image;
  text.Add(
      "<image image-rendering=\"optimizeSpeed\" style=\"image-rendering:pixelated\" "
      "preserveAspectRatio=\"none\" transform=\"matrix(");
  decimals.Add(text, shape.xPixelSize);
  text.Add(" 0 0 ");
  decimals.Add(text, -shape.yPixelSize);
  text.Add(' ');
  decimals.Add(text, shape.x);
  text.Add(' ');
  text.AddNumber((double{shape.y} + image.Height() * double{shape.yPixelSize}) *
                 settings.pointsPerUnit);
  text.Add(")\" width=\"");
  text.Add(std::to_string(image.Width()));
  text.Add("\" height=\"");
  text.Add(std::to_string(image.Height()));
  text.Add("\" xlink:href=\"data:image/png;base64,");
  AddImageData(image);
  text.Add("\"/>\n");
}

void SvgPicture::AddImageData(const ORXPixelImage& image) {
  Base64Encoder encoder;
  WritePngImage(image, settings.makeDeflater, settings.mayGoOn,
                [&](std::string_view bytes) { text.Add(encoder.Add(bytes)); });
  text.Add(encoder.Finish());
}

}  // namespace orxdrawing
