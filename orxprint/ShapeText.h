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
// The place and the shape as one object.
[[nodiscard]] Json ShapeForPrograms(const orxdrawing::ShapeRecord& shape, SourcePlaces& places);

}  // namespace orxprint
