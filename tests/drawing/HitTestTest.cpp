// Distances from places to ink.
#include "drawing/HitTest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace orxdrawing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr double kNowhere = std::numeric_limits<double>::infinity();

using Points = std::vector<float>;

struct Case {
  std::string what;
  Points points;
  Point place;
  double distance;
};

Contours OneContour(const Points& points, std::uint32_t& length) {
  length = static_cast<std::uint32_t>(points.size() / 2);
  return {{&length, 1}, points};
}

void ExpectStrokes(LineCap cap, const std::vector<Case>& cases) {
  for (const Case& line : cases) {
    std::uint32_t length = 0;
    const StrokeShape stroke{OneContour(line.points, length), {}, 2, cap};
    EXPECT_DOUBLE_EQ(DistanceTo(stroke, line.place, 1), line.distance) << line.what;
  }
}

TEST(HitTest, StrokesEndAsTheirCapsHaveIt) {
  const Points flat = {0, 0, 10, 0};
  const Points corner = {0, 0, 10, 0, 10, 10};
  ExpectStrokes(LineCap::Butt, {{"on it", flat, {5, 1}, 0},
                                {"beside it", flat, {5, 4}, 3},
                                {"behind its end", flat, {12, 1}, 2},
                                {"slanted", flat, {13, 5}, 5},
                                {"around a corner", corner, {10.5, -0.5}, 0},
                                {"a dot has no ink", {3, 3, 3, 3}, {7, 3}, 4},
                                {"a single point", {3, 3}, {3, 3}, kNowhere},
                                {"not finite", {0, 0, kNan, 5, 10, 0}, {5, 1}, 0},
                                {"nothing finite", {kNan, 0, 1, kNan}, {0, 0}, kNowhere}});
  ExpectStrokes(LineCap::Square, {{"behind its end", flat, {12, 1}, 1},
                                  {"before its start", flat, {-1, -1}, 0},
                                  {"no cap at a corner", corner, {13, 0}, 2}});
  ExpectStrokes(LineCap::Round, {{"behind its end", flat, {12, 0}, 1},
                                 {"beside its end", flat, {11, 1}, std::sqrt(2.0) - 1},
                                 {"a single point", {3, 3}, {5, 3}, 1}});
  ExpectStrokes(LineCap::Butt, {{"closed", {0, 0, 10, 0, 10, 10, 0, 0}, {-1, 0}, 0}});
}

TEST(HitTest, AreasAreInsideByTheirRule) {
  // A square of 10 with one of 2 in its middle, drawn the same way round.
  const std::vector<std::uint32_t> lengths = {4, 5};
  const Points points = {0, 0, 10, 0, 10, 10, 0, 10, 4, 4, 6, 4, 6, 6, 4, 6, 4, 4};
  const struct {
    Point place;
    double winding;
    double evenOdd;
  } kTable[] = {{{1, 1}, 0, 0},  {{5, 5}, 0, 1},   {{5, 4}, 0, 0},
                {{12, 5}, 2, 2}, {{-3, -4}, 5, 5}, {{0, 10}, 0, 0}};
  for (const auto& row : kTable) {
    FillShape fill{{lengths, points}, {}, FillRule::Winding};
    EXPECT_DOUBLE_EQ(DistanceTo(fill, row.place, 1), row.winding) << row.place.x;
    fill.rule = FillRule::EvenOdd;
    EXPECT_DOUBLE_EQ(DistanceTo(fill, row.place, 1), row.evenOdd) << row.place.x;
  }
}

TEST(HitTest, ImagesFillTheirBoxAlsoWhenTheyAreMirrored) {
  unsigned char samples[2] = {};
  const ORXPixelImage image(2, 1, ORXPixelImageFormat::Grey8, samples,
                            ORXDeallocatePixels::KeepWithCaller);
  const ImageShape shape{&image, 10, 10, -2, 3};
  EXPECT_EQ(DistanceTo(shape, {7, 12}, 1), 0);
  EXPECT_EQ(DistanceTo(shape, {13, 17}, 1), 5);
  EXPECT_EQ(DistanceTo(shape, {14, 20}, 2), 0) << "in another unit";
  EXPECT_EQ(DistanceTo(ImageShape{&image, 0, 0, 0, 1}, {0, 0}, 1), kNowhere);
}

}  // namespace
}  // namespace orxdrawing
