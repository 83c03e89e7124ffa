#include "drawing/DisplayRecorder.h"

#include <numeric>
#include <utility>

#include "host/ORXPixelImage.h"

namespace orxdrawing {

namespace {

constexpr int kProjectingCap = 11;
constexpr int kRoundCap = 12;

ImageSamples::Layout LayoutOf(ORXPixelImageFormat format) {
  switch (format) {
    case ORXPixelImageFormat::Rgb24:
      return ImageSamples::Layout::Rgb24;
    case ORXPixelImageFormat::Cmyk32:
      return ImageSamples::Layout::Cmyk32;
    case ORXPixelImageFormat::Bilevel1:
      return ImageSamples::Layout::Bilevel1;
    case ORXPixelImageFormat::Grey8:
      break;
  }
  return ImageSamples::Layout::Grey8;
}

ImageSamples CopySamples(const ORXPixelImage& image) {
  ImageSamples samples;
  samples.width = image.Width();
  samples.height = image.Height();
  samples.layout = LayoutOf(image.Format());
  samples.rowBytes = ORXPixelImage::RowBytes(image.Width(), image.Format());
  samples.bytes.assign(image.Pixels(), image.Pixels() + image.ByteCount());
  return samples;
}

}  // namespace

Colour DisplayRecorder::ColourAt(int index) const {
  return index >= 0 && index < static_cast<int>(kColours) ? palette[static_cast<std::size_t>(index)]
                                                          : Colour{};
}

int DisplayRecorder::EndStroke() {
  strokeIsOpen = false;
  return 0;
}

void DisplayRecorder::NeedStroke() {
  if (strokeIsOpen) return;
  list.BeginStroke(ColourAt(lineColour), lineWidth, lineCap);
  strokeIsOpen = true;
  CheckBudget();
}

void DisplayRecorder::CheckBudget() const {
  const std::size_t needed =
      list.ShapeCount() * budget.bytesPerShape + list.PointCount() * budget.bytesPerPoint;
  if (needed > budget.bytes && onFull) onFull();
}

int DisplayRecorder::NewPage() {
  list.NewPage();
  return EndStroke();
}

int DisplayRecorder::MoveTo(float x, float y) {
  NeedStroke();
  list.MoveTo(x, y);
  return 0;
}

int DisplayRecorder::LineTo(float x, float y) {
  NeedStroke();
  list.LineTo(x, y);
  return 0;
}

int DisplayRecorder::FillArea(int contourCount, int* pointCounts, float* points) {
  EndStroke();
  const std::span<const int> counts(pointCounts, static_cast<std::size_t>(contourCount));
  const std::size_t pointCount = std::accumulate(counts.begin(), counts.end(), std::size_t{0});
  list.AddFill(fillRule, ColourAt(fillColour), counts, {points, 2 * pointCount});
  CheckBudget();
  return 0;
}

int DisplayRecorder::DrawImage(float x, float y, int /*flags*/, ORXPixelImage* image) {
  EndStroke();
  if (image->ByteCount() == 0) return 0;
  if (budget.hasRoomFor && !budget.hasRoomFor(image->ByteCount())) {
    if (onFull) onFull();
    return 0;
  }
  float rowHeight = image->GetYPixelSize();
  if (image->LinesRunUpwards()) {
    // Rows that run upwards fill the same box from its other end.
    y += static_cast<float>(image->Height()) * rowHeight;
    rowHeight = -rowHeight;
  }
  list.AddImage({CopySamples(*image), x, y, image->GetXPixelSize(), rowHeight});
  return 0;
}

int DisplayRecorder::DefineColor(int index, float red, float green, float blue) {
  if (index >= 0 && index < static_cast<int>(kColours)) {
    palette[static_cast<std::size_t>(index)] = {red, green, blue};
  }
  return EndStroke();
}

int DisplayRecorder::SetLineColor(int index) {
  lineColour = index;
  return EndStroke();
}

int DisplayRecorder::SetFillColor(int index) {
  fillColour = index;
  return EndStroke();
}

int DisplayRecorder::SetLineWidth(float width) {
  lineWidth = width;
  return EndStroke();
}

int DisplayRecorder::SetLineCap(int cap) {
  lineCap = cap == kRoundCap        ? LineCap::Round
            : cap == kProjectingCap ? LineCap::Square
                                    : LineCap::Butt;
  return EndStroke();
}

int DisplayRecorder::SetFillRule(int rule) {
  fillRule = rule == 0 ? Shape::Kind::EvenOddFill : Shape::Kind::WindingFill;
  return EndStroke();
}

}  // namespace orxdrawing
