// How numbers and boxes stand in the JSON that commands print, units in the names of the keys.
//
// Every command that prints JSON uses these, so that equal things look alike in all of them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "drawing/Geometry.h"
#include "drawing/ShapeWords.h"

namespace orxprint {

using Json = nlohmann::ordered_json;

using orxdrawing::Rounded;

// {"leftMm", "bottomMm", "rightMm", "topMm"} of a box in points.
[[nodiscard]] Json MillimetresOf(const orxdrawing::Box& box);
// Text of documents and names of files may hold bytes that are not UTF-8.
[[nodiscard]] std::string Dump(const Json& json, int indent);

}  // namespace orxprint
