// The picture of what differs between two drawings.
//
// The commands that compare hand in both drawings and what differs, and get the picture on any
// sink, so that every format can show it. Nothing is kept.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "drawing/Comparison.h"
#include "drawing/DocumentComments.h"
#include "drawing/ShapeList.h"

namespace orxdrawing {

inline constexpr Colour kColourBefore = {0.84F, 0.1F, 0.11F};  // red
inline constexpr Colour kColourAfter = {0.1F, 0.3F, 0.84F};    // blue

// The pages on which something differs.
[[nodiscard]] std::set<std::uint32_t> DifferingPages(const ShapeList& before,
                                                     const ShapeList& after,
                                                     const std::vector<Difference>& differences);

// What of a page is to be shown, in points: its box, or all that is drawn on it.
[[nodiscard]] std::optional<Box> AreaOfPage(const DocumentComments& comments,
                                            const ShapeList& shapes, std::uint32_t page);

// Draws one page: what is the same in pale grey, and over it what differs in the two colours,
// strokes as wide as they are, fills and images as outlines, so that nothing hides anything.
void DrawComparison(ShapeSink& sink, const ShapeList& before, const ShapeList& after,
                    const std::vector<Difference>& differences, std::uint32_t page);

}  // namespace orxdrawing
