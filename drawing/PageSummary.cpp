#include "drawing/PageSummary.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "drawing/Extent.h"

namespace orxdrawing {

namespace {

unsigned ByteOf(float component) {
  if (std::isnan(component)) return 0;
  return static_cast<unsigned>(std::lround(std::clamp(component, 0.0F, 1.0F) * 255));
}

}  // namespace

std::string NameOf(const Colour& colour) {
  char name[16];
  std::snprintf(name, sizeof name, "#%02x%02x%02x", ByteOf(colour.red), ByteOf(colour.green),
                ByteOf(colour.blue));
  return name;
}

void PageSummarySink::BeginPage(std::uint32_t number) {
  PlacedSink::BeginPage(number);
  pages.emplace_back().page = number;
}

void PageSummarySink::Draw(const StrokeShape& stroke) {
  PageSummary& page = pages.back();
  ++page.strokes;
  if (!std::isnan(stroke.width)) page.widths.Add(stroke.width);
  page.colours.Add(NameOf(stroke.colour));
  AddPoints(stroke.contours);
  AddExtent(stroke);
}

void PageSummarySink::Draw(const FillShape& fill) {
  ++pages.back().fills;
  pages.back().colours.Add(NameOf(fill.colour));
  AddPoints(fill.contours);
  AddExtent(fill);
}

void PageSummarySink::Draw(const ImageShape& image) {
  ++pages.back().images;
  AddExtent(image);
}

template <typename AnyShape>
void PageSummarySink::AddExtent(const AnyShape& shape) {
  std::optional<Box>& extent = pages.back().extent;
  extent = Union(extent, ExtentInPoints(shape, pointsPerUnit));
}

}  // namespace orxdrawing
