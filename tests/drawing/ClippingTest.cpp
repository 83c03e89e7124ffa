// The cutting of lines and areas that reach too far.
#include "drawing/Clipping.h"

#include <gtest/gtest.h>

#include <vector>

namespace orxdrawing {
namespace {

TEST(Clipping, CutsLinesWhereTheyCrossTheBorder) {
  const Box box{0, 0, 10, 10};
  struct Case {
    Polyline line;
    std::vector<Polyline> pieces;
  };
  const std::vector<Case> cases = {
      {{{1, 1}, {9, 9}}, {{{1, 1}, {9, 9}}}},
      {{{-10, 5}, {30, 5}}, {{{0, 5}, {10, 5}}}},
      {{{5, 5}, {1e300, 5}}, {{{5, 5}, {10, 5}}}},
      {{{2, 2}, {2, 20}, {4, 20}, {4, 2}}, {{{2, 2}, {2, 10}}, {{4, 10}, {4, 2}}}},
      {{{-5, 0}, {0, 20}}, {}},  // past a corner
      {{{20, 20}, {30, 20}}, {}},
      {{{3, 3}}, {}},
      {{{0, 0}, {20, 10}, {1, 1}}, {{{0, 0}, {10, 5}}, {{10, 1 + 9.0 * 9 / 19}, {1, 1}}}},
  };
  for (const Case& clipped : cases) {
    const std::vector<Polyline> pieces = ClipLine(clipped.line, box);
    ASSERT_EQ(pieces.size(), clipped.pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      ASSERT_EQ(pieces[i].size(), clipped.pieces[i].size());
      for (std::size_t k = 0; k < pieces[i].size(); ++k) {
        EXPECT_NEAR(pieces[i][k].x, clipped.pieces[i][k].x, 1e-9);
        EXPECT_NEAR(pieces[i][k].y, clipped.pieces[i][k].y, 1e-9);
      }
    }
  }
}

double AreaOf(const Polyline& contour) {
  double twice = 0;
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const Point& a = contour[i];
    const Point& b = contour[(i + 1) % contour.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return twice / 2;
}

TEST(Clipping, KeepsThePartOfAnAreaThatIsInside) {
  const Box box{0, 0, 10, 10};
  EXPECT_DOUBLE_EQ(
      AreaOf(ClipArea(Polyline{{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}, box)), 100);
  EXPECT_DOUBLE_EQ(AreaOf(ClipArea(Polyline{{5, 5}, {15, 5}, {15, 15}, {5, 15}}, box)), 25);
  EXPECT_DOUBLE_EQ(AreaOf(ClipArea(Polyline{{0, 0}, {0, 20}, {20, 0}}, box)), -100);
  EXPECT_TRUE(ClipArea(Polyline{{20, 20}, {30, 20}, {30, 30}}, box).empty());
}

}  // namespace
}  // namespace orxdrawing
