// What the painter puts on pixels: which, how dark, and that nothing depends on how it was divided.
#include "drawing/PixelPainter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace orxdrawing {
namespace {

constexpr float kMillimetresPerPoint = 25.4F / 72;

// One unit, point and pixel are the same, so widths are given in pixels here.
struct Line {
  std::vector<float> points;
  float width = 1;
  LineCap cap = LineCap::Butt;
};

void DrawLine(ShapeSink& sink, const Line& line, Colour colour = {}) {
  const auto count = static_cast<std::uint32_t>(line.points.size() / 2);
  sink.Draw(
      StrokeShape{{{&count, 1}, line.points}, colour, line.width * kMillimetresPerPoint, line.cap});
}

void DrawArea(ShapeSink& sink, const std::vector<std::vector<float>>& contours, FillRule rule,
              Colour colour = {}) {
  std::vector<std::uint32_t> lengths;
  std::vector<float> points;
  for (const std::vector<float>& contour : contours) {
    lengths.push_back(static_cast<std::uint32_t>(contour.size() / 2));
    points.insert(points.end(), contour.begin(), contour.end());
  }
  sink.Draw(FillShape{{lengths, points}, colour, rule});
}

PaintSettings SettingsFor(int width, int height) {
  PaintSettings settings;
  settings.frame = FrameOfResolution({0, 0, double(width), double(height)}, 1, 72);
  return settings;
}

char LetterOf(const std::uint8_t* pixel) {
  const auto is = [pixel](int red, int green, int blue) {
    return pixel[0] == red && pixel[1] == green && pixel[2] == blue;
  };
  if (is(255, 255, 255)) return '.';
  if (is(0, 0, 0)) return '#';
  if (is(255, 0, 0)) return 'R';
  if (is(0, 255, 0)) return 'G';
  if (is(0, 0, 255)) return 'B';
  // Grey by its darkness in eighths.
  if (pixel[0] == pixel[1] && pixel[0] == pixel[2]) {
    return static_cast<char>('0' + (255 - pixel[0]) * 8 / 256);
  }
  return '?';
}

// Rows from the top: '#' black, '.' white, R G B, 0 to 7 greys.
std::vector<std::string> RowsOf(const PixelCanvas& canvas) {
  const std::size_t channels = canvas.HasOpacity() ? 4 : 3;
  std::vector<std::string> rows;
  for (int y = 0; y < canvas.Height(); ++y) {
    std::string row;
    const auto pixels = canvas.Row(y);
    for (std::size_t i = 0; i < pixels.size(); i += channels) row += LetterOf(&pixels[i]);
    rows.push_back(row);
  }
  return rows;
}

using Rows = std::vector<std::string>;

template <typename Drawing>
Rows Painted(int width, int height, Drawing draw) {
  PixelPainter painter(SettingsFor(width, height));
  draw(painter);
  painter.Finish();
  return RowsOf(painter.Canvas());
}

std::vector<std::uint8_t> BytesOf(const PixelCanvas& canvas) {
  std::vector<std::uint8_t> bytes;
  for (int y = 0; y < canvas.Height(); ++y) {
    bytes.insert(bytes.end(), canvas.Row(y).begin(), canvas.Row(y).end());
  }
  return bytes;
}

TEST(PixelPainter, DrawsLinesWithTheirCapsJoinsAndLeastWidth) {
  struct Case {
    std::string what;
    Line line;
    Rows rows;
  };
  const Rows blank = {"......", "......", "......", "......", "......", "......"};
  const Rows dot = {"......", "......", "..##..", "..##..", "......", "......"};
  const std::vector<Case> cases = {
      {"butt ends where the line ends",
       {{1, 3, 5, 3}, 2},
       {"......", "......", ".####.", ".####.", "......", "......"}},
      {"square caps project",
       {{2, 3, 4, 3}, 2, LineCap::Square},
       {"......", "......", ".####.", ".####.", "......", "......"}},
      {"a hairline is a pixel wide",
       {{1, 3.5F, 5, 3.5F}, 0},
       {"......", "......", ".####.", "......", "......", "......"}},
      {"butt leaves nothing of no length", {{3, 3, 3, 3}, 2}, blank},
      {"a point is no line", {{3, 3}, 2, LineCap::Square}, blank},
      {"square dot", {{3, 3, 3, 3}, 2, LineCap::Square}, dot},
      {"square dot of many points", {{3, 3, 3, 3, 3, 3, 3, 3}, 2, LineCap::Square}, dot},
      {"a mitred corner",
       {{1, 1, 5, 1, 5, 5}, 2},
       {"......", "....##", "....##", "....##", ".#####", ".#####"}},
      {"closed: all corners mitred",
       {{1, 1, 5, 1, 5, 5, 1, 5, 1, 1}, 2},
       {"######", "######", "##..##", "##..##", "######", "######"}},
      {"back on itself there is no cap, and nothing beyond the ends",
       {{1, 3, 5, 3, 1, 3}, 2},
       {"......", "......", ".####.", ".####.", "......", "......"}},
  };
  for (const Case& drawn : cases) {
    EXPECT_EQ(Painted(6, 6, [&](ShapeSink& sink) { DrawLine(sink, drawn.line); }), drawn.rows)
        << drawn.what;
  }
}

TEST(PixelPainter, DrawsARoundDotAndFillsTurnsTighterThanTheLine) {
  const Rows dot = Painted(8, 8, [](ShapeSink& sink) {
    DrawLine(sink, {{4, 4, 4, 4}, 6, LineCap::Round});
  });
  EXPECT_EQ(dot[4], ".7####7.");
  EXPECT_EQ(dot[0], "........");
  EXPECT_EQ(dot[1][1], '0') << "the corner is cut";
  // A circle of radius 2, 8 wide: the inner side turns inside out, but is covered.
  Line circle{{}, 8};
  for (int i = 0; i <= 64; ++i) {
    const double angle = i % 64 * 3.14159265358979 / 32;
    circle.points.push_back(static_cast<float>(8 + 2 * std::cos(angle)));
    circle.points.push_back(static_cast<float>(8 + 2 * std::sin(angle)));
  }
  const Rows disc = Painted(16, 16, [&](ShapeSink& sink) { DrawLine(sink, circle); });
  for (std::size_t y = 5; y < 11; ++y) EXPECT_EQ(disc[y].substr(4, 8), "########") << y;
}

TEST(PixelPainter, DrawsWhatAStrokeRepeatsOnce) {
  const std::vector<float> triangle = {2.3F, 2.3F, 17.6F, 3.1F, 9.2F, 16.4F, 2.3F, 2.3F};
  const std::vector<float> again = {17.6F, 3.1F, 2.3F, 2.3F, 9.2F, 16.4F};
  const auto bytes = [&](const std::vector<std::vector<float>>& lines, LineCap cap) {
    std::vector<std::uint32_t> lengths;
    std::vector<float> points;
    for (const std::vector<float>& line : lines) {
      lengths.push_back(static_cast<std::uint32_t>(line.size() / 2));
      points.insert(points.end(), line.begin(), line.end());
    }
    PixelPainter painter(SettingsFor(20, 20));
    painter.Draw(StrokeShape{{lengths, points}, {}, 1.3F * kMillimetresPerPoint, cap});
    painter.Finish();
    return BytesOf(painter.Canvas());
  };
  const auto largestDifference = [&](const auto& first, const auto& second) {
    int largest = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
      largest = std::max(largest, std::abs(first[i] - second[i]));
    }
    return largest;
  };
  const auto once = bytes({triangle}, LineCap::Square);
  EXPECT_EQ(bytes({triangle, again, triangle}, LineCap::Square), once);
  EXPECT_LE(largestDifference(bytes({{3.3F, 4, 15, 9, 3.3F, 4}}, LineCap::Square),
                              bytes({{3.3F, 4, 15, 9}}, LineCap::Butt)),
            4)
      << "there and back without a cap is as there without one";
  EXPECT_LE(largestDifference(bytes({{3, 3, 15, 3}, {3, 3, 15, 3, 15, 15}}, LineCap::Butt),
                              bytes({{3, 3, 15, 3, 15, 15}}, LineCap::Butt)),
            40)
      << "a line that goes on from what is repeated keeps its join";
}

