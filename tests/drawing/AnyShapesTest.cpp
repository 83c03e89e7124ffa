// Shapes that no drawing means: whatever their numbers are, each writer makes a file that readers
// take, and they are found and compared.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "drawing/Comparison.h"
#include "drawing/ComparisonPicture.h"
#include "drawing/HitTest.h"
#include "drawing/PdfPicture.h"
#include "drawing/PixelPainter.h"
#include "drawing/PngPicture.h"
#include "drawing/ShapeList.h"
#include "drawing/SvgPicture.h"

namespace orxdrawing {
namespace {

constexpr Box kPage{0, 0, 60, 40};
constexpr int kPages = 400;

ByteSink AppendTo(std::string& text) {
  return [&text](std::string_view bytes) { text += bytes; };
}

// The same shapes each time for the same number.
class AnyShapes {
public:
  explicit AnyShapes(int page) : random(static_cast<unsigned>(page)) {}

  // Calls draw(shape) with some of each kind.
  template <typename Sink>
  void Draw(Sink draw) {
    for (int i = Below(12); i >= 0; --i) {
      const int kind = Below(5);
      if (kind < 2) draw(StrokeShape{AnyContours(), AnyColour(), Number(), LineCap(Below(3))});
      if (kind == 2) draw(FillShape{AnyContours(), AnyColour(), FillRule(Below(2))});
      if (kind == 3) {
        const FillShape fill{AnyContours(), AnyColour(), FillRule(Below(2))};
        draw(fill);
        draw(StrokeShape{fill.contours, AnyColour(), Number(), LineCap(Below(3))});
      }
      if (kind == 4) DrawImage(draw);
    }
  }

private:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

  float Number() {
    using Limits = std::numeric_limits<float>;
    switch (Below(24)) {
      case 0:
        return Below(2) == 0 ? Limits::infinity() : -Limits::infinity();
      case 1:
        return Limits::quiet_NaN();
      case 2:
        return Below(2) == 0 ? Limits::max() : Limits::lowest();
      case 3:
        return Limits::denorm_min();
      case 4:
        return 0;
      case 5:
        return std::exp2(std::uniform_real_distribution<float>(-120, 120)(random));
      case 6:
      case 7:
      case 8:
        return last;
      case 9:
      case 10:
        return last + std::uniform_real_distribution<float>(-0.001F, 0.001F)(random);
      default:
        return last = std::uniform_real_distribution<float>(-20, 80)(random);
    }
  }

  Colour AnyColour() { return {Number(), Number() / 60, Number() / 60}; }

  Contours AnyContours() {
    lengths.clear();
    points.clear();
    for (int i = Below(4); i > 0; --i) {
      lengths.push_back(static_cast<std::uint32_t>(Below(16)));
      for (std::uint32_t j = 0; j < 2 * lengths.back(); ++j) points.push_back(Number());
    }
    return {lengths, points};
  }

  template <typename Sink>
  void DrawImage(Sink draw) {
    using Format = ORXPixelImageFormat;
    constexpr Format kFormats[] = {Format::Grey8, Format::Rgb24, Format::Cmyk32, Format::Bilevel1};
    std::vector<unsigned char> samples(9 * 9 * 4);
    for (unsigned char& sample : samples) sample = static_cast<unsigned char>(Below(256));
    const ORXPixelImage image(1 + Below(9), 1 + Below(9), kFormats[Below(4)], samples.data(),
                              ORXDeallocatePixels::KeepWithCaller);
    draw(ImageShape{&image, Number(), Number(), Number(), Number()});
  }

