// A fill that waits for the next shape: documents often fill a path and then stroke it, and formats
// have a way to say both at once.
//
// Fills of many points do not wait, so that what is kept stays small.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/Shapes.h"

namespace orxdrawing {

class HeldFill {
public:
  // Whether it waits; the shape is copied.
  [[nodiscard]] bool Take(const FillShape& fill);
  [[nodiscard]] bool IsThere() const { return isThere; }
  // Whether the stroke goes along all contours of the fill, and along nothing else.
  [[nodiscard]] bool IsEdgedBy(const StrokeShape& stroke) const;
  // It waits no longer. The shape lasts until the next one waits. REQUIRES: IsThere().
  FillShape Release();

private:
  bool isThere = false;
  Colour colour;
  FillRule rule = FillRule::Winding;
  std::vector<std::uint32_t> lengths;
  std::vector<float> coordinates;
};

}  // namespace orxdrawing