TEST(PixelPainter, BevelsJoinsBeyondTheLimit) {
  // The spike of a mitre would reach to the right border.
  const Rows sharp = Painted(40, 9, [](ShapeSink& sink) {
    DrawLine(sink, {{0, 5.5F, 10, 4.5F, 0, 3.5F}, 2});
  });
  EXPECT_EQ(sharp[4].substr(12), std::string(28, '.'));
  const Rows blunt = Painted(40, 9, [](ShapeSink& sink) {
    DrawLine(sink, {{0, 7.5F, 10, 4.5F, 0, 1.5F}, 2});
  });
  EXPECT_NE(blunt[4].substr(12, 1), ".");
}

TEST(PixelPainter, FillsByRuleAndPutsUprightRectanglesOnWholePixels) {
  const std::vector<std::vector<float>> nested = {{0, 0, 6, 0, 6, 6, 0, 6},
                                                  {2, 2, 4, 2, 4, 4, 2, 4}};
  const auto middle = [&](FillRule rule) {
    return Painted(6, 6, [&](ShapeSink& sink) { DrawArea(sink, nested, rule); })[3];
  };
  EXPECT_EQ(middle(FillRule::Winding), "######");
  EXPECT_EQ(middle(FillRule::EvenOdd), "##..##");
  const auto row = Painted(8, 8, [](ShapeSink& sink) {
    DrawArea(sink, {{0, 0, 2.4F, 0, 2.4F, 8, 0, 8}}, FillRule::Winding);
    DrawArea(sink, {{2.4F, 8, 2.4F, 0, 5.7F, 0, 5.7F, 8, 2.4F, 8}}, FillRule::Winding);
    DrawArea(sink, {{6.6F, 0, 6.7F, 0, 6.7F, 8, 6.6F, 8}}, FillRule::Winding, {1, 0, 0});
  })[2];
  EXPECT_EQ(row, "######.R");
  const Rows slanted = Painted(2, 2, [](ShapeSink& sink) {
    DrawArea(sink, {{0, 0, 2, 0, 2, 2}}, FillRule::Winding);
  });
  EXPECT_EQ(slanted, (Rows{".4", "4#"})) << "half a pixel is half as dark";
}

