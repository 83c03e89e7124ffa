// What each page of a drawing covers, for as many pages as are told apart.
//
// It is a sink: draw on it, then ask. It keeps a box for each of the first pages and one for all,
// whatever the drawing's size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>

#include "drawing/Extent.h"
#include "drawing/PlacedShapes.h"

namespace orxdrawing {

class DrawnExtents final : public PlacedSink {
public:
  // Pages beyond the most count for the whole only.
  DrawnExtents(std::size_t mostPages, double unitInPoints)
      : most(mostPages), pointsPerUnit(unitInPoints) {}

  // In points; none where nothing is drawn.
  [[nodiscard]] const std::optional<Box>& OfAll() const { return whole; }
  [[nodiscard]] std::optional<Box> OfPage(std::uint32_t number) const {
    const auto found = extents.find(number);
    return found == extents.end() ? std::nullopt : std::optional(found->second);
  }

  void Draw(const StrokeShape& stroke) override { Add(ExtentInPoints(stroke, pointsPerUnit)); }
  void Draw(const FillShape& fill) override { Add(ExtentInPoints(fill, pointsPerUnit)); }
  void Draw(const ImageShape& image) override { Add(ExtentInPoints(image, pointsPerUnit)); }

private:
  void Add(const std::optional<Box>& box) {
    if (!box) return;
    whole = Union(whole, box);
    if (Page() > most) return;
    const auto [place, isNew] = extents.try_emplace(Page(), *box);
    if (!isNew) place->second = *Union(place->second, box);
  }

  std::size_t most;
  double pointsPerUnit;
  std::optional<Box> whole;
  std::map<std::uint32_t, Box> extents;
};

}  // namespace orxdrawing