  std::mt19937 random;
  float last = 0;
  std::vector<std::uint32_t> lengths;
  std::vector<float> points;
};

TEST(AnyShapes, AreWrittenAsSvgOfFiniteNumbers) {
  for (int page = 0; page < kPages; ++page) {
    std::string text;
    SvgPicture picture({1, MakeZlibDeflater, [] { return true; }}, AppendTo(text));
    ShapeSink& sink = picture.BeginPage({kPage, ""});
    AnyShapes(page).Draw([&](const auto& shape) { sink.Draw(shape); });
    picture.Finish();
    ASSERT_TRUE(text.ends_with("</g>\n</svg>\n")) << page;
    for (std::size_t at = text.find(" d=\""); at != text.npos; at = text.find(" d=\"", at + 1)) {
      const std::string path = text.substr(at + 4, text.find('"', at + 4) - at - 4);
      ASSERT_EQ(path.find_first_not_of("MmLlHhVvZzCc0123456789.-e+ \n"), path.npos)
          << page << ": " << path;
    }
  }
}

// Operands that each operator of a page's content takes.
const std::map<std::string, std::size_t> kOperands = {
    {"m", 2},  {"l", 2}, {"c", 6}, {"re", 4}, {"h", 0},  {"S", 0},  {"f", 0},
    {"f*", 0}, {"B", 0}, {"w", 1}, {"B*", 0}, {"RG", 3}, {"rg", 3}, {"G", 1},
    {"g", 1},  {"J", 1}, {"q", 0}, {"Q", 0},  {"Do", 1}, {"cm", 6}};

// Whether paths are begun before they go on, and are painted before anything else is said.
void CheckContent(const std::string& content) {
  std::istringstream tokens(content);
  std::size_t operands = 0;
  bool isInPath = false;
  for (std::string token; tokens >> token;) {
    if (token.find_first_not_of("-.0123456789") == token.npos || token[0] == '/') {
      ++operands;
      continue;
    }
    const auto known = kOperands.find(token);
    ASSERT_NE(known, kOperands.end()) << token;
    ASSERT_EQ(operands, known->second) << token;
    operands = 0;
    const bool begins = token == "m" || token == "re";
    const bool goesOn = token == "l" || token == "c" || token == "h";
    const bool paints = token[0] == 'S' || token[0] == 'f' || token[0] == 'B';
    ASSERT_EQ(isInPath, begins ? isInPath : goesOn || paints) << token;
    isInPath = begins || goesOn;
  }
  ASSERT_FALSE(isInPath) << "not painted";
}

class MemorySpool final : public Spool {
public:
  [[nodiscard]] std::uint64_t Size() const override { return bytes.size(); }
  void Add(std::string_view more) override { bytes += more; }
  void Read(std::uint64_t place, std::uint64_t count, const ByteSink& sink) override {
    sink(std::string_view(bytes).substr(place, count));
  }

private:
  std::string bytes;
};

// Hands on what it is given, so that it can be read.
class NoDeflater final : public Deflater {
public:
  explicit NoDeflater(ByteSink byteSink) : sink(std::move(byteSink)) {}
  void Add(std::span<const unsigned char> bytes) override {
    sink({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  void Finish() override {}

private:
  ByteSink sink;
};

void WriteContents(const std::vector<PdfPage>& pages, const PdfSettings& settings,
                   const ByteSink& sink) {
  for (const PdfStream& part : pages[0].contents) settings.spool->Read(part.place, part.size, sink);
}

TEST(AnyShapes, AreWrittenAsPdfContentThatIsInOrder) {
  for (int page = 0; page < kPages; ++page) {
    std::string text;
    PdfSettings settings;
    settings.makeDeflater = [](Effort, ByteSink sink) {
      return std::make_unique<NoDeflater>(std::move(sink));
    };
    settings.spool = std::make_shared<MemorySpool>();
    settings.mayGoOn = [] { return true; };
    settings.write = WriteContents;
    PdfPicture picture(settings, AppendTo(text));
    ShapeSink& sink = picture.BeginPage({kPage, ""});
    AnyShapes(page).Draw([&](const auto& shape) { sink.Draw(shape); });
    picture.Finish();
    CheckContent(text);
    if (testing::Test::HasFatalFailure()) FAIL() << page << ": " << text;
  }
}

TEST(AnyShapes, ArePaintedTheSameHoweverManyPaint) {
  for (int page = 0; page < kPages; ++page) {
    const auto file = [page](unsigned workers) {
      std::string bytes;
      PngSettings settings;
      settings.workers = workers;
      PngPicture picture(settings, AppendTo(bytes));
      ShapeSink& sink = picture.BeginPage({kPage, ""});
      AnyShapes(page).Draw([&](const auto& shape) { sink.Draw(shape); });
      picture.Finish();
      return bytes;
    };
    ASSERT_EQ(file(1), file(3)) << page;
  }
}

TEST(AnyShapes, AreFoundAndComparedByWhatCanBeSeen) {
  const auto listed = [](int page, ShapeList& list) {
    AnyShapes(page).Draw([&](const auto& shape) {
      list.Draw(shape);
      for (const Point& place : {Point{30, 20}, Point{0, 0}, Point{1e30, -1e30}}) {
        ASSERT_GE(DistanceTo(shape, place, 1), 0) << page;
      }
    });
  };
  for (int page = 0; page < kPages; ++page) {
    ShapeList drawing(1);
    ShapeList same(1);
    ShapeList other(1);
    listed(page, drawing);
    listed(page, same);
    listed(page + 1, other);
    ASSERT_TRUE(Compare(drawing, same, kUsualTolerance).empty()) << page;
    PaintSettings settings;
    settings.frame = FrameOfResolution(kPage, 1, 72);
    PixelPainter painter(settings);
    const std::vector<Difference> differences = Compare(drawing, other, kUsualTolerance);
    for (const std::uint32_t differing : DifferingPages(drawing, other, differences)) {
      DrawComparison(painter, drawing, other, differences, differing);
    }
    painter.Finish();
  }
}

}  // namespace
}  // namespace orxdrawing