TEST(PixelPainter, CutsFarCoordinatesOnTheirSlopeAndLeavesOutWhatIsNotFinite) {
  const Rows far = Painted(8, 8, [](ShapeSink& sink) {
    DrawArea(sink, {{-3e30F, 0, 3e30F, 0, 3e30F, 1, -3e30F, 1}}, FillRule::Winding, {1, 0, 0});
    DrawLine(sink, {{0, 0, 2e9F, 2e9F}});
    DrawLine(sink, {{-3e38F, 6.5F, 3e38F, 6.5F}}, {0, 0, 1});
  });
  EXPECT_EQ(far[7].substr(2), "RRRRRR");
  EXPECT_EQ(far[1], "BBBBBBBB");
  for (std::size_t i = 2; i < 6; ++i) EXPECT_EQ(far[7 - i][i], '7') << i;

  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  PixelPainter painter(SettingsFor(4, 4));
  DrawLine(painter, {{nan, 1, 1, -kInfinity}, nan, LineCap::Round}, {nan, 7, -3});
  DrawArea(painter, {{0, 0, 4, 0, kInfinity, 3, 4, 4, 0, 4}}, FillRule::Winding, {0, 1, 0});
  unsigned char black = 0;
  const ORXPixelImage image(1, 1, ORXPixelImageFormat::Grey8, &black,
                            ORXDeallocatePixels::KeepWithCaller);
  painter.Draw(ImageShape{&image, 0, 0, 0, 1});
  painter.Draw(ImageShape{&image, 0, 0, kInfinity, 1});
  painter.Draw(ImageShape{&image, nan, 0, 1, 1});
  painter.Finish();
  EXPECT_EQ(RowsOf(painter.Canvas())[2], "GGGG");
  EXPECT_EQ(painter.Lost().points, 3U);
  EXPECT_EQ(painter.Lost().images, 3U);
}

// The corners of a picture of 8 x 8 that is covered by an image of 2 x 2 samples or fewer.
struct Sample {
  ORXPixelImageFormat format;
  int width;
  int height;
  std::vector<unsigned char> bytes;
};

Rows PaintedImage(Sample sample, float x, float y, float xSize, float ySize) {
  return Painted(8, 8, [&](ShapeSink& sink) {
    const ORXPixelImage image(sample.width, sample.height, sample.format, sample.bytes.data(),
                              ORXDeallocatePixels::KeepWithCaller);
    sink.Draw(ImageShape{&image, x, y, xSize, ySize});
  });
}

