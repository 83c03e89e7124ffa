// Construction of the path, point by point.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "graphics/ArcAngles.h"
#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

using orxeps::ArcDirection;
using orxeps::OrderedEndAngle;

std::string PathAfter(std::string_view program) {
  Interpretation interpretation(program);
  static_cast<void>(interpretation.Draw());
  return interpretation.Path();
}

TEST(Path, PointsAreMappedWhenTheyAreAdded) {
  const Outcome kTable[] = {
      {"10 10 moveto 20 10 lineto 20 20 lineto closepath", "M 10 10 L 20 10 L 20 20 L 10 10"},
      {"1 1 moveto 2 2 lineto closepath closepath", "M 1 1 L 2 2 L 1 1 L 1 1"},
      {"newpath closepath", ""},
      {"newpath 5 5 lineto", "L 5 5"},
      {"100 0 translate 0 0 moveto 10 0 rlineto", "M 100 0 L 110 0"},
      {"2 3 scale 1 1 moveto 1 1 rmoveto 1 1 rlineto 4 4 lineto", "M 2 3 M 4 6 L 6 9 L 8 12"},
      {"0 0 moveto 5 5 rmoveto 10 0 rlineto closepath", "M 0 0 M 5 5 L 15 5 L 5 5"},
      {"[0.0 1.0 -1.0 0.0 7.0 0.0] setmatrix 1 2 moveto 3 4 rlineto", "M 5 1 L 1 4"},
      // Absolute points are floats; the sums of relative ones are not rounded.
      {"0.1 0.2 moveto 0.1 0.1 rlineto", "M 0.1 0.2 L 0.2 0.30000000447034836"},
      {"16777217 0.1 moveto", "M 16777216 0.1"},
      {"(a) 5 moveto", "M 0 5"},
      // The beginning of the subpath is a place in the path, also after the path was emptied.
      {"1 1 moveto newpath 5 5 lineto closepath", "L 5 5 L 5 5"},
      {"9 9 moveto 1 1 moveto newpath 5 5 lineto closepath", "L 5 5"},
      {"1 2 moveto newpath 3 3 rlineto", "L 4 5"},
  };
  for (const auto& [program, expected] : kTable) EXPECT_EQ(PathAfter(program), expected) << program;
  ExpectOutcomes({
      {"2 2 scale 3 4 moveto currentpoint newpath currentpoint", "6.0 8.0 6.0 8.0"},
      {"currentpoint", "0.0 0.0"},
      {"10 10 20 20 30 30 curveto", "!No Current Point"},
  });
}

TEST(Path, CurvesAreElevenPointsInSinglePrecision) {
  EXPECT_EQ(PathAfter("0 0 moveto 0 10 10 10 10 0 curveto"),
            "M 0 0 L 0 0 L 0.28 2.7 L 1.0400001 4.8000007 L 2.16 6.3 L 3.5200002 7.200001 L 5 7.5 "
            "L 6.48 7.1999993 L 7.8399997 6.3 L 8.960001 4.8 L 9.719999 2.7000008 L 10 0");
  EXPECT_EQ(PathAfter("1.1 2.3 moveto 3.3 4.7 5.1 -2.2 7.9 0.3 curveto"),
            "M 1.1 2.3 L 1.1 2.3 L 1.7493998 2.7596996 L 2.3832002 2.7735999 L 3.0098 2.4538996 "
            "L 3.6376002 1.9128 L 4.275 1.2624999 L 4.9304 0.6151998 L 5.6122 0.0831 "
            "L 6.3288 -0.22160012 L 7.0885997 -0.18670012 L 7.9 0.3");
  // The control points go through the matrix, the current point has done so before.
  EXPECT_EQ(PathAfter("1 1 moveto 2 2 scale 1 1 1 1 1 1 curveto").substr(0, 11), "M 1 1 L 1 1");
  EXPECT_EQ(StackAfter("1 1 moveto 2 2 scale 1 1 1 1 1 1 curveto currentpoint"), "2.0 2.0");
}

