// Both ways of computing areas agree, however outlines run, turn and leave the tile.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

#include "drawing/AreaRasteriser.h"

namespace orxdrawing {
namespace {

constexpr PixelRect kTile = {10, 20, 74, 60};

std::vector<unsigned> CoversOf(AreaRasteriser& rasteriser, const std::vector<Point>& outline,
                               FillRule rule) {
  rasteriser.MoveTo(outline[0].x, outline[0].y);
  for (const Point& point : outline) rasteriser.LineTo(point.x, point.y);
  std::vector<unsigned> covers(static_cast<std::size_t>(kTile.Width()) * kTile.Height());
  rasteriser.Sweep(rule, [&](int x, int y, int length, unsigned cover) {
    for (int i = 0; i < length; ++i) {
      covers[static_cast<std::size_t>((y - kTile.top) * kTile.Width() + x - kTile.left + i)] =
          cover;
    }
  });
  return covers;
}

TEST(AreaRasteriser, IsTheSameDensely) {
  std::mt19937 random(5);
  AreaRasteriser rasteriser;
  for (const int corners : {3, 8, 40}) {
    for (const int reach : {40, 90, 4000}) {
      for (const FillRule rule : {FillRule::Winding, FillRule::EvenOdd}) {
        std::uniform_int_distribution<int> place(-reach * 16, reach * 16);
        std::vector<Point> outline;
        for (int i = 0; i < corners; ++i) {
          // Many on whole pixels, and lines along the axes.
          const double x = 42 + place(random) / 16 * (i % 2 == 0 ? 1.0 : 0.93);
          const double y = i % 5 == 4 ? outline.back().y : 40 + place(random) / 16.0;
          outline.push_back({x, y});
        }
        rasteriser.Begin(kTile);
        const auto sparse = CoversOf(rasteriser, outline, rule);
        rasteriser.BeginDensely(kTile);
        const auto dense = CoversOf(rasteriser, outline, rule);
        for (std::size_t i = 0; i < sparse.size(); ++i) {
          ASSERT_NEAR(static_cast<int>(sparse[i]), static_cast<int>(dense[i]), 1 + corners / 4)
              << corners << " " << reach << " " << i;
        }
      }
    }
  }
}

}  // namespace
}  // namespace orxdrawing
