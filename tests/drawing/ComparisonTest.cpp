// What tells two drawings apart.
#include "drawing/Comparison.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "drawing/ComparisonPicture.h"

namespace orxdrawing {
namespace {

using Points = std::vector<float>;

struct Pen {
  Colour colour;
  float width = 1;
  LineCap cap = LineCap::Butt;
};

// A drawing in millimetres.
class Sketch {
public:
  Sketch& Stroke(const Points& points, const Pen& pen = {}) {
    const auto length = static_cast<std::uint32_t>(points.size() / 2);
    list.Draw(StrokeShape{{{&length, 1}, points}, pen.colour, pen.width, pen.cap});
    return *this;
  }
  Sketch& Fill(const Points& points, FillRule rule = FillRule::Winding) {
    const auto length = static_cast<std::uint32_t>(points.size() / 2);
    list.Draw(FillShape{{{&length, 1}, points}, {}, rule});
    return *this;
  }
  Sketch& Image(float x, unsigned char sample) {
    const ORXPixelImage image(1, 1, ORXPixelImageFormat::Grey8, &sample,
                              ORXDeallocatePixels::KeepWithCaller);
    list.Draw(ImageShape{&image, x, 0, 1, 1});
    return *this;
  }
  Sketch& Page() {
    list.NextPage();
    return *this;
  }