TEST(PixelPainter, PutsTheFirstRowOfAnImageOnTopAndMirrorsByNegativeSizes) {
  using Format = ORXPixelImageFormat;
  struct Layout {
    Sample sample;
    std::string samples;  // top left, top right, bottom left, bottom right
  };
  const std::vector<Layout> layouts = {
      {{Format::Rgb24, 2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}}, "RGB#"},
      {{Format::Cmyk32, 2, 2, {0, 255, 255, 0, 255, 0, 255, 0, 255, 255, 0, 0, 0, 9, 0, 255}},
       "RGB#"},
      {{Format::Grey8, 2, 2, {0, 255, 255, 255}}, "#..."},
      {{Format::Bilevel1, 2, 2, {0b10000000, 0b11000000}}, "#.##"},
  };
  struct Place {
    float x, y, xSize, ySize;
    std::array<std::size_t, 4> order;
  };
  const std::vector<Place> places = {{0, 0, 4, 4, {0, 1, 2, 3}},
                                     {8, 0, -4, 4, {1, 0, 3, 2}},
                                     {0, 8, 4, -4, {2, 3, 0, 1}},
                                     {8, 8, -4, -4, {3, 2, 1, 0}}};
  for (const Layout& layout : layouts) {
    for (const Place& at : places) {
      const Rows rows = PaintedImage(layout.sample, at.x, at.y, at.xSize, at.ySize);
      std::string wanted;
      for (const std::size_t corner : at.order) wanted += layout.samples[corner];
      EXPECT_EQ(rows[0], std::string(4, wanted[0]) + std::string(4, wanted[1]));
      EXPECT_EQ(rows[3], rows[0]) << "edges are sharp";
      EXPECT_EQ(rows[4], std::string(4, wanted[2]) + std::string(4, wanted[3]));
    }
  }
}

TEST(PixelPainter, ShowsTheMeanOfSamplesFinerThanPixels) {
  using Format = ORXPixelImageFormat;
  // Sixteen samples to eight pixels, in 16 rows of which every second one is white.
  Sample bits{Format::Bilevel1, 16, 1, {0b11110000, 0b11001001}};
  EXPECT_EQ(PaintedImage(bits, 0, 0, 0.5F, 8)[4], "##..#.33");
  Sample rows{Format::Grey8, 1, 16, {}};
  for (int i = 0; i < 16; ++i) rows.bytes.push_back(i % 2 == 0 ? 0 : 255);
  const Rows mean = PaintedImage(rows, 0, 0, 8, 0.5F);
  EXPECT_EQ(mean[0], "33333333");
  EXPECT_EQ(mean[7], "33333333");
  // Three samples to two pixels: the middle one counts half for each.
  Sample three{Format::Grey8, 12, 1, {}};
  for (int i = 0; i < 12; ++i) three.bytes.push_back(i % 3 == 1 ? 0 : 255);
  EXPECT_EQ(PaintedImage(three, 0, 0, 8.0F / 12, 8)[0], "22222222");
}

TEST(PixelPainter, PaintsImagesFarLargerThanThePageAndStripsWithoutSeams) {
  const Sample halves{ORXPixelImageFormat::Grey8, 2, 1, {0, 255}};
  EXPECT_EQ(PaintedImage(halves, -4e6F, -4e6F, 4e6F, 8e6F)[5], "........");
  EXPECT_EQ(PaintedImage(halves, -4e6F + 4, -4e6F, 4e6F, 8e6F)[5], "####....");
  const Sample black{ORXPixelImageFormat::Grey8, 1, 1, {0}};
  unsigned char sample = 0;
  const Rows strips = Painted(8, 8, [&](ShapeSink& sink) {
    const ORXPixelImage image(1, 1, ORXPixelImageFormat::Grey8, &sample,
                              ORXDeallocatePixels::KeepWithCaller);
    for (int i = 0; i < 5; ++i) {
      sink.Draw(ImageShape{&image, 0, static_cast<float>(i) * 1.6F, 8, 1.6F});
    }
  });
  EXPECT_EQ(strips, Rows(8, "########"));
}

// A scribble whose outlines have many times the cells that the rasteriser takes at once.
Line Scribble(int points, float width) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> place(0, 300);
  Line line{{}, width};
  for (int i = 0; i < 2 * points; ++i) line.points.push_back(place(random));
  return line;
}

