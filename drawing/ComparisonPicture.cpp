#include "drawing/ComparisonPicture.h"

#include <algorithm>
#include <cmath>

#include "drawing/Extent.h"

namespace orxdrawing {

namespace {

constexpr float kOutlineWidth = 0.25F;  // mm
constexpr float kPaleness = 0.3F;       // of black, which becomes a grey

Colour Pale(const Colour& colour) {
  const float light = 0.299F * colour.red + 0.587F * colour.green + 0.114F * colour.blue;
  const float grey = std::isfinite(light) ? 1 - kPaleness * (1 - std::clamp(light, 0.0F, 1.0F)) : 1;
  return {grey, grey, grey};
}

void DrawStroke(ShapeSink& sink, const ShapeList& list, const ListedShape& shape,
                const Colour& colour) {
  StrokeShape stroke = list.StrokeOf(shape);
  stroke.colour = colour;
  sink.Draw(stroke);
}

void DrawPale(ShapeSink& sink, const ShapeList& list, const ListedShape& shape) {
  const Colour colour = Pale(shape.record.colour);
  if (shape.record.kind == ShapeKind::Stroke) DrawStroke(sink, list, shape, colour);
  if (shape.record.kind == ShapeKind::Fill) {
    FillShape fill = list.FillOf(shape);
    fill.colour = colour;
    sink.Draw(fill);
  }
}

void DrawClosed(ShapeSink& sink, std::vector<float> coordinates, const Colour& colour) {
  if (coordinates.size() < 2) return;
  coordinates.push_back(coordinates[0]);
  coordinates.push_back(coordinates[1]);
  const auto length = static_cast<std::uint32_t>(coordinates.size() / 2);
  sink.Draw(StrokeShape{{{&length, 1}, coordinates}, colour, kOutlineWidth, LineCap::Round});
}

void DrawOutline(ShapeSink& sink, const ShapeList& list, const ListedShape& shape,
                 const Colour& colour) {
  const Contours contours = list.ContoursOf(shape);
  if (shape.record.kind == ShapeKind::Image) {
    const std::span<const float> at = contours.coordinates;
    return DrawClosed(sink, {at[0], at[1], at[2], at[1], at[2], at[3], at[0], at[3]}, colour);
  }
  std::size_t first = 0;
  for (const std::uint32_t length : contours.lengths) {
    const auto points = contours.coordinates.subspan(first, 2 * std::size_t{length});
    DrawClosed(sink, {points.begin(), points.end()}, colour);
    first += points.size();
  }
}

void DrawDifferent(ShapeSink& sink, const ShapeList& list, const ListedShape& shape,
                   const Colour& colour) {
  const bool isStroke = shape.record.kind == ShapeKind::Stroke;
  isStroke ? DrawStroke(sink, list, shape, colour) : DrawOutline(sink, list, shape, colour);
}

}  // namespace

std::set<std::uint32_t> DifferingPages(const ShapeList& before, const ShapeList& after,
                                       const std::vector<Difference>& differences) {
  std::set<std::uint32_t> pages;
  for (const Difference& difference : differences) {
    const ListedShape& shape =
        difference.after ? after.Shapes()[*difference.after] : before.Shapes()[*difference.before];
    pages.insert(shape.record.page);
  }
  return pages;
}

std::optional<Box> AreaOfPage(const DocumentComments& comments, const ShapeList& shapes,
                              std::uint32_t page) {
  if (const std::optional<Box> box = comments.BoxOfPage(page)) return box;
  std::optional<Box> extent;
  for (const ListedShape& shape : shapes.Shapes()) {
    if (shape.record.page == page) extent = Union(extent, shape.record.extent);
  }
  return extent;
}

void DrawComparison(ShapeSink& sink, const ShapeList& before, const ShapeList& after,
                    const std::vector<Difference>& differences, std::uint32_t page) {
  std::vector<bool> differs(after.Shapes().size(), false);
  for (const Difference& difference : differences) {
    if (difference.after) differs[*difference.after] = true;
  }
  for (std::size_t i = 0; i < differs.size(); ++i) {
    const ListedShape& shape = after.Shapes()[i];
    if (shape.record.page == page && !differs[i]) DrawPale(sink, after, shape);
  }
  for (const Difference& difference : differences) {
    if (!difference.before) continue;
    const ListedShape& shape = before.Shapes()[*difference.before];
    if (shape.record.page == page) DrawDifferent(sink, before, shape, kColourBefore);
  }
  for (std::size_t i = 0; i < differs.size(); ++i) {
    const ListedShape& shape = after.Shapes()[i];
    if (shape.record.page == page && differs[i]) DrawDifferent(sink, after, shape, kColourAfter);
  }
}

}  // namespace orxdrawing
