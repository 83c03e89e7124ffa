// Makes contours fit to be written: without points that are not finite, and cut where they leave
// the range in which readers of files calculate without fault.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/Shapes.h"

namespace orxdrawing {

// Readers that calculate in fixed point hold this much beyond a page, with room for wide strokes
// and joins.
inline constexpr double kReachPoints = 2'000'000;

class ContourCleaner {
public:
  // What is beyond 2,000,000 points from a corner of the area is cut.
  ContourCleaner(const Box& area, double pointsPerUnit);

  // Calls visit(std::span<const float> coordinates) for each contour of a stroke or an area.
  template <typename Visitor>
  void VisitLines(const Contours& contours, Visitor visit) {
    Visit(contours, visit, [&](std::span<const float> coordinates) { CutLine(coordinates); });
  }
  template <typename Visitor>
  void VisitAreas(const Contours& contours, Visitor visit) {
    Visit(contours, visit, [&](std::span<const float> coordinates) { CutArea(coordinates); });
  }

  // Whether nothing is left out or cut.
  [[nodiscard]] bool IsClean(std::span<const float> coordinates) const;
  // How many points were left out because they are not finite.
  [[nodiscard]] std::uint64_t LostPoints() const { return lostPoints; }

private:
  template <typename Visitor, typename Cut>
  void Visit(const Contours& contours, Visitor& visit, Cut cut) {
    std::size_t first = 0;
    for (const std::uint32_t length : contours.lengths) {
      const auto coordinates = contours.coordinates.subspan(first, 2 * std::size_t{length});
      first += coordinates.size();
      if (IsClean(coordinates)) {
        visit(coordinates);
        continue;
      }
      cut(coordinates);
      std::size_t place = 0;
      for (const std::size_t size : pieces) {
        visit(std::span<const float>(cleaned).subspan(place, size));
        place += size;
      }
    }
  }
  // Both leave their result in `cleaned` and `pieces`.
  void CutLine(std::span<const float> coordinates);
  void CutArea(std::span<const float> coordinates);
  [[nodiscard]] std::vector<Point> FinitePoints(std::span<const float> coordinates);
  void AddPiece(std::span<const Point> piece);

  Box range;  // in units
  float reach = 0;
  std::uint64_t lostPoints = 0;
  std::vector<float> cleaned;
  std::vector<std::size_t> pieces;
};

}  // namespace orxdrawing
