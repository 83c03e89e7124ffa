// What SVG and PDF say of shapes: numbers, paths, runs, images.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/Base64.h"
#include "drawing/Decimals.h"
#include "drawing/PdfContent.h"
#include "drawing/SvgPicture.h"

namespace orxdrawing {
namespace {

constexpr float kMillimetre = 25.4F / 72;  // one point

ByteSink AppendTo(std::string& text) {
  return [&text](std::string_view bytes) { text += bytes; };
}

TEST(DecimalPoints, FindsTheDocumentsOwnNumbers) {
  const DecimalPoints points(kPointsPerMillimetre);
  struct Case {
    float millimetres;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {10 * kMillimetre, "10"},
      {static_cast<float>(-0.25 / kPointsPerMillimetre), "-.25"},
      {static_cast<float>(123.456 / kPointsPerMillimetre), "123.456"},
      {static_cast<float>(1000 / kPointsPerMillimetre), "1000"},
      {0, "0"},
      {-0.0F, "0"},
  };
  for (const Case& number : cases) {
    EXPECT_EQ(DecimalText(points.Of(number.millimetres)).View(), number.expected);
  }
  EXPECT_FALSE(points.Of(1e-12F).isExact);
  EXPECT_FALSE(points.Of(1e30F).isExact);
}

TEST(DecimalPoints, KeepsEveryFloatInBothForms) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> exponent(-60, 60);
  const DecimalPoints points(kPointsPerMillimetre);
  for (int i = 0; i < 2'000; ++i) {
    const float value = std::exp2(exponent(random)) * (i % 2 == 0 ? 1.0F : -1.0F);
    for (const NumberForm form : {NumberForm::Free, NumberForm::Plain}) {
      std::string text;
      TextBuffer buffer(AppendTo(text));
      points.Add(buffer, value, form);
      buffer.Flush();
      ASSERT_EQ(static_cast<float>(std::stod(text) / kPointsPerMillimetre), value) << text;
      if (form == NumberForm::Plain) {
        EXPECT_EQ(text.find_first_not_of("-.0123456789"), text.npos);
      }
    }
  }
}

// Draws on a page of 100 x 50 points whose units are points.
template <typename Work>
std::string SvgOf(Work draw, PictureLosses* lost = nullptr) {
  std::string text;
  SvgPicture picture({1, MakeZlibDeflater, [] { return true; }}, AppendTo(text));
  draw(picture.BeginPage({{10, 20, 110, 70}, ""}));
  picture.Finish();
  if (lost) *lost = picture.Lost();
  const std::size_t start = text.find("miterlimit=\"10\">\n") + 17;
  return text.substr(start, text.find("</g>\n</svg>\n") - start);
}

StrokeShape Stroke(const std::vector<std::uint32_t>& lengths, const std::vector<float>& points) {
  return {{lengths, points}, {}, kMillimetre, LineCap::Butt};
}

TEST(SvgPicture, SaysWhereThePageLies) {
  std::string text;
  SvgPicture picture({1, MakeZlibDeflater, [] { return true; }}, AppendTo(text));
  picture.BeginPage({{0, -1.5, 468.350023, 98.6}, ""});
  picture.Finish();
  EXPECT_NE(text.find("width=\"468.350023pt\" height=\"100.1pt\" viewBox=\"0 0 468.350023 100.1\""),
            text.npos)
      << text;
  EXPECT_NE(text.find("matrix(1 0 0 -1 0 98.6)"), text.npos) << text;
}

TEST(SvgPicture, WritesContoursAsShortAsTheyAre) {
  struct Case {
    std::vector<std::uint32_t> lengths;
    std::vector<float> points;
    std::string path;
  };
  const std::vector<Case> cases = {
      {{2}, {1, 2, 4, -2}, "M1 2l3-4"},
      {{3}, {1, 2, 1.5F, 2.5F, 2, 3.25F}, "M1 2l.5.5.5.75"},
      {{3}, {1, 2, 5, 2, 5, 9}, "M1 2h4v7"},
      {{4}, {0, 0, 4, 0, 4, 4, 0, 0}, "M0 0h4v4Z"},
      {{2, 2}, {0, 0, 1, 1, -5, 0, 5, 0}, "M0 0l1 1M-5 0h10"},
      {{1}, {3, 3}, ""},
  };
  for (const Case& contour : cases) {
    const std::string drawn =
        SvgOf([&](ShapeSink& page) { page.Draw(Stroke(contour.lengths, contour.points)); });
    EXPECT_EQ(drawn, "<path fill=\"none\" stroke=\"#000\" stroke-width=\"1\" d=\"" + contour.path +
                         "\"/>\n");
  }
}

TEST(SvgPicture, GathersRunsOfEqualAttributes) {
  const std::vector<std::uint32_t> lengths = {2};
  const std::vector<std::uint32_t> three = {3};
  const std::vector<float> points = {0, 0, 1, 1, 2, 0};
  const auto drawn = SvgOf([&](ShapeSink& page) {
    StrokeShape stroke = Stroke(lengths, points);
    page.Draw(stroke);
    page.Draw(stroke);
    stroke.colour = {1, 0, 0.5F};
    stroke.cap = LineCap::Round;
    page.Draw(stroke);
    page.Draw(FillShape{{three, points}, {0, 0.2F, 1}, FillRule::EvenOdd});
    page.Draw(FillShape{{three, points}, {0, 0.2F, 1}, FillRule::EvenOdd});
  });
  EXPECT_EQ(drawn,
            "<path fill=\"none\" stroke=\"#000\" stroke-width=\"1\" d=\"M0 0l1 1M0 0l1 1\"/>\n"
            "<path fill=\"none\" stroke=\"rgb(100%,0%,50%)\" stroke-width=\"1\" "
            "stroke-linecap=\"round\" d=\"M0 0l1 1\"/>\n"
            "<g fill=\"#03f\" fill-rule=\"evenodd\">\n"
            "<path d=\"M0 0l1 1 1-1\"/>\n<path d=\"M0 0l1 1 1-1\"/>\n</g>\n");
}

TEST(SvgPicture, FillsAndStrokesOnePathAtOnce) {
  const std::vector<std::uint32_t> lengths = {4};
  const std::vector<float> points = {0, 0, 4, 0, 4, 4, 0, 0};
  const FillShape fill{{lengths, points}, {1, 1, 0}, FillRule::Winding};
  const auto drawn = SvgOf([&](ShapeSink& page) {
    for (int i = 0; i < 2; ++i) {
      page.Draw(fill);
      page.Draw(Stroke(lengths, points));
    }
    page.Draw(fill);
  });
  EXPECT_EQ(drawn,
            "<g fill=\"#ff0\" stroke=\"#000\" stroke-width=\"1\">\n"
            "<path d=\"M0 0h4v4Z\"/>\n<path d=\"M0 0h4v4Z\"/>\n</g>\n"
            "<g fill=\"#ff0\">\n<path d=\"M0 0h4v4\"/>\n</g>\n");
}

TEST(SvgPicture, LeavesOutWhatIsNotFiniteAndCutsWhatIsFar) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const std::vector<std::uint32_t> lengths = {4};
  const std::vector<float> points = {0, 0, kInfinity, 1, 1, std::nanf(""), 3e7F, 3e7F};
  PictureLosses lost;
  const std::string drawn =
      SvgOf([&](ShapeSink& page) { page.Draw(Stroke(lengths, points)); }, &lost);
  EXPECT_NE(drawn.find("M0 0l2000070 2000070\""), drawn.npos) << drawn;
  EXPECT_EQ(lost.points, 2U);
}

