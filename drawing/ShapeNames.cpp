#include "drawing/ShapeNames.h"

#include <unordered_set>

#include "drawing/NameMeanings.h"

namespace orxdrawing {

bool ShapeTest::Test(std::string_view name) noexcept {
  static const std::unordered_set<std::string_view> names = {
      "lineto", "rlineto", "curveto", "arc",   "arcn",
      "stroke", "fill",    "eofill",  "image", "colorimage"};
  const NameMeaning meaning = MeaningOf(name);
  return meaning == NameMeaning::Paint || meaning == NameMeaning::Image ||
         meaning == NameMeaning::Path || names.contains(name);
}

bool TextTest::Test(std::string_view name) noexcept { return MeaningOf(name) == NameMeaning::Text; }

}  // namespace orxdrawing