TEST(Path, ArcsAreSixtySegmentsFromTheFirstAngleOn) {
  const std::string quarter = PathAfter("0 0 10 0 90 arc");
  EXPECT_TRUE(quarter.starts_with("M 10 0 L 10 0 L 9.996573 0.2617695 L ")) << quarter;
  EXPECT_NE(quarter.find(" L 7.071068 7.071068 L "), std::string::npos) << quarter;
  EXPECT_TRUE(quarter.ends_with(" L -4.371139e-07 10")) << quarter;

  const struct {
    const char* program;
    std::size_t pointsBefore;
    double firstAngle;
    double step;
  } kTable[] = {
      {"1 2 10 0 90 arc", 1, 0, 1.5},
      {"1 2 10 90 0 arc", 1, 90, 4.5},
      {"1 2 10 90 0 arcn", 1, 90, -1.5},
      {"1 2 10 0 90 arcn", 1, 0, -4.5},
      {"0 0 moveto 1 2 10 45 45 arc", 1, 45, 0},
      {"0 0 moveto 1 2 10 0 720 arc", 1, 0, 12},
      {"0 0 moveto 1 2 10 720 0 arcn", 1, 720, -12},
      {"5 5 lineto 1 2 10 -30.5 -90 arcn", 1, -30.5, -59.5 / 60},
      {"2 dup scale 0.5 1 5 -725 0 arc", 1, -725, 725.0 / 60},
      {"1 2 -10 0 90 arc", 1, 180, 1.5},
  };
  for (const auto& [program, pointsBefore, firstAngle, step] : kTable) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    const orxeps::GraphicsStates& graphics = interpretation.Get().canvas.states;
    ASSERT_EQ(graphics.PathCount(), pointsBefore + 61) << program;
    for (std::size_t i = 0; i <= 60; ++i) {
      const orxeps::PathPoint& point = graphics.PathAt(pointsBefore + 1 + i);
      const double angle = (firstAngle + step * static_cast<double>(i)) * ORXPI / 180;
      EXPECT_EQ(point.kind, orxeps::PathPointKind::Line);
      EXPECT_NEAR(point.x, 1 + 10 * std::cos(angle), 2e-4) << program << " point " << i;
      EXPECT_NEAR(point.y, 2 + 10 * std::sin(angle), 2e-4) << program << " point " << i;
    }
  }
  // Whatever the angles are, the points are appended.
  for (const char* program : {"0 0 1 0 1e39 arc", "0 0 1 1e39 -1e39 arc", "0 0 1 1e39 1e39 arcn",
                              "0 0 1 1e39 dup sub 5 arc", "0 0 1 1e38 0 arc"}) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    EXPECT_EQ(interpretation.Get().canvas.states.PathCount(), 62U) << program;
  }
}

// Adding or taking away 360 one step at a time, as the result is defined.
float StepByStep(float first, float last, ArcDirection direction) {
  if (direction == ArcDirection::CounterClockwise) {
    while (first > last) last += 360.0F;
  } else {
    while (last > first) last += -360.0F;
  }
  return last;
}

TEST(ArcAngles, EndWhereTheStepsEnd) {
  std::mt19937 random(11);
  for (const float range : {500.0F, 1e5F, 1e7F, 3e7F}) {
    std::uniform_real_distribution<float> angle(-range, range);
    for (int round = 0; round < (range < 1e6F ? 2'000 : 50); ++round) {
      const float first = angle(random);
      // Small angles with all their digits make the sums round on their way up.
      float last = angle(random) / (round % 2 ? 1.0F : 7777.0F);
      if (round % 5 == 0) last = first - 360.0F * std::round(angle(random) / 360.0F);
      for (const auto direction : {ArcDirection::CounterClockwise, ArcDirection::Clockwise}) {
        if (std::fabs(first - last) > 3.5e7F) continue;  // beyond a hundred thousand steps
        ASSERT_EQ(OrderedEndAngle(first, last, direction), StepByStep(first, last, direction))
            << first << ' ' << last;
      }
    }
  }
}

TEST(ArcAngles, TooFarApartAreBroughtInOrderAtOnce) {
  const float kInfinity = std::numeric_limits<float>::infinity();
  const struct {
    float first;
    float last;
    ArcDirection direction;
    float expected;
  } kTable[] = {
      // By exact arithmetic: 1e30 in single precision is 120 degrees beyond whole turns.
      {100.0F, -1e30F, ArcDirection::CounterClockwise, 240.0F},
      {0.0F, 1e30F, ArcDirection::Clockwise, -240.0F},
      {-55.9997902F, -3.9843277e12F, ArcDirection::CounterClockwise, 304.0F},
      {5.0F, -kInfinity, ArcDirection::CounterClockwise, 5.0F},
      {5.0F, kInfinity, ArcDirection::Clockwise, 5.0F},
      {5.0F, kInfinity, ArcDirection::CounterClockwise, kInfinity},
  };
  for (const auto& row : kTable) {
    const float end = OrderedEndAngle(row.first, row.last, row.direction);
    EXPECT_EQ(end, row.expected) << row.first << ' ' << row.last;
  }
}

}  // namespace
}  // namespace orxtests
