// What the gatherer makes of a generator's calls, which pages of it count, and what they cover.
#include "drawing/Shapes.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "drawing/Extent.h"
#include "drawing/PageFilter.h"
#include "drawing/ShapeGatherer.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {
namespace {

// Writes shapes as text: kind, the point counts of the contours; a bar between pages.
class ShapeNotes final : public ShapeSink {
public:
  void NextPage() override { text += "| "; }
  void Draw(const StrokeShape& stroke) override {
    Note('s', stroke.contours);
    strokes.push_back({stroke.colour, stroke.width, stroke.cap});
  }
  void Draw(const FillShape& fill) override {
    Note(fill.rule == FillRule::EvenOdd ? 'e' : 'w', fill.contours);
  }
  void Draw(const ImageShape& image) override {
    text += "i ";
    images.push_back({image.y, image.yPixelSize});
  }

  struct Style {
    Colour colour;
    float width;
    LineCap cap;
  };
  std::string text;
  std::vector<Style> strokes;
  std::vector<std::pair<float, float>> images;  // y and the height of a sample

private:
  void Note(char kind, const Contours& contours) {
    text += kind;
    for (const std::uint32_t length : contours.lengths) text += std::to_string(length);
    text += ' ';
  }
};

void DrawImage(PrintGenerator& generator, float x, float y, float xSize, float ySize,
               bool upwards = false) {
  unsigned char samples[6] = {};
  ORXPixelImage image(3, 2, ORXPixelImageFormat::Grey8, samples,
                      ORXDeallocatePixels::KeepWithCaller);
  image.SetXPixelSize(xSize);
  image.SetYPixelSize(ySize);
  if (upwards) image.InvertLineProgression();
  generator.DrawImage(x, y, 0, &image);
}

TEST(ShapeGatherer, MakesOneStrokeOfWhatStandsBetweenAttributeCalls) {
  ShapeNotes notes;
  ShapeGatherer gatherer(notes);
  gatherer.LineTo(0, 0);  // without a point before it
  gatherer.LineTo(1, 1);
  gatherer.MoveTo(5, 5);
  gatherer.SetLineWidth(1);
  gatherer.MoveTo(0, 0);
  gatherer.LineTo(1, 0);
  gatherer.LineTo(1, 1);
  DrawImage(gatherer, 0, 0, 1, 1);
  gatherer.LineTo(2, 2);
  int counts[] = {2, 3};
  float points[10] = {};
  gatherer.SetFillRule(0);
  gatherer.FillArea(2, counts, points);
  gatherer.SetFillRule(1);
  gatherer.FillArea(1, counts, points);
  gatherer.SetLineCap(12);
  gatherer.NewPage();
  gatherer.MoveTo(0, 0);
  gatherer.Finish();
  EXPECT_EQ(notes.text, "s21 s3 i s1 e23 w2 | s1 ");
}

TEST(ShapeGatherer, GivesShapesTheAttributesOfTheirMoment) {
  ShapeNotes notes;
  ShapeGatherer gatherer(notes);
  gatherer.DefineColor(255, 1, 0, 0);
  gatherer.SetLineColor(255);
  gatherer.SetLineWidth(2.5F);
  gatherer.SetLineCap(11);
  gatherer.MoveTo(0, 0);
  gatherer.DefineColor(255, 0, 1, 0);
  gatherer.DefineColor(4000, 0, 0, 1);  // no such colour
  gatherer.MoveTo(0, 0);
  gatherer.Finish();
  ASSERT_EQ(notes.strokes.size(), 2U);
  EXPECT_EQ(notes.strokes[0].colour, (Colour{1, 0, 0}));
  EXPECT_EQ(notes.strokes[0].width, 2.5F);
  EXPECT_EQ(notes.strokes[0].cap, LineCap::Square);
  EXPECT_EQ(notes.strokes[1].colour, (Colour{0, 1, 0}));
}

TEST(ShapeGatherer, PlacesImagesWhoseRowsRunUpwardsFromTheOtherEnd) {
  ShapeNotes notes;
  ShapeGatherer gatherer(notes);
  DrawImage(gatherer, 0, 10, 1, 3);
  DrawImage(gatherer, 0, 10, 1, 3, true);
  EXPECT_EQ(notes.images, (std::vector<std::pair<float, float>>{{10, 3}, {16, -3}}));
}

TEST(ShapeGatherer, LeavesOutWhatHasNoRoomAndDrawsTheRest) {
  ShapeNotes notes;
  int refusals = 0;
  std::size_t room = 64 << 10;
  ShapeGatherer gatherer(
      notes, [&room](std::size_t bytes) { return bytes <= room; }, [&refusals] { ++refusals; });
  for (int i = 0; i < 100'000; ++i) gatherer.LineTo(0, 0);
  gatherer.Finish();
  EXPECT_GT(refusals, 0);
  ASSERT_EQ(notes.strokes.size(), 1U);
  EXPECT_GT(std::stoi(notes.text.substr(1)), 1000);
}

TEST(PageFilter, LeavesOutBlankPagesThatOnlyEndAnother) {
  struct Case {
    std::vector<bool> starts;
    PageFilter::Pages pages;
    std::string calls;  // N for a new page, s for a stroke
    std::string expected;
  };
  const std::vector<Case> cases = {
      {{true, true}, PageFilter::Pages::All, "sNs", "s1 | s1 "},
      {{true, false, true}, PageFilter::Pages::All, "sNNs", "s1 | s1 "},
      {{true, false, true}, PageFilter::Pages::All, "sNsNs", "s1 | s1 | s1 "},
      {{true, false}, PageFilter::Pages::All, "sN", "s1 "},
      {{true, true}, PageFilter::Pages::All, "N", "| "},
      {{false}, PageFilter::Pages::All, "N", "| "},  // beyond the list: a page
      {{true, true}, PageFilter::Pages::First, "sNs", "s1 "},
  };
  for (const Case& drawn : cases) {
    ShapeNotes notes;
    PageFilter filter(notes, drawn.pages, drawn.starts);
    ShapeGatherer gatherer(filter);
    for (const char call : drawn.calls) call == 'N' ? gatherer.NewPage() : gatherer.MoveTo(0, 0);
    gatherer.Finish();
    filter.Finish();
    EXPECT_EQ(notes.text, drawn.expected) << drawn.calls;
  }
}

TEST(ExtentSink, HoldsLinesWithTheirWidthAndImagesAndLeavesOutTheInfinite) {
  ExtentSink extents(2);  // points in a unit
  ShapeGatherer gatherer(extents);
  gatherer.SetLineWidth(static_cast<float>(2 / kPointsPerMillimetre));
  gatherer.MoveTo(10, 20);
  gatherer.LineTo(30, 20);
  gatherer.LineTo(std::numeric_limits<float>::infinity(), 0);
  gatherer.LineTo(0, std::numeric_limits<float>::quiet_NaN());
  gatherer.NewPage();
  DrawImage(gatherer, 10, 100, -2, -3);
  DrawImage(gatherer, 0, 0, 1, 0);  // without an area
  gatherer.NewPage();
  gatherer.Finish();
  ASSERT_EQ(extents.Extents().size(), 3U);
  const std::optional<Box> line = extents.Extents()[0];
  ASSERT_TRUE(line);
  EXPECT_NEAR(line->left, 19, 1e-5);
  EXPECT_NEAR(line->bottom, 39, 1e-5);
  EXPECT_NEAR(line->right, 61, 1e-5);
  EXPECT_NEAR(line->top, 41, 1e-5);
  EXPECT_EQ(extents.Extents()[1], (Box{8, 188, 20, 200}));
  EXPECT_FALSE(extents.Extents()[2]);
}

}  // namespace
}  // namespace orxdrawing
