#include "drawing/PageSummary.h"

#include <cmath>

#include "drawing/Extent.h"
#include "drawing/ShapeWords.h"

namespace orxdrawing {

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