TEST(SvgPicture, DrawsWhatCanBeSeenOfAnImageThatReachesFar) {
  constexpr int kSide = 3;
  unsigned char samples[kSide * kSide] = {0, 0, 0, 0, 51, 102, 0, 0, 0};
  const ORXPixelImage image(kSide, kSide, ORXPixelImageFormat::Grey8, samples,
                            ORXDeallocatePixels::KeepWithCaller);
  // The page from (10, 20) to (110, 70) lies on the middle row, across the last two columns.
  const ImageShape shape{&image, -4e6F + 60, -3e6F, 2e6F, 2e6F};
  EXPECT_EQ(SvgOf([&](ShapeSink& page) { page.Draw(shape); }),
            "<g fill=\"#333\">\n<path d=\"M10 20h50v50h-50\"/>\n</g>\n"
            "<g fill=\"#666\">\n<path d=\"M60 20h50v50h-50\"/>\n</g>\n");
}

TEST(Base64Encoder, GivesTheSameTextHoweverTheBytesAreCut) {
  for (const auto& [bytes, text] : std::vector<std::pair<std::string, std::string>>{
           {"", ""}, {"M", "TQ=="}, {"Ma", "TWE="}, {"Man", "TWFu"}, {"Man!", "TWFuIQ=="}}) {
    Base64Encoder whole;
    std::string atOnce = whole.Add(bytes);
    atOnce += whole.Finish();
    EXPECT_EQ(atOnce, text);
    Base64Encoder cut;
    std::string gathered;
    for (const char byte : bytes) gathered += cut.Add({&byte, 1});
    EXPECT_EQ(gathered + cut.Finish(), text);
  }
}

