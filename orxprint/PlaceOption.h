// Places on the paper as people write them: "12.5,80", "12.5,80mm", "35,227pt".
//
// A value; the unit stays open until the interpreter's is known.
#pragma once

#include <optional>
#include <string_view>

#include "drawing/Geometry.h"

namespace orxprint {

struct PlaceOption {
  orxdrawing::Point at;
  std::optional<double> unitInMillimetres;  // none: that of the interpreter

  friend bool operator==(const PlaceOption&, const PlaceOption&) = default;
};

// None when the text is no place.
[[nodiscard]] std::optional<PlaceOption> ParsePlace(std::string_view text);

}  // namespace orxprint
