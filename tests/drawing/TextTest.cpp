// Numbers, escapes, checksums and the lines of the trace.
#include "drawing/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "drawing/TraceGenerator.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {
namespace {

std::string FloatText(float value) {
  std::string text;
  AppendFloat(text, value);
  return text;
}

TEST(FloatText, IsTheShortestThatReadsBack) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const std::vector<std::pair<float, std::string>> cases = {
      {0.0F, "0"},
      {-0.0F, "-0"},
      {3.5277777F, "3.5277777"},
      {0.1F, "0.1"},
      {-25.4F, "-25.4"},
      {16777216.0F, "16777216"},
      {1e10F, "1e+10"},
      {1.17549435e-38F, "1.1754944e-38"},
      {std::numeric_limits<float>::denorm_min(), "1e-45"},
      {kInfinity, "inf"},
      {-kInfinity, "-inf"},
      {std::numeric_limits<float>::quiet_NaN(), "nan"},
      {-std::numeric_limits<float>::quiet_NaN(), "nan"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(FloatText(value), text);
  for (float value = 1e-40F; std::isfinite(value); value *= -1.37F) {
    EXPECT_EQ(std::strtof(FloatText(value).c_str(), nullptr), value);
  }
}

TEST(EscapeForTerminal, LeavesNothingThatATerminalObeys) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"plain \xC3\xA9 \xE2\x82\xAC", "plain \xC3\xA9 \xE2\x82\xAC"},
      {"\x1b[31mred", "\\x1b[31mred"},
      {"a\nb\tc\x7f", "a\\x0ab\\x09c\\x7f"},
      {"\xC2\x9B", "\\u009b"},              // a control character of two bytes
      {"\xE2\x80\xAE", "\\u202e"},          // writes backwards
      {"\xFF\xC3", "\\xff\\xc3"},           // no UTF-8
      {"\xC0\xAF", "\\xc0\\xaf"},           // longer than it need be
      {"\xED\xA0\x80", "\\xed\\xa0\\x80"},  // half of a pair
      {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
  };
  for (const auto& [text, escaped] : cases) EXPECT_EQ(EscapeForTerminal(text), escaped);
}

TEST(QuoteForJson, GivesOneStringWhateverTheBytes) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"a \"b\\c\"", R"("a \"b\\c\"")"},
      {"\x1b\n\x7f\xC2\x9B", R"("\u001b\u000a\u007f\u009b")"},
      {"\xC3\xA9\xFF", "\"\xC3\xA9\xEF\xBF\xBD\""},
  };
  for (const auto& [text, quoted] : cases) EXPECT_EQ(QuoteForJson(text), quoted);
}

TEST(TraceGenerator, WritesEveryCallAsOneLine) {
  std::string text;
  TraceGenerator trace(TraceGenerator::Samples::Written,
                       [&text](std::string_view piece) { text += piece; });
  int counts[] = {2, 1};
  float points[] = {0, 0, 3.5277777F, 0, -1, 0.5F};
  unsigned char samples[] = {0x12, 0xAB};
  ORXPixelImage image(2, 1, ORXPixelImageFormat::Grey8, samples,
                      ORXDeallocatePixels::KeepWithCaller);
  image.SetXPixelSize(0.5F);
  image.SetYPixelSize(-2);
  trace.NewPage();
  trace.DefineColor(255, 1, 0.5F, 0);
  trace.SetLineColor(255);
  trace.SetLineCap(10);
  trace.SetLineWidth(0.1F);
  trace.MoveTo(-0.0F, 10);
  trace.LineTo(1, 2);
  trace.SetFillColor(255);
  trace.SetFillRule(1);
  trace.FillArea(2, counts, points);
  trace.DrawImage(10, 20, 0, &image);
  trace.Report("low\x1b");
  trace.Flush();
  EXPECT_EQ(text,
            "NewPage()\nDefineColor(255, 1, 0.5, 0)\nSetLineColor(255)\nSetLineCap(10)\n"
            "SetLineWidth(0.1)\nMoveTo(-0, 10)\nLineTo(1, 2)\nSetFillColor(255)\nSetFillRule(1)\n"
            "FillArea(2, [2, 1], [0, 0, 3.5277777, 0, -1, 0.5])\n"
            "DrawImage(10, 20, 0, {width: 2, height: 1, format: 0, xPixelSize: 0.5, "
            "yPixelSize: -2, bytes: 2, crc32: 7829184c, samples: 12ab})\n"
            "report: low\\x1b\n");
}

TEST(Shortened, CutsBetweenCharacters) {
  EXPECT_EQ(Shortened("abc", 3), "abc");
  EXPECT_EQ(Shortened("abcd", 3), "abc");
  EXPECT_EQ(Shortened("a\xE2\x82\xAC", 3), "a");
  EXPECT_EQ(Shortened("\xC3\xA9\xC3\xA9", 2), "\xC3\xA9");
  EXPECT_EQ(Shortened(std::string(9, '\x80'), 7).size(), 4U) << "no text at all";
}

TEST(TraceGenerator, WritesTheWantedCallsAsJsonWithTheirOrigin) {
  std::string text;
  std::optional<TraceOrigin> origin;
  TraceGenerator::Settings settings{TraceGenerator::Samples::Written, TraceGenerator::Form::Json,
                                    kAllTraceCalls & ~(1U << 2), [&origin] { return origin; }};
  TraceGenerator trace(settings, [&text](std::string_view piece) { text += piece; });
  unsigned char samples[] = {0xAB, 0x12};
  ORXPixelImage image(1, 2, ORXPixelImageFormat::Grey8, samples,
                      ORXDeallocatePixels::KeepWithCaller);
  image.InvertLineProgression();
  trace.BeginDocument("\"a\\\n");
  trace.MoveTo(1, std::numeric_limits<float>::quiet_NaN());
  trace.LineTo(1, 2);  // not wanted
  trace.NewPage();
  origin = TraceOrigin{{3, 40}, {}};
  trace.SetLineCap(10);
  origin->procedure = TracePlace{2, 9};
  trace.DrawImage(0, -std::numeric_limits<float>::infinity(), 0, &image);
  trace.NextPass(7);
  trace.Report("low");
  trace.Flush();
  EXPECT_EQ(text, R"({"file": "\"a\\\u000a"}
{"page": 1, "call": "MoveTo", "arguments": [1, "nan"]}
{"page": 2, "call": "NewPage", "arguments": []}
{"page": 2, "call": "SetLineCap", "arguments": [10], "line": 3, "byte": 40}
{"page": 2, "call": "DrawImage", "arguments": [0, "-inf", 0, {"width": 1, "height": 2, "format": 0, )"
                  R"("xPixelSize": 1, "yPixelSize": 1, "bytes": 2, "crc32": "7829184c", )"
                  R"("samples": "12ab", "rows": "up"}], "line": 3, "byte": 40, )"
                  R"("procedure": {"line": 2, "byte": 9}}
{"page": 7, "call": "NewPage", "arguments": []}
{"report": "low"}
)");
}

}  // namespace
}  // namespace orxdrawing
