// Images that reach so far beyond the page that readers of files give up on them.
//
// A sample of such an image is large, so the few that can be seen are drawn as areas instead.
#pragma once

#include <functional>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

class FarImages {
public:
  // Of a page of this area in points.
  FarImages(const Box& area, double pointsPerUnit);

  // Whether the image is such a one, and few of its samples can be seen. REQUIRES: it has an
  // extent.
  [[nodiscard]] bool Include(const ImageShape& shape) const;
  // Calls draw for each sample that can be seen, as an area that ends with the page.
  void Draw(const ImageShape& shape, const std::function<void(const FillShape& fill)>& draw) const;

private:
  Box page;      // in units
  double reach;  // in units, beyond the page
};

}  // namespace orxdrawing
