// The checking wrappers: silent about what interpreters may do, outspoken about the rest.
#include "framework/CheckedHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "framework/InputStreams.h"
#include "host/ORXPixelImage.h"
#include "tests/framework/StreamScript.h"

namespace orxframework {
namespace {

using Texts = std::vector<std::string>;

TEST(CheckedInputStream, NotesWhatAPassMustNotDo) {
  const struct {
    const char* script;
    Texts violations;
  } cases[] = {
      {"o s0 p ? r m ux R2 uy r j0 e0 c x o s0 x", {}},
      {"r", {"ReadByte: called while the stream is not open"}},
      {"o ? R1", {"Read: called before the rewind"}},
      {"o o", {"Open: called while the stream is open"}},
      {"o s1", {"Seek: neither to the start nor the end"}},
      {"o s0 e-1", {"Seek: neither to the start nor the end"}},
      {"o s0 ux uy", {"UnreadByte: a pushed-back byte is waiting"}},
      {"o s0 r p x o s0 j1", {"SetPosition: GetPosition did not give this position"}},
      {"o s0 R-1", {"Read: the count is negative"}},
  };
  for (const auto& each : cases) {
    MemoryInputStream stream("abc");
    CheckedInputStream checked(stream);
    StreamScript(checked).Run(each.script);
    EXPECT_EQ(checked.Violations(), each.violations) << each.script;
  }
}

TEST(CheckedInputStream, NotesWhatAHostCannotWorkWith) {
  MemoryInputStream stream("abc");
  CheckedInputStream checked(stream);
  checked.Open("r");
  EXPECT_EQ(StreamScript(checked).Run("s0 r p"), "a 1");
  EXPECT_LT(checked.ReadByte(nullptr), 0);
  EXPECT_LT(checked.Read(nullptr, 1, nullptr), 0);
  EXPECT_LT(checked.GetPosition(nullptr), 0);
  checked.RequireClosed();
  checked.Close();
  checked.RequireClosed();
  checked.Retire();
  checked.Open("rb");
  EXPECT_EQ(checked.Violations(),
            (Texts{"Open: the mode is not \"rb\"", "ReadByte: there is no place for the byte",
                   "Read: there is no buffer", "GetPosition: there is no place for the position",
                   "Close: not called after a pass",
                   "Open: called after the interpreter was destroyed"}));
  for (int i = 0; i < 1000; ++i) checked.IsReadable();
  EXPECT_EQ(checked.Violations().size(), 100U);
}

class CountingGenerator final : public PrintGenerator {
public:
  int NewPage() override { return ++calls; }
  int MoveTo(float, float) override { return ++calls; }
  int LineTo(float, float) override { return ++calls; }
  int FillArea(int, int*, float*) override { return ++calls; }
  int DrawImage(float, float, int, ORXPixelImage*) override { return ++calls; }
  int DefineColor(int, float, float, float) override { return ++calls; }
  int SetLineColor(int) override { return ++calls; }
  int SetFillColor(int) override { return ++calls; }
  int SetLineWidth(float) override { return ++calls; }
  int SetLineCap(int) override { return ++calls; }
  int SetFillRule(int) override { return ++calls; }

  int calls = 0;
};

// Draws by a script of words: "page", "move", "line", "defineN" for DefineColor of index N,
// "linecolorN", "fillcolorN", "capN", "widthN", "ruleN", "areaCC" for contours of C and C points,
// "image", "flagged", "flat", "hollow", "noimage" for images; "stroke" and "fill" stand for the
// attributes that begin one, and "retire" for the end of the interpreter.
class DrawingScript {
public:
  explicit DrawingScript(CheckedGenerator& scriptedGenerator) : generator(scriptedGenerator) {}

  void Run(const std::string& script) {
    std::istringstream words(script);
    for (std::string word; words >> word;) {
      const std::size_t digits = std::min(word.find_first_of("-0123456789"), word.size());
      Draw(word.substr(0, digits), word.substr(digits));
    }
  }

private:
  void Draw(const std::string& call, const std::string& argument) {
    const int number = argument.empty() ? 0 : std::stoi(argument);
    if (call == "stroke") Run("define255 linecolor255 cap0 width0");
    if (call == "fill") Run("define255 fillcolor255");
    if (call == "page") generator.NewPage();
    if (call == "move") generator.MoveTo(0, 0);
    if (call == "line") generator.LineTo(0, 0);
    if (call == "define") generator.DefineColor(number, 0, 0, 0);
    if (call == "linecolor") generator.SetLineColor(number);
    if (call == "fillcolor") generator.SetFillColor(number);
    if (call == "cap") generator.SetLineCap(number);
    if (call == "width") generator.SetLineWidth(static_cast<float>(number));
    if (call == "rule") generator.SetFillRule(number);
    if (call == "area") DrawArea(argument);
    if (call == "image") DrawImage(0, 2, samples.data());
    if (call == "flagged") DrawImage(1, 2, samples.data());
    if (call == "flat") DrawImage(0, 0, samples.data());
    if (call == "hollow") DrawImage(0, 2, nullptr);
    if (call == "noimage") generator.DrawImage(0, 0, 0, nullptr);
    if (call == "retire") generator.Retire();
  }

  void DrawArea(const std::string& argument) {
    std::vector<int> counts;
    for (const char digit : argument) counts.push_back(digit - '0');
    std::array<float, 100> points{};
    generator.FillArea(static_cast<int>(counts.size()), counts.data(), points.data());
  }

  void DrawImage(int flags, int height, unsigned char* pixels) {
    ORXPixelImage image(2, height, ORXPixelImageFormat::Grey8, pixels,
                        ORXDeallocatePixels::KeepWithCaller);
    generator.DrawImage(0, 0, flags, &image);
  }

  CheckedGenerator& generator;
  std::array<unsigned char, 4> samples{};
};

TEST(CheckedGenerator, NotesWhatADrawingMustNotDo) {
  const struct {
    const char* script;
    Texts violations;
    int callsPassedOn;
  } cases[] = {
      {"stroke move line stroke line fill fill rule1 area12 image page", {}, 19},
      {"move", {"MoveTo: out of order"}, 1},
      {"stroke page line", {"LineTo: out of order"}, 6},
      {"define255 cap10 width1", {"SetLineCap: out of order"}, 3},
      {"fill area12", {"FillArea: out of order"}, 3},
      {"define255 image", {"DrawImage: out of order"}, 2},
      {"define1 linecolor2 cap1 width-1",
       {"DefineColor: the colour index is not 255", "SetLineColor: the colour index is not 255",
        "SetLineCap: there is no such cap", "SetLineWidth: the width is negative or not a number"},
       4},
      {"fill rule2 area30",
       {"SetFillRule: there is no such rule", "FillArea: a contour without points, or too many"},
       3},
      {"fill rule0 area", {"FillArea: there are no contours"}, 3},
      {"flagged", {"DrawImage: the flags are not 0"}, 1},
      {"noimage", {"DrawImage: there is no image"}, 0},
      {"flat", {"DrawImage: the image has no positive size"}, 0},
      {"hollow", {"DrawImage: the image has no samples"}, 0},
      {"retire page", {"NewPage: called after the interpreter was destroyed"}, 1},
  };
  for (const auto& each : cases) {
    CountingGenerator generator;
    CheckedGenerator checked(generator);
    DrawingScript(checked).Run(each.script);
    EXPECT_EQ(checked.Violations(), each.violations) << each.script;
    EXPECT_EQ(generator.calls, each.callsPassedOn) << each.script;
  }
}

}  // namespace
}  // namespace orxframework