// What the drawing adds to a content whose units are points.
template <typename Work>
std::string ContentOf(Work draw) {
  std::string drawn;
  TextBuffer text(AppendTo(drawn));
  PdfContent content(text, {0, 0, 100, 100}, 1);
  draw(content);
  content.Flush();
  text.Flush();
  return drawn;
}

TEST(PdfContent, TellsAttributesWhenTheyChangeAndRectanglesAsSuch) {
  const std::vector<std::uint32_t> two = {2};
  const std::vector<std::uint32_t> five = {5};
  const std::vector<float> line = {0, 0, -1.5F, 1.00004F, 2, 1.0004F};
  const std::vector<float> alongX = {1, 2, 4, 2, 4, 6, 1, 6, 1, 2};
  const std::vector<float> alongY = {1, 2, 1, 6, 4, 6, 4, 2, 1, 2};
  const std::string drawn = ContentOf([&](PdfContent& content) {
    content.Draw(Stroke(two, {line.data(), line.data() + 4}));
    content.Draw(Stroke(two, {line.data() + 2, line.data() + 6}));
    content.Draw(Stroke(five, alongX));
    content.Draw(FillShape{{five, alongX}, {1, 0, 0}, FillRule::Winding});
    content.Draw(FillShape{{five, alongY}, {1, 0, 0}, FillRule::EvenOdd});
  });
  EXPECT_EQ(drawn,
            "0 G\n1 w\n0 J\n0 0 m\n-1.5 1 l\n-1.5 1 m\n2 1.0004 l\n1 2 3 4 re\nS\n"
            "1 0 0 rg\n1 2 3 4 re\nf\n1 6 3 -4 re\nf*\n");
}

TEST(PdfContent, FillsAndStrokesOnePathAtOnce) {
  const std::vector<std::uint32_t> three = {3};
  const std::vector<std::uint32_t> four = {4};
  const std::vector<float> open = {0, 0, 9, 0, 9, 9};
  const std::vector<float> closed = {0, 0, 9, 0, 9, 9, 0, 0};
  const std::vector<float> other = {0, 0, 9, 0, 9, 8};
  const FillShape fill{{three, open}, {1, 0, 0}, FillRule::EvenOdd};
  const std::string prefix = "1 0 0 rg\n";
  const std::string style = "0 G\n1 w\n0 J\n";
  const std::string path = "0 0 m\n9 0 l\n9 9 l\n";
  struct Case {
    StrokeShape stroke;
    std::string expected;
  };
  for (const Case& edge : {
           Case{Stroke(three, open), prefix + style + path + "B*\n"},
           Case{Stroke(four, closed), prefix + style + path + "h\nB*\n"},
           Case{Stroke(three, other), prefix + path + "f*\n" + style + "0 0 m\n9 0 l\n9 8 l\nS\n"},
       }) {
    EXPECT_EQ(ContentOf([&](PdfContent& content) {
                content.Draw(fill);
                content.Draw(edge.stroke);
              }),
              edge.expected);
  }
}