TEST(PixelPainter, PaintsAllOfAStrokeWithMoreCellsThanTheRasteriserTakes) {
  const Rows dense = Painted(300, 300, [](ShapeSink& sink) {
    DrawLine(sink, Scribble(1500, 5), {0, 0, 0});
  });
  for (std::size_t y = 100; y < 200; ++y) {
    EXPECT_EQ(dense[y].substr(100, 100), std::string(100, '#')) << y;
  }
  // Beside it, nothing: a fan of lines to the left of a white half.
  const Rows fan = Painted(400, 40, [](ShapeSink& sink) {
    Line line{{}, 1};
    for (int i = 0; i < 6'000; ++i) {
      line.points.insert(line.points.end(), {1, 20, 199, static_cast<float>(i % 40)});
    }
    DrawLine(sink, line);
  });
  for (const std::string& row : fan) EXPECT_EQ(row.substr(201), std::string(199, '.'));
}

TEST(PixelPainter, GivesTheSamePixelsForAnyNumberOfThreads) {
  const auto bytes = [](unsigned workers) {
    PaintSettings settings = SettingsFor(300, 300);
    settings.workers = workers;
    PixelPainter painter(settings);
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-20, 320);
    for (int i = 0; i < 3000; ++i) {
      const float x = place(random);
      const float y = place(random);
      const float shade = static_cast<float>(i % 10) / 10;
      DrawLine(painter, {{x, y, x + 9, y + 7, x, y + 14}, 1.5F, LineCap::Round}, {shade, 0, 1});
      DrawArea(painter, {{x, y, place(random), place(random), x + 5, y}}, FillRule::EvenOdd,
               {0, shade, 0});
    }
    painter.Finish();
    return BytesOf(painter.Canvas());
  };
  const auto alone = bytes(1);
  EXPECT_EQ(bytes(2), alone);
  EXPECT_EQ(bytes(5), alone);
}

// Turns round and round, its points a few tenths of a pixel apart or less.
Line Spiral(int turn) {
  Line spiral{{}, 1.5F};
  for (int i = 0; i < 3000; ++i) {
    const double angle = i * 0.01;
    const double radius = 3 + i * 0.0004 * turn + turn * 3;
    spiral.points.push_back(static_cast<float>(100 + radius * std::cos(angle)));
    spiral.points.push_back(static_cast<float>(100 + radius * std::sin(angle)));
  }
  return spiral;
}

// A wide line whose end turns again and again within a pixel.
Line Frayed(int seed) {
  std::mt19937 random(static_cast<unsigned>(seed));
  std::uniform_real_distribution<float> place(20, 180);
  std::uniform_real_distribution<float> step(-0.05F, 0.05F);
  Line line{{place(random), place(random), place(random), place(random)}, 7, LineCap::Square};
  for (int i = 0; i < 12; ++i) {
    const std::size_t size = line.points.size();
    line.points.push_back(line.points[size - 2] + step(random));
    line.points.push_back(line.points[size - 1] + step(random));
  }
  return line;
}

TEST(PixelPainter, LeavesOutNoPointThatAnEyeWouldMiss) {
  const auto bytes = [](const Line& line, double thinning) {
    PaintSettings settings = SettingsFor(200, 200);
    settings.thinning = thinning;
    PixelPainter painter(settings);
    DrawLine(painter, line);
    painter.Finish();
    return BytesOf(painter.Canvas());
  };
  for (int i = 0; i < 20; ++i) {
    for (const Line& line : {Spiral(i), Frayed(i)}) {
      const auto thinned = bytes(line, kThinning);
      const auto full = bytes(line, 0);
      int largest = 0;
      for (std::size_t byte = 0; byte < full.size(); ++byte) {
        largest = std::max(largest, std::abs(full[byte] - thinned[byte]));
      }
      EXPECT_LE(largest, 24) << i << ", " << line.width << " wide";
    }
  }
}

TEST(PixelPainter, StopsInTheMiddleOfALine) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(200);
  PaintSettings settings = SettingsFor(2000, 2000);
  settings.mayGoOn = [end] { return Clock::now() < end; };
  PixelPainter painter(settings);
  std::mt19937 random(7);
  std::uniform_real_distribution<float> place(0, 2000);
  Line line{{}, 30};
  for (int i = 0; i < 400'000; ++i) line.points.push_back(place(random));
  DrawLine(painter, line);
  painter.Finish();
  EXPECT_TRUE(painter.HasStopped());
  EXPECT_LT(Clock::now() - end, std::chrono::seconds(1));
}

}  // namespace
}  // namespace orxdrawing
