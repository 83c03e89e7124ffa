// The checking wrappers: silent about what interpreters may do, outspoken about the rest.
#include "framework/CheckedHost.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "framework/InputStreams.h"
#include "host/ORXPixelImage.h"
#include "tests/framework/StreamScript.h"
#include "tests/support/SilentGenerator.h"

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

void BeginStroke(CheckedGenerator& generator) {
  generator.DefineColor(255, 0, 0, 0);
  generator.SetLineColor(255);
  generator.SetLineCap(0);
  generator.SetLineWidth(0);
}

void BeginFill(CheckedGenerator& generator) {
  generator.DefineColor(255, 0, 0, 0);
  generator.SetFillColor(255);
}

void FillArea(CheckedGenerator& generator, std::vector<int> counts) {
  std::array<float, 100> points{};
  generator.FillArea(static_cast<int>(counts.size()), counts.data(), points.data());
}

enum class Pixels { None, Some };

void DrawImage(CheckedGenerator& generator, int flags, int height, Pixels pixels) {
  std::array<unsigned char, 4> samples{};
  ORXPixelImage image(2, height, ORXPixelImageFormat::Grey8,
                      pixels == Pixels::Some ? samples.data() : nullptr,
                      ORXDeallocatePixels::KeepWithCaller);
  generator.DrawImage(0, 0, flags, &image);
}

TEST(CheckedGenerator, NotesWhatADrawingMustNotDo) {
  const struct {
    void (*draw)(CheckedGenerator& generator);
    Texts violations;
    int callsPassedOn;
  } cases[] = {
      {[](auto& g) {
         BeginStroke(g), g.MoveTo(0, 0), g.LineTo(0, 0), BeginStroke(g), g.LineTo(0, 0);
         BeginFill(g), BeginFill(g), g.SetFillRule(1), FillArea(g, {1, 2});
         DrawImage(g, 0, 2, Pixels::Some), g.NewPage();
       },
       {},
       19},
      {[](auto& g) { g.MoveTo(0, 0); }, {"MoveTo: out of order"}, 1},
      {[](auto& g) { BeginStroke(g), g.NewPage(), g.LineTo(0, 0); }, {"LineTo: out of order"}, 6},
      {[](auto& g) { g.DefineColor(255, 0, 0, 0), g.SetLineCap(10), g.SetLineWidth(1); },
       {"SetLineCap: out of order"},
       3},
      {[](auto& g) {
         BeginFill(g), FillArea(g, {1, 2});
       },
       {"FillArea: out of order"},
       3},
      {[](auto& g) { g.DefineColor(255, 0, 0, 0), DrawImage(g, 0, 2, Pixels::Some); },
       {"DrawImage: out of order"},
       2},
      {[](auto& g) {
         g.DefineColor(1, 0, 0, 0), g.SetLineColor(2), g.SetLineCap(1), g.SetLineWidth(-1);
       },
       {"DefineColor: the colour index is not 255", "SetLineColor: the colour index is not 255",
        "SetLineCap: there is no such cap", "SetLineWidth: the width is negative or not a number"},
       4},
      {[](auto& g) {
         BeginFill(g), g.SetFillRule(2), FillArea(g, {3, 0});
       },
       {"SetFillRule: there is no such rule", "FillArea: a contour without points, or too many"},
       3},
      {[](auto& g) { BeginFill(g), g.SetFillRule(0), FillArea(g, {}); },
       {"FillArea: there are no contours"},
       3},
      {[](auto& g) { DrawImage(g, 1, 2, Pixels::Some); }, {"DrawImage: the flags are not 0"}, 1},
      {[](auto& g) { g.DrawImage(0, 0, 0, nullptr); }, {"DrawImage: there is no image"}, 0},
      {[](auto& g) { DrawImage(g, 0, 0, Pixels::Some); },
       {"DrawImage: the image has no positive size"},
       0},
      {[](auto& g) { DrawImage(g, 0, 2, Pixels::None); },
       {"DrawImage: the image has no samples"},
       0},
      {[](auto& g) { g.Retire(), g.NewPage(); },
       {"NewPage: called after the interpreter was destroyed"},
       1},
  };
  for (const auto& each : cases) {
    orxtests::SilentGenerator generator;
    CheckedGenerator checked(generator);
    each.draw(checked);
    EXPECT_EQ(checked.Violations(), each.violations);
    EXPECT_EQ(generator.calls, each.callsPassedOn) << testing::PrintToString(each.violations);
  }
}

// Does away with its interpreter in the middle of a page, or throws.
class FatalGenerator final : public orxtests::SilentGenerator {
public:
  int NewPage() override {
    if (!checked) throw std::runtime_error("no paper");
    mayGo = checked->Retire();
    return 0;
  }

  CheckedGenerator* checked = nullptr;
  bool mayGo = true;
};

TEST(CheckedGenerator, NotesThatTheInterpreterIsDestroyedInACallback) {
  FatalGenerator generator;
  CheckedGenerator checked(generator);
  EXPECT_THROW(checked.NewPage(), std::runtime_error);
  EXPECT_TRUE(checked.Retire()) << "no call is in progress any more";
  generator.checked = &checked;
  checked.NewPage();
  EXPECT_FALSE(generator.mayGo);
  EXPECT_EQ(checked.Violations().back(), "interpreter: destroyed from inside a callback");
}

}  // namespace
}  // namespace orxframework
