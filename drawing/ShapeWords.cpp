#include "drawing/ShapeWords.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "drawing/Comparison.h"
#include "drawing/Text.h"

namespace orxdrawing {

namespace {

unsigned ByteOf(float component) {
  if (std::isnan(component)) return 0;
  return static_cast<unsigned>(std::lround(std::clamp(component, 0.0F, 1.0F) * 255));
}

}  // namespace

const char* NameOf(ShapeKind kind) {
  return kind == ShapeKind::Stroke ? "stroke" : kind == ShapeKind::Fill ? "fill" : "image";
}

const char* NameOf(LineCap cap) {
  return cap == LineCap::Butt ? "butt" : cap == LineCap::Round ? "round" : "square";
}

std::string NameOf(const Colour& colour) {
  char name[16];
  std::snprintf(name, sizeof name, "#%02x%02x%02x", ByteOf(colour.red), ByteOf(colour.green),
                ByteOf(colour.blue));
  return name;
}

std::vector<std::string> NamesOf(std::uint8_t what) {
  constexpr std::pair<ShapeDifference, const char*> kNames[] = {
      {kPlaceDiffers, "place"}, {kOutlineDiffers, "outline"}, {kColourDiffers, "colour"},
      {kWidthDiffers, "width"}, {kStyleDiffers, "style"},     {kSamplesDiffer, "samples"},
      {kOrderDiffers, "order"}};
  std::vector<std::string> names;
  for (const auto& [bit, name] : kNames) {
    if ((what & bit) != 0) names.emplace_back(name);
  }
  return names;
}

// No negative zero comes out.
double Rounded(double value) { return std::round(value * 1000) / 1000 + 0.0; }

std::string DescribeInMillimetres(const Box& box) {
  const auto corner = [](double x, double y) {
    return ShortNumber(Rounded(x / kPointsPerMillimetre)) + " " +
           ShortNumber(Rounded(y / kPointsPerMillimetre));
  };
  return corner(box.left, box.bottom) + " to " + corner(box.right, box.top) + " mm";
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

}  // namespace orxdrawing
