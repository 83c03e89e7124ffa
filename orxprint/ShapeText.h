// Shapes as commands tell people and programs of them.
//
// Records are borrowed for the call; places are looked up in the document, which may read it.
#pragma once

#include <string>

#include "drawing/ShapeRecord.h"
#include "orxprint/JsonText.h"
#include "orxprint/SourcePlaces.h"

namespace orxprint {

// "page 1, line 12, byte 345 (procedure in line 3)"
[[nodiscard]] std::string DescribePlace(const orxdrawing::ShapeRecord& shape, SourcePlaces& places);
// "stroke of 0.1 mm, #ff0000, 0 0 to 10 20 mm"
[[nodiscard]] std::string Describe(const orxdrawing::ShapeRecord& shape);
// Both as one object.
[[nodiscard]] Json ShapeForPrograms(const orxdrawing::ShapeRecord& shape, SourcePlaces& places);

}  // namespace orxprint
