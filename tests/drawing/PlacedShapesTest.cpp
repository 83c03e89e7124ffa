// The place that each shape is said to come from, and what pages sum up to.
#include "drawing/PlacedShapes.h"

#include <gtest/gtest.h>

#include <string>

#include "drawing/PageSummary.h"
#include "drawing/Picking.h"

namespace orxdrawing {
namespace {

// Shapes as letters with page and place: "s1@7" is a stroke on page 1 from byte 7.
class Letters final : public PlacedSink {
public:
  void Draw(const StrokeShape&) override { Add('s'); }
  void Draw(const FillShape&) override { Add('f'); }
  void Draw(const ImageShape&) override { Add('i'); }

  std::string text;

private:
  void Add(char kind) {
    text += kind + std::to_string(Page()) + "@" + std::to_string(Place().token) + " ";
  }
};

TEST(PlacedShapes, StrokesComeFromWhereTheyBeganWheneverTheyAreHandedOn) {
  Letters letters;
  std::uint64_t now = 0;
  PlaceTeller teller(letters, letters, [&now] { return ORXPlace{now, ORXPlace::kNone}; });
  PlacedGatherer gatherer(teller);
  int count = 3;
  float points[6] = {0, 0, 1, 0, 1, 1};
  now = 1;
  gatherer.SetLineWidth(1);
  gatherer.MoveTo(0, 0);
  gatherer.LineTo(1, 1);
  now = 2;
  gatherer.FillArea(1, &count, points);  // ends the stroke
  now = 3;
  gatherer.LineTo(0, 0);  // begins one
  gatherer.MoveTo(5, 5);
  now = 4;
  gatherer.NewPage();
  now = 5;
  gatherer.SetLineCap(10);
  gatherer.MoveTo(0, 0);
  now = 6;
  gatherer.Finish();
  EXPECT_EQ(letters.text, "s1@1 f1@2 s1@3 s2@5 ");
}

TEST(PageSummary, CountsManyDifferentThingsTogether) {
  PageSummarySink sink(1);
  sink.BeginPage(3);
  const std::uint32_t length = 2;
  const float points[4] = {0, 0, 1, 1};
  for (int i = 0; i < 1500; ++i) {
    const auto width = static_cast<float>(i);
    sink.Draw(StrokeShape{{{&length, 1}, points}, {width / 1500, 2, -1}, width, LineCap::Butt});
  }
  sink.NextPage();
  ASSERT_EQ(sink.Pages().size(), 2U);
  const PageSummary& page = sink.Pages()[0];
  EXPECT_EQ(page.page, 3U);
  EXPECT_EQ(page.strokes, 1500U);
  EXPECT_EQ(page.points, 3000U);
  EXPECT_EQ(page.widths.Counts().size(), Tally<float>::kMost);
  EXPECT_EQ(page.widths.Others(), 500U);
  EXPECT_EQ(page.colours.Counts().size(), 256U);
  EXPECT_EQ(page.colours.Counts().begin()->first, "#00ff00") << "components are cut off";
  EXPECT_EQ(sink.Pages()[1].page, 4U);
  EXPECT_FALSE(sink.Pages()[1].extent);
}

TEST(Picking, KeepsWhatWasDrawnLast) {
  PickingSink sink({0, 0}, 1, kPointsPerMillimetre);
  const std::uint32_t length = 2;
  for (std::size_t i = 0; i < PickingSink::kMost + 3; ++i) {
    sink.SetPlace({i, ORXPlace::kNone});
    const float x = i == 1 ? 100 : 0;  // one is far away
    const float points[4] = {x, 0, x, 5};
    sink.Draw(StrokeShape{{{&length, 1}, points}, {}, 0, LineCap::Butt});
  }
  EXPECT_EQ(sink.LeftOut(), 2U);
  EXPECT_EQ(sink.Found().front().place.token, 3U);
  EXPECT_EQ(sink.Found().back().place.token, PickingSink::kMost + 2);
}

}  // namespace
}  // namespace orxdrawing
