// What the painter puts on pixels.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "orxprint/CairoPainter.h"

namespace orxprint {
namespace {

constexpr int kSide = 8;  // pixels and points of the page

// A page painted on white, as rows of letters from the top: R, G, B, K for pure colours, W for
// white and ? for anything else.
class PaintedPage {
public:
  explicit PaintedPage(const DisplayList& list)
      : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kSide, kSide)) {
    cairo_t* context = cairo_create(surface.get());
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_paint(context);
    painter.PaintPage(context, list, 0, 1, {0, 0, kSide, kSide});
    EXPECT_EQ(cairo_status(context), CAIRO_STATUS_SUCCESS);
    cairo_destroy(context);
    cairo_surface_flush(surface.get());
  }

  [[nodiscard]] std::string Row(int row) const {
    std::string letters;
    for (int x = 0; x < kSide; ++x) letters += Letter(x, row);
    return letters;
  }
  [[nodiscard]] char Letter(int x, int row) const {
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    const auto pixel = reinterpret_cast<const std::uint32_t*>(data + row * stride)[x] & 0xFFFFFFU;
    switch (pixel) {
      case 0xFF0000:
        return 'R';
      case 0x00FF00:
        return 'G';
      case 0x0000FF:
        return 'B';
      case 0x000000:
        return 'K';
      case 0xFFFFFF:
        return 'W';
      default:
        return '?';
    }
  }
  [[nodiscard]] const Losses& Lost() const { return painter.Lost(); }

private:
  SurfacePointer surface;
  CairoPainter painter{Canvas::Pixels, 1, {}};
};

void Fill(DisplayList& list, Colour colour, const std::vector<float>& points) {
  const int count = static_cast<int>(points.size() / 2);
  list.AddFill(Shape::Kind::WindingFill, colour, {&count, 1}, points);
}

TEST(CairoPainter, PutsTheFirstRowOfAnImageOnTopAndMirrorsByNegativeSizes) {
  // Red and green above blue and black.
  const ImageSamples colours{
      2, 2, ImageSamples::Layout::Rgb24, 6, {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}};
  struct Case {
    float x, y, xSize, ySize;
    std::string corners;  // top left, top right, bottom left, bottom right
  };
  const std::vector<Case> cases = {
      {0, 0, 4, 4, "RGBK"}, {8, 0, -4, 4, "GRKB"}, {0, 8, 4, -4, "BKRG"}, {8, 8, -4, -4, "KBGR"}};
  for (const Case& placed : cases) {
    DisplayList list;
    list.AddImage({colours, placed.x, placed.y, placed.xSize, placed.ySize});
    const PaintedPage page(list);
    EXPECT_EQ(
        std::string({page.Letter(0, 0), page.Letter(7, 0), page.Letter(0, 7), page.Letter(7, 7)}),
        placed.corners);
    EXPECT_EQ(page.Row(3).find('?'), std::string::npos) << "edges are sharp";
  }
}

TEST(CairoPainter, ReadsEveryLayoutOfSamples) {
  struct Case {
    ImageSamples samples;
    std::string row;
  };
  using Layout = ImageSamples::Layout;
  const std::vector<Case> cases = {
      {{2, 1, Layout::Grey8, 2, {0, 255}}, "KKKKWWWW"},
      {{4, 1, Layout::Bilevel1, 1, {0b10100000}}, "KKWWKKWW"},
      {{4, 1, Layout::Cmyk32, 16, {0, 255, 255, 0, 0, 0, 0, 255, 255, 0, 255, 0, 0, 0, 0, 0}},
       "RRKKGGWW"},
      // Sixteen samples to eight pixels: the mean of two black samples is black.
      {{16, 1, Layout::Bilevel1, 2, {0b11110000, 0b11001111}}, "KKWWKWKK"},
  };
  for (const Case& image : cases) {
    DisplayList list;
    const float size = 8.0F / static_cast<float>(image.samples.width);
    list.AddImage({image.samples, 0, 0, size, 8});
    EXPECT_EQ(PaintedPage(list).Row(4), image.row);
  }
}

TEST(CairoPainter, StrokesAtLeastOnePixelAndCutsFarCoordinatesOnTheirSlope) {
  DisplayList list;
  list.BeginStroke({0, 0, 1}, 0.0001F, LineCap::Butt);
  list.MoveTo(0, 4.5F);
  list.LineTo(8, 4.5F);
  EXPECT_EQ(PaintedPage(list).Row(3), "BBBBBBBB");

  DisplayList farAway;  // through the corner (8, 8) with slope 1, from far outside
  farAway.BeginStroke({0, 0, 0}, 1, LineCap::Butt);
  farAway.MoveTo(0, 0);
  farAway.LineTo(2e9F, 2e9F);
  Fill(farAway, {1, 0, 0}, {-3e30F, 0, 3e30F, 0, 3e30F, 1, -3e30F, 1});
  const PaintedPage page(farAway);
  EXPECT_EQ(page.Row(7), "RRRRRRRR");
  for (int i = 1; i < kSide; ++i) EXPECT_EQ(page.Letter(i, 7 - i), 'K') << i;
}

TEST(CairoPainter, ClosesLinesThatEndWhereTheyBegin) {
  constexpr float kMillimetresPerPoint = 25.4F / 72;
  DisplayList list;
  list.BeginStroke({0, 0, 0}, 2 * kMillimetresPerPoint, LineCap::Butt);
  for (const auto& [x, y] : std::vector<std::pair<float, float>>{{2, 2}, {6, 2}, {6, 6}, {2, 6}}) {
    list.LineTo(x, y);
  }
  list.LineTo(2, 2);
  EXPECT_EQ(PaintedPage(list).Letter(1, 6), 'K') << "the corner where the line began is mitred";
}

TEST(CairoPainter, LeavesOutWhatIsNotFiniteAndCountsIt) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  DisplayList list;
  list.BeginStroke({nan, 7, -3}, nan, LineCap::Round);
  list.MoveTo(nan, 1);
  list.LineTo(1, -kInfinity);
  Fill(list, {0, 1, 0}, {0, 0, 8, 0, kInfinity, 3, 8, 8, 0, 8});
  const ImageSamples dot{1, 1, ImageSamples::Layout::Grey8, 1, {0}};
  list.AddImage({dot, 0, 0, 0, 1});
  list.AddImage({dot, 0, 0, kInfinity, 1});
  list.AddImage({dot, nan, 0, 1, 1});
  const PaintedPage page(list);
  EXPECT_EQ(page.Row(4), "GGGGGGGG");
  EXPECT_EQ(page.Lost().points, 3U);
  EXPECT_EQ(page.Lost().images, 3U);
}

TEST(CairoPainter, MeetsNeighbouringRectanglesWithoutASeam) {
  DisplayList list;
  Fill(list, {0, 0, 0}, {0, 0, 2.4F, 0, 2.4F, 8, 0, 8});
  Fill(list, {0, 0, 0}, {2.4F, 8, 2.4F, 0, 5.7F, 0, 5.7F, 8, 2.4F, 8});
  Fill(list, {1, 0, 0}, {6.6F, 0, 6.7F, 0, 6.7F, 8, 6.6F, 8});  // thinner than a pixel
  EXPECT_EQ(PaintedPage(list).Row(2), "KKKKKKWR");
}

}  // namespace
}  // namespace orxprint