// The eleven points of a curve behind the point where it begins.
std::vector<float> CurveFrom(const std::vector<float>& ends) {
  std::vector<float> points = {ends[0], ends[1]};
  for (int step = 0; step <= 10; ++step) {
    const double t = step / 10.0;
    for (std::size_t axis = 0; axis < 2; ++axis) {
      points.push_back(static_cast<float>(
          (1 - t) * (1 - t) * (1 - t) * ends[axis] + 3 * t * (1 - t) * (1 - t) * ends[axis + 2] +
          3 * t * t * (1 - t) * ends[axis + 4] + t * t * t * ends[axis + 6]));
    }
  }
  return points;
}

TEST(PdfContent, MakesACurveOfChordsThatCannotBeToldFromIt) {
  const std::vector<std::uint32_t> length = {12};
  const auto contentOf = [&](const std::vector<float>& points, float width = 1) {
    return ContentOf([&](PdfContent& content) {
      StrokeShape stroke = Stroke(length, points);
      stroke.width *= width;
      content.Draw(stroke);
    });
  };
  const std::vector<float> small = CurveFrom({10, 10, 12.5F, 10, 15, 11.25F, 15, 13});
  EXPECT_EQ(contentOf(small), "0 G\n1 w\n0 J\n10 10 m\n12.5 10 15 11.25 15 13 c\nS\n");

  const auto steps = [&](const std::vector<float>& points) {
    const std::string content = contentOf(points);
    EXPECT_EQ(content.find(" c\n"), content.npos);
    return std::count(content.begin(), content.end(), 'l');
  };
  EXPECT_EQ(steps(CurveFrom({10, 10, 60, 10, 90, 50, 90, 90})), 10) << "its chords can be seen";
  std::vector<float> bent = small;
  bent[12] += 0.01F;
  EXPECT_EQ(steps(bent), 10) << "not of a curve";
  const std::vector<float> turn = CurveFrom({10, 10, 10.6F, 10.8F, 9.4F, 10.8F, 10, 10});
  EXPECT_NE(contentOf(turn, 0.2F).find("10.6 10.8 9.4 10.8 10 10 c\nh\nS\n"), std::string::npos)
      << "a curve may close a contour";
  EXPECT_EQ(contentOf(turn).find(" c\n"), std::string::npos) << "its joins can be seen";
}

TEST(PdfContent, KeepsWhatShortStepsOfWideLinesDoToThem) {
  const std::vector<std::uint32_t> length = {3};
  const auto pathOf = [&](const std::vector<float>& points, float width, LineCap cap) {
    const std::string content = ContentOf([&](PdfContent& to) {
      StrokeShape stroke = Stroke(length, points);
      stroke.width *= width;
      stroke.cap = cap;
      to.Draw(stroke);
    });
    return content.substr(content.find("J\n") + 2);
  };
  const std::vector<float> hook = {5, 5, 9.123456F, 5, 9.123456F, 5.012348F};
  EXPECT_EQ(pathOf(hook, 0.1F, LineCap::Butt), "5 5 m\n9.123 5 l\n9.123 5.012 l\nS\n");
  EXPECT_EQ(pathOf(hook, 10, LineCap::Butt), "5 5 m\n9.12346 5 l\n9.12346 5.01235 l\nS\n");
  const std::vector<float> rounding = {5, 5, 9.123456F, 5, 9.123456F, 5.000345F};
  EXPECT_EQ(pathOf(rounding, 10, LineCap::Butt), "5 5 m\n9.123 5 l\n9.123 5 l\nS\n");
  const std::vector<float> dot = {5, 5, 5, 5, 5, 5};
  EXPECT_EQ(pathOf(dot, 10, LineCap::Square), "5 5 m\n5.001 5 l\nS\n") << "has a direction";
}

}  // namespace
}  // namespace orxdrawing
