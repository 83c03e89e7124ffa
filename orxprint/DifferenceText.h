// Differences between drawings as diff prints them.
//
// Both forms list the same differences in the same order. Drawings and places are borrowed for the
// call.
#pragma once

#include <string>
#include <vector>

#include "drawing/Comparison.h"
#include "orxprint/JsonText.h"
#include "orxprint/SourcePlaces.h"

namespace orxprint {

// More differences are counted, and not listed.
inline constexpr std::size_t kMostListedDifferences = 10'000;

// A drawing that is compared, and the document that it comes from.
struct ComparedDrawing {
  const orxdrawing::ShapeList& shapes;
  SourcePlaces& places;
};

// The differences, one after the other, and their number.
[[nodiscard]] std::string DifferencesForPeople(
    const std::vector<orxdrawing::Difference>& differences, ComparedDrawing before,
    ComparedDrawing after);
// The numbers and the list, as docs/diff.md says.
[[nodiscard]] Json DifferencesForPrograms(const std::vector<orxdrawing::Difference>& differences,
                                          ComparedDrawing before, ComparedDrawing after);

}  // namespace orxprint
