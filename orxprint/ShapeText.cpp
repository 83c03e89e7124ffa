#include "orxprint/ShapeText.h"

#include <cmath>
#include <optional>

#include "drawing/ShapeWords.h"

namespace orxprint {

using orxdrawing::NameOf;
using orxdrawing::ShapeKind;
using orxdrawing::ShapeRecord;
using orxdrawing::TraceOrigin;

std::string DescribePlace(const ShapeRecord& shape, SourcePlaces& places) {
  std::string text = "page " + std::to_string(shape.page);
  const std::optional<TraceOrigin> origin = places.Locate(shape.place);
  if (!origin) return text;
  text += ", line " + std::to_string(origin->token.line) + ", byte " +
          std::to_string(origin->token.byte);
  if (origin->procedure) {
    text += " (procedure in line " + std::to_string(origin->procedure->line) + ")";
  }
  return text;
}

Json ShapeForPrograms(const ShapeRecord& shape, SourcePlaces& places) {
  Json object = {{"kind", NameOf(shape.kind)}, {"page", shape.page}};
  if (const std::optional<TraceOrigin> origin = places.Locate(shape.place)) {
    object["line"] = origin->token.line;
    object["byte"] = origin->token.byte;
    if (const auto& procedure = origin->procedure) {
      object["procedure"] = {{"line", procedure->line}, {"byte", procedure->byte}};
    }
  }
  if (shape.kind == ShapeKind::Image) {
    object["columns"] = shape.columns;
    object["rows"] = shape.rows;
  } else {
    object["colour"] = NameOf(shape.colour);
  }
  if (shape.kind == ShapeKind::Stroke) {
    object["widthMm"] = std::isfinite(shape.width) ? Json(Rounded(shape.width)) : Json();
    object["cap"] = NameOf(shape.cap);
  }
  if (shape.kind == ShapeKind::Fill) {
    object["rule"] = shape.rule == orxdrawing::FillRule::EvenOdd ? "even-odd" : "non-zero";
  }
  object["extent"] = shape.extent ? MillimetresOf(*shape.extent) : Json();
  return object;
}

}  // namespace orxprint
