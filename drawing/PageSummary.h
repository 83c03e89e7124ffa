// What a page holds, in numbers: shapes and points, extent, widths and colours.
//
// A sink counts while a drawing passes and owns what it has counted; memory is bounded, for what
// is told apart is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "drawing/Geometry.h"
#include "drawing/PlacedShapes.h"

namespace orxdrawing {

// How often each of many different things was met; of more than kMost different ones the rest are
// counted together.
template <typename Key>
class Tally {
public:
  static constexpr std::size_t kMost = 1000;

  void Add(const Key& key) {
    const auto found = counts.find(key);
    if (found != counts.end()) {
      ++found->second;
    } else if (counts.size() < kMost) {
      counts.emplace(key, 1);
    } else {
      ++others;
    }
  }
  [[nodiscard]] const std::map<Key, std::uint64_t>& Counts() const { return counts; }
  [[nodiscard]] std::uint64_t Others() const { return others; }

private:
  std::map<Key, std::uint64_t> counts;
  std::uint64_t others = 0;
};

struct PageSummary {
  std::uint32_t page = 1;
  std::uint64_t strokes = 0;
  std::uint64_t fills = 0;
  std::uint64_t images = 0;
  std::uint64_t points = 0;    // of strokes and fills
  std::optional<Box> extent;   // in points
  Tally<float> widths;         // of strokes, in millimetres
  Tally<std::string> colours;  // of strokes and fills, as NameOf names them
};

class PageSummarySink final : public PlacedSink {
public:
  explicit PageSummarySink(double unitInPoints) : pointsPerUnit(unitInPoints) {}

  // Pages in the order in which they were drawn.
  [[nodiscard]] const std::vector<PageSummary>& Pages() const { return pages; }

  void BeginPage(std::uint32_t number) override;
  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

private:
  template <typename AnyShape>
  void AddExtent(const AnyShape& shape);
  void AddPoints(const Contours& contours) {
    pages.back().points += contours.coordinates.size() / 2;
  }

  double pointsPerUnit;
  std::vector<PageSummary> pages;
};

}  // namespace orxdrawing
