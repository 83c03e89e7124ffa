// What the recorder keeps of a document's calls, and the cutting of far coordinates.
#include "drawing/DisplayList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "drawing/Clipping.h"
#include "drawing/DisplayRecorder.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {
namespace {

// Shapes as text: kind, then the point counts of the contours.
std::string ShapesOf(const DisplayList& list, std::size_t page = 0) {
  std::string text;
  for (const Shape& shape : list.ShapesOfPage(page)) {
    text += "swei"[static_cast<int>(shape.kind)];
    list.VisitContours(shape, [&text](std::span<const float> coordinates) {
      text += std::to_string(coordinates.size() / 2);
    });
    text += ' ';
  }
  return text;
}

void DrawImage(DisplayRecorder& recorder, float x, float y, float xPixelSize, float yPixelSize) {
  unsigned char samples[6] = {};
  ORXPixelImage image(3, 2, ORXPixelImageFormat::Grey8, samples,
                      ORXDeallocatePixels::KeepWithCaller);
  image.SetXPixelSize(xPixelSize);
  image.SetYPixelSize(yPixelSize);
  recorder.DrawImage(x, y, 0, &image);
}

TEST(DisplayRecorder, KeepsNoImageThatHasNoRoom) {
  int refusals = 0;
  std::size_t room = 6;  // the bytes of one image
  DisplayRecorder recorder({SIZE_MAX, 0, 0,
                            [&room](std::size_t bytes) {
                              const bool isThere = bytes <= room;
                              if (isThere) room -= bytes;
                              return isThere;
                            }},
                           [&refusals] { ++refusals; });
  for (int i = 0; i < 3; ++i) DrawImage(recorder, 0, 0, 1, 1);
  EXPECT_EQ(ShapesOf(recorder.List()), "i ");
  EXPECT_EQ(refusals, 2);
}

TEST(DisplayRecorder, MakesOneStrokeOfWhatStandsBetweenAttributeCalls) {
  DisplayRecorder recorder;
  recorder.LineTo(0, 0);  // without a point before it
  recorder.LineTo(1, 1);
  recorder.MoveTo(5, 5);
  recorder.SetLineWidth(1);
  recorder.MoveTo(0, 0);
  recorder.LineTo(1, 0);
  recorder.LineTo(1, 1);
  DrawImage(recorder, 0, 0, 1, 1);
  recorder.LineTo(2, 2);
  int counts[] = {2, 3};
  float points[10] = {};
  recorder.SetFillRule(0);
  recorder.FillArea(2, counts, points);
  recorder.SetFillRule(1);
  recorder.FillArea(1, counts, points);
  recorder.SetLineCap(12);
  recorder.NewPage();
  recorder.MoveTo(0, 0);
  EXPECT_EQ(ShapesOf(recorder.List(), 0), "s21 s3 i s1 e23 w2 ");
  EXPECT_EQ(ShapesOf(recorder.List(), 1), "s1 ");
  EXPECT_EQ(recorder.List().PageCount(), 2U);
}

TEST(DisplayRecorder, GivesShapesTheAttributesOfTheirMoment) {
  DisplayRecorder recorder;
  recorder.DefineColor(255, 1, 0, 0);
  recorder.SetLineColor(255);
  recorder.SetLineWidth(2.5F);
  recorder.SetLineCap(11);
  recorder.MoveTo(0, 0);
  recorder.DefineColor(255, 0, 1, 0);
  recorder.DefineColor(4000, 0, 0, 1);  // no such colour
  recorder.MoveTo(0, 0);
  const std::span<const Shape> shapes = recorder.List().ShapesOfPage(0);
  EXPECT_EQ(shapes[0].colour.red, 1);
  EXPECT_EQ(shapes[0].lineWidth, 2.5F);
  EXPECT_EQ(shapes[0].cap, LineCap::Square);
  EXPECT_EQ(shapes[1].colour.red, 0);
  EXPECT_EQ(shapes[1].colour.green, 1);
}

TEST(DisplayList, ExtentHoldsLinesWithTheirWidthAndImagesAndLeavesOutTheInfinite) {
  constexpr double kPointsPerMillimetre = 72.0 / 25.4;
  DisplayRecorder recorder;
  EXPECT_FALSE(recorder.List().Extent(0, 1));
  recorder.SetLineWidth(static_cast<float>(2 / kPointsPerMillimetre));
  recorder.MoveTo(10, 20);
  recorder.LineTo(30, 20);
  recorder.LineTo(std::numeric_limits<float>::infinity(), 0);
  recorder.LineTo(0, std::numeric_limits<float>::quiet_NaN());
  const std::optional<Box> ofLine = recorder.List().Extent(0, 1);
  ASSERT_TRUE(ofLine);
  EXPECT_NEAR(ofLine->left, 9, 1e-6);
  EXPECT_NEAR(ofLine->bottom, 19, 1e-6);
  EXPECT_NEAR(ofLine->right, 31, 1e-6);
  EXPECT_NEAR(ofLine->top, 21, 1e-6);
  DrawImage(recorder, 10, 100, -2, -3);
  DrawImage(recorder, 0, 0, 1, 0);  // without an area
  const std::optional<Box> withImage = recorder.List().Extent(0, 2);
  ASSERT_TRUE(withImage);
  EXPECT_NEAR(withImage->left, 8, 1e-6);
  EXPECT_NEAR(withImage->top, 200, 1e-6);
}

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