  ShapeList list{kPointsPerMillimetre};
};

// "+1" for an added shape, "-0" for a removed one, "0>1:pc" for a changed one with letters for
// place, (out)line, colour, width, style, samples and order.
std::string Differences(const Sketch& before, const Sketch& after, double tolerance = 0.001) {
  std::string text;
  for (const Difference& difference : Compare(before.list, after.list, tolerance)) {
    if (!text.empty()) text += ' ';
    if (!difference.before) {
      text += "+" + std::to_string(*difference.after);
    } else if (!difference.after) {
      text += "-" + std::to_string(*difference.before);
    } else {
      text += std::to_string(*difference.before) + ">" + std::to_string(*difference.after) + ":";
      for (int bit = 0; bit < 7; ++bit) {
        if ((difference.what >> bit & 1) != 0) text += "plcwsio"[bit];
      }
    }
  }
  return text;
}

const Points kLine = {0, 0, 10, 0};
const Points kBend = {0, 0, 10, 0, 10, 10};

TEST(Comparison, FindsWhatWasAddedRemovedAndChanged) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const struct {
    std::string what;
    std::function<void(Sketch&)> before;
    std::function<void(Sketch&)> after;
    std::string expected;
  } kTable[] = {
      {"the same", [](Sketch& s) { s.Stroke(kLine).Fill(kBend).Image(0, 7); },
       [](Sketch& s) { s.Stroke(kLine).Fill(kBend).Image(0, 7); }, ""},
      {"nothing", [](Sketch&) {}, [](Sketch&) {}, ""},
      {"added", [](Sketch& s) { s.Stroke(kLine); },
       [](Sketch& s) { s.Stroke(kBend).Stroke(kLine); }, "+0"},
      {"removed", [](Sketch& s) { s.Stroke(kLine).Stroke(kLine).Stroke(kBend); },
       [](Sketch& s) { s.Stroke(kLine).Stroke(kBend); }, "-1"},
      {"another kind", [](Sketch& s) { s.Stroke(kBend); }, [](Sketch& s) { s.Fill(kBend); },
       "+0 -0"},
      {"moved",
       [](Sketch& s) {
         s.Stroke({0, 0, 10, 0});
       },
       [](Sketch& s) {
         s.Stroke({5, -1, 15, -1});
       },
       "0>0:p"},
      {"another outline",
       [](Sketch& s) {
         s.Stroke({0, 0, 10, 0});
       },
       [](Sketch& s) {
         s.Stroke({0, 0, 10, 1});
       },
       "0>0:l"},
      {"attributes", [](Sketch& s) { s.Stroke(kLine); },
       [](Sketch& s) {
         s.Stroke(kLine, {{1, 0, 0}, 2, LineCap::Round});
       },
       "0>0:cws"},
      {"the rule", [](Sketch& s) { s.Fill(kBend); },
       [](Sketch& s) { s.Fill(kBend, FillRule::EvenOdd); }, "0>0:s"},
      {"samples", [](Sketch& s) { s.Image(0, 7); }, [](Sketch& s) { s.Image(0, 8); }, "0>0:i"},
      {"within the tolerance",
       [](Sketch& s) {
         s.Stroke({0, 0, 10, 0});
       },
       [](Sketch& s) {
         s.Stroke({0.0009F, 0, 10, -0.0009F}, {{}, 1.0009F});
       },
       ""},
      {"negative zero",
       [](Sketch& s) {
         s.Stroke({0, 0, 1, 1});
       },
       [](Sketch& s) {
         s.Stroke({-0.0F, 0, 1, 1});
       },
       ""},
      {"not finite",
       [nan](Sketch& s) {
         s.Stroke({nan, 0, 1, 1});
       },
       [nan](Sketch& s) {
         s.Stroke({nan, 0, 1, 1});
       },
       ""},
      {"no longer finite", [](Sketch& s) { s.Stroke(kLine); },
       [nan](Sketch& s) {
         s.Stroke({0, 0, nan, 0});
       },
       "0>0:l"},
      {"the order", [](Sketch& s) { s.Stroke(kLine).Stroke(kBend).Fill(kBend); },
       [](Sketch& s) { s.Fill(kBend).Stroke(kLine).Stroke(kBend); }, "2>0:o"},
      {"on another page", [](Sketch& s) { s.Stroke(kLine).Page().Stroke(kBend); },
       [](Sketch& s) { s.Page().Stroke(kLine).Stroke(kBend); }, "-0 +0"},
      {"a page more", [](Sketch& s) { s.Stroke(kLine); },
       [](Sketch& s) { s.Stroke(kLine).Page().Fill(kBend); }, "+1"},
  };
  for (const auto& row : kTable) {
    Sketch before;
    Sketch after;
    row.before(before);
    row.after(after);
    EXPECT_EQ(Differences(before, after), row.expected) << row.what;
  }
}

TEST(Comparison, TakesTimeThatGrowsWithTheNumberOfShapes) {
  Sketch before;
  Sketch after;
  for (int i = 0; i < 100'000; ++i) {
    const auto place = static_cast<float>(i);
    before.Stroke({place, 0, place, 1});
    after.Stroke({place + 0.5F, 0, place + 0.5F, 1});
  }
  EXPECT_EQ(Compare(before.list, after.list, 0.001).size(), 100'000U);
}

// Draws the colours of what it is given as letters: r and b for the two colours, g for grey.
class Colours final : public ShapeSink {
public:
  void NextPage() override {}
  void Draw(const StrokeShape& stroke) override { Add('s', stroke.colour); }
  void Draw(const FillShape& fill) override { Add('f', fill.colour); }
  void Draw(const ImageShape&) override { text += "i "; }

  std::string text;

private:
  void Add(char kind, const Colour& colour) {
    text += kind;
    text += colour == kColourBefore ? 'r' : colour == kColourAfter ? 'b' : 'g';
    text += ' ';
  }
};

TEST(Comparison, ShowsADifferenceAboveAllThatIsTheSame) {
  Sketch before;
  Sketch after;
  before.Fill(kBend).Stroke(kLine).Image(0, 7).Page().Stroke(kLine);
  after.Fill(kBend).Stroke(kLine, {{0, 1, 0}, 1}).Image(3, 7).Page().Stroke(kBend);
  const std::vector<Difference> differences = Compare(before.list, after.list, 0);
  const std::vector<std::string> expected = {"fg sr sr sb sb ", "sr sb "};
  for (std::uint32_t page = 1; page <= 2; ++page) {
    Colours colours;
    DrawComparison(colours, before.list, after.list, differences, page);
    EXPECT_EQ(colours.text, expected[page - 1]);
  }
}

}  // namespace
}  // namespace orxdrawing
