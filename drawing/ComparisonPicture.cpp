#include "drawing/ComparisonPicture.h"

#include <algorithm>
#include <cmath>

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
  sink.Draw(StrokeShape{list.ContoursOf(shape), colour, shape.record.width, shape.record.cap});
}

void DrawPale(ShapeSink& sink, const ShapeList& list, const ListedShape& shape) {
  const Colour colour = Pale(shape.record.colour);
  if (shape.record.kind == ShapeKind::Stroke) DrawStroke(sink, list, shape, colour);
  if (shape.record.kind == ShapeKind::Fill) {
    sink.Draw(FillShape{list.ContoursOf(shape), colour, shape.record.rule});
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
