// Findings in words: the same wherever people or programs are told of them.
//
// Functions on values; they keep nothing. Names and details of documents come out as they are.
#pragma once

#include <string>

#include "drawing/Findings.h"

namespace orxdrawing {

// Whether it can be seen in the picture.
[[nodiscard]] bool IsVisible(const Finding& finding);
// What the finding means, with its figures.
[[nodiscard]] std::string MeaningOf(const Finding& finding);
// "212 strokes, 40 fills, 1 image, 2.1..167.2 x 2.1..114.3 mm"
[[nodiscard]] std::string DescribeDrawing(const DrawingSummary& summary, double millimetresPerUnit);

}  // namespace orxdrawing
