#include "orxprint/ShapeText.h"

#include <cmath>
#include <optional>

#include "drawing/PageSummary.h"
#include "drawing/Text.h"

namespace orxprint {

namespace {

using orxdrawing::LineCap;
using orxdrawing::ShapeKind;
using orxdrawing::ShapeRecord;
using orxdrawing::ShortNumber;
using orxdrawing::TraceOrigin;

const char* NameOf(ShapeKind kind) {
  return kind == ShapeKind::Stroke ? "stroke" : kind == ShapeKind::Fill ? "fill" : "image";
}

const char* NameOf(LineCap cap) {
  return cap == LineCap::Butt ? "butt" : cap == LineCap::Round ? "round" : "square";
}

}  // namespace

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

std::string Describe(const ShapeRecord& shape) {
  std::string text = NameOf(shape.kind);
  if (shape.kind == ShapeKind::Image) {
    text += " of " + std::to_string(shape.columns) + " x " + std::to_string(shape.rows);
  } else {
    if (shape.kind == ShapeKind::Stroke) text += " of " + ShortNumber(shape.width) + " mm";
    text += ", " + NameOf(shape.colour);
  }
  return text + ", " + (shape.extent ? DescribeInMillimetres(*shape.extent) : "without an extent");
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
    object["colour"] = orxdrawing::NameOf(shape.colour);
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
