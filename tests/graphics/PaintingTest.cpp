// What painting sends to the generator, and the attributes that it sends.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/support/Interpretation.h"
#include "tests/support/ScopedUnits.h"

namespace orxtests {
namespace {

constexpr const char* kBlackStroke =
    "DefineColor(255, 0, 0, 0)\nSetLineColor(255)\nSetLineCap(0)\nSetLineWidth(0.1)\n";
constexpr const char* kBlackFill = "DefineColor(255, 0, 0, 0)\nSetFillColor(255)\n";

TEST(Painting, SendsMillimetres) {
  Interpretation interpretation(
      "0 0 moveto 10 0 lineto 10 10 lineto closepath stroke currentpoint");
  EXPECT_EQ(interpretation.Draw(),
            std::string(kBlackStroke) +
                "MoveTo(0, 0)\nLineTo(3.5277777, 0)\nLineTo(3.5277777, 3.5277777)\nLineTo(0, 0)\n");
  EXPECT_EQ(interpretation.Path(), "");
  EXPECT_EQ(interpretation.Stack(), "0.0 0.0");
}

TEST(Painting, SendsPointsWhenTheEnvironmentSaysSoButWidthsInMillimetres) {
  const ScopedPoints points;
  EXPECT_EQ(CallsOf("2 setlinewidth 10 0 moveto 10.5 20 lineto stroke"),
            "DefineColor(255, 0, 0, 0)\nSetLineColor(255)\nSetLineCap(0)\n"
            "SetLineWidth(0.70555556)\nMoveTo(10, 0)\nLineTo(10.5, 20)\n");
  EXPECT_EQ(CallsOf("stroke"),
            "DefineColor(255, 0, 0, 0)\nSetLineColor(255)\nSetLineCap(0)\n"
            "SetLineWidth(0.035277776)\n");
  EXPECT_EQ(StackAfter("2 setlinewidth currentlinewidth"), "2.0");
}

TEST(Painting, OnlyTheSingleCharacterZeroChoosesPoints) {
  for (const char* value : {"", "1", "00", "0 ", "-0"}) {
    const ScopedUnits units(value);
    Interpretation interpretation("");
    EXPECT_EQ(interpretation.Get().canvas.unitScale, 0.35277778F) << value;
  }
  const ScopedUnits units("0");
  Interpretation interpretation("");
  EXPECT_EQ(interpretation.Get().canvas.unitScale, 1.0F);
}

TEST(Painting, SendsWholeContoursWithTheirRule) {
  const ScopedPoints points;
  const std::string twoContours =
      "0 0 moveto 4 0 lineto 4 4 lineto closepath 1 1 moveto 2 1 lineto 2 2 lineto ";
  const std::string area = "FillArea(2, [4, 3], [0, 0, 4, 0, 4, 4, 0, 0, 1, 1, 2, 1, 2, 2])\n";
  EXPECT_EQ(CallsOf(twoContours + "fill"), kBlackFill + ("SetFillRule(1)\n" + area));
  EXPECT_EQ(CallsOf(twoContours + "eofill fill"),
            kBlackFill + ("SetFillRule(0)\n" + area) + kBlackFill);
  EXPECT_EQ(CallsOf("newpath 5 5 lineto 10 5 lineto 7 7 moveto 8 8 moveto fill"),
            kBlackFill + std::string("SetFillRule(1)\n") +
                "FillArea(3, [2, 1, 1], [5, 5, 10, 5, 7, 7, 8, 8])\n");
  EXPECT_EQ(CallsOf("fill stroke"),
            std::string(kBlackFill) + "DefineColor(255, 0, 0, 0)\n" +
                "SetLineColor(255)\nSetLineCap(0)\nSetLineWidth(0.035277776)\n");
}

TEST(Painting, WithoutAGeneratorKeepsThePath) {
  const ScopedPoints points;
  Interpretation interpretation("0 0 moveto 1 0 lineto stroke 5 5 lineto fill");
  EXPECT_EQ(interpretation.Count(), "Line count = 2\n");
  EXPECT_EQ(interpretation.Path(), "M 0 0 L 1 0 L 5 5");
  const std::string calls = interpretation.Draw();
  EXPECT_NE(calls.find(")\nMoveTo(0, 0)\nLineTo(1, 0)\nLineTo(5, 5)\nMoveTo(0, 0)\nLineTo(1, 0)\n"),
            std::string::npos)
      << calls;
}

TEST(Painting, PointsThatAreNotFiniteAreSentAsTheyAre) {
  EXPECT_EQ(CallsOf("1e39 0 moveto 1e38 dup scale 0 1e39 lineto 10 -10 lineto stroke"),
            std::string(kBlackStroke) + "MoveTo(inf, nan)\nLineTo(nan, inf)\nLineTo(inf, -inf)\n");
}

// Red, green, blue, width and cap of the current state.
std::string AttributesAfter(std::string_view program) {
  Interpretation interpretation(program);
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "") << program;
  const orxeps::GraphicsState& state = interpretation.Get().canvas.states.current;
  std::string shown;
  for (const float value : {state.red, state.green, state.blue, state.lineWidth}) {
    shown += std::to_string(static_cast<int>(std::lround(value * 1000))) + " ";
  }
  return shown + std::to_string(state.lineCap);
}

TEST(Painting, AttributesAreTakenAsTheyAre) {
  const Outcome kTable[] = {
      {"", "0 0 0 100 0"},
      {"1 0.5 0.25 setrgbcolor", "1000 500 250 100 0"},
      {"-1 2 1e3 setrgbcolor", "-1000 2000 1000000 100 0"},
      {"1 0.2 0.3 setrgbcolor (x) 0.4 [1] setrgbcolor", "1000 400 300 100 0"},
      {"0.5 setgray", "500 500 500 100 0"},
      {"1 0.2 0.3 setrgbcolor (x) setgray", "300 300 300 100 0"},
      {"10 setlinewidth", "0 0 0 3528 0"},
      {"2 3 scale 10 setlinewidth", "0 0 0 3528 0"},
      {"10 setlinewidth 0 setlinewidth", "0 0 0 100 0"},
      {"-3 setlinewidth", "0 0 0 100 0"},
      {"10 setlinewidth (x) setlinewidth", "0 0 0 100 0"},
      {"0 setlinecap", "0 0 0 100 10"},
      {"1 setlinecap", "0 0 0 100 12"},
      {"2 setlinecap", "0 0 0 100 11"},
      {"2 setlinecap 7 setlinecap -1 setlinecap", "0 0 0 100 11"},
      {"2 setlinecap 1.0 setlinecap", "0 0 0 100 10"},
      {"1 setgray gsave 0 setgray 9 setlinewidth 1 setlinecap grestore", "1000 1000 1000 100 0"},
      {"<< >> setpagedevice 0 setlinejoin 10 setmiterlimit (x) setlinejoin", "0 0 0 100 0"},
      {"1 2 3 4 rectclip (a) (b) (c) 4.5 rectclip", "0 0 0 100 0"},
  };
  for (const auto& [program, expected] : kTable) {
    EXPECT_EQ(AttributesAfter(program), expected) << program;
  }
}

TEST(Painting, SomeOperandsStayAndTheLineWidthComesBackAsItIsKept) {
  ExpectOutcomes({
      {"1 2 3 [1 2 3 4] rectclip", "1 2 3 [1 2 3 4]"},
      {"currentlinewidth 2 setlinewidth currentlinewidth", "0.1 0.70555556"},
  });
}

}  // namespace
}  // namespace orxtests
