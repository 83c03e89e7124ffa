// The file that a picture becomes, read back by libpng.
#include "drawing/PngPicture.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>
#include <string>
#include <vector>

namespace orxdrawing {
namespace {

struct Decoded {
  int width = 0;
  int height = 0;
  bool isGrey = false;
  bool hasOpacity = false;
  int dotsPerInch = 0;
  std::vector<std::uint8_t> pixels;  // red, green, blue, opacity
};

// The number behind a chunk's name, at an offset.
std::uint32_t NumberIn(const std::string& file, const char* chunk, std::size_t offset) {
  if (file.find(chunk) == std::string::npos) return 0;
  const std::size_t place = file.find(chunk) + 4 + offset;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8 | static_cast<unsigned char>(file[place + i]);
  }
  return number;
}

Decoded Decode(const std::string& file) {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0) << image.message;
  Decoded decoded{static_cast<int>(image.width),
                  static_cast<int>(image.height),
                  (image.format & PNG_FORMAT_FLAG_COLOR) == 0,
                  (image.format & PNG_FORMAT_FLAG_ALPHA) != 0,
                  static_cast<int>(std::lround(NumberIn(file, "pHYs", 0) * 0.0254)),
                  {}};
  image.format = PNG_FORMAT_RGBA;
  decoded.pixels.resize(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, decoded.pixels.data(), 0, nullptr), 0);
  return decoded;
}

// A square in the middle of 4 x 2 pixels, with half a pixel beside it.
void DrawSquare(ShapeSink& sink, Colour colour) {
  const std::vector<float> points = {1, 0, 3, 0, 3, 1, 2.5F, 2, 1, 2};
  const std::uint32_t count = 5;
  sink.Draw(FillShape{{{&count, 1}, points}, colour, FillRule::Winding});
}

constexpr Box kSmall{0, 0, 4, 2};

std::string FileOf(const PngSettings& settings, const Box& area, Colour colour) {
  std::string file;
  PngPicture picture(settings, [&file](std::string_view bytes) { file += bytes; });
  DrawSquare(picture.BeginPage({area, ""}), colour);
  picture.Finish();
  return file;
}

TEST(PngPicture, WritesWhatWasPaintedInTheFormThatItNeeds) {
  struct Case {
    std::optional<Colour> background;
    bool inGrey;
    Colour colour;
    bool isGrey;
    std::vector<std::uint8_t> pixels;  // the upper row, each red, green, blue, opacity
  };
  const std::vector<Case> cases = {
      {Colour{1, 1, 1},
       false,
       {1, 0, 0},
       false,
       {255, 255, 255, 255, 255, 0, 0, 255, 255, 64, 64, 255, 255, 255, 255, 255}},
      {Colour{1, 1, 1},
       false,
       {0, 0, 0},
       true,
       {255, 255, 255, 255, 0, 0, 0, 255, 64, 64, 64, 255, 255, 255, 255, 255}},
      {Colour{1, 1, 1},
       true,
       {1, 0, 0},
       true,
       {255, 255, 255, 255, 77, 77, 77, 255, 122, 122, 122, 255, 255, 255, 255, 255}},
      {Colour{0, 0, 1},
       false,
       {1, 0, 0},
       false,
       {0, 0, 255, 255, 255, 0, 0, 255, 191, 0, 64, 255, 0, 0, 255, 255}},
      {std::nullopt,
       false,
       {1, 0, 0},
       false,
       {0, 0, 0, 0, 255, 0, 0, 255, 255, 0, 0, 191, 0, 0, 0, 0}},
      {std::nullopt,
       true,
       {1, 1, 1},
       true,
       {0, 0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 191, 0, 0, 0, 0}},
  };
  for (const Case& picture : cases) {
    PngSettings settings;
    settings.dotsPerInch = 72;
    settings.background = picture.background;
    settings.inGrey = picture.inGrey;
    const std::string file = FileOf(settings, kSmall, picture.colour);
    const Decoded decoded = Decode(file);
    EXPECT_EQ(decoded.width, 4);
    EXPECT_EQ(decoded.height, 2);
    EXPECT_EQ(decoded.isGrey, picture.isGrey);
    EXPECT_EQ(decoded.hasOpacity, !picture.background);
    EXPECT_EQ(std::vector(decoded.pixels.begin(), decoded.pixels.begin() + 16), picture.pixels);
    EXPECT_EQ(FileOf(settings, kSmall, picture.colour), file);
  }
}

TEST(PngPicture, HasTheSizeThatIsAskedForAndTellsItsResolution) {
  const Box area{10, 20, 110, 70};
  struct Case {
    double asked;
    int mostWidth, mostHeight;
    int width, height, dotsPerInch;
  };
  const std::vector<Case> cases = {
      {150, 0, 0, 208, 104, 150},   {0.001, 0, 0, 1, 1, 0},      {150, 50, 0, 50, 25, 36},
      {150, 0, 200, 400, 200, 288}, {150, 300, 50, 100, 50, 72},
  };
  for (const Case& sized : cases) {
    PngSettings settings;
    settings.dotsPerInch = sized.asked;
    settings.mostWidth = sized.mostWidth;
    settings.mostHeight = sized.mostHeight;
    const Decoded decoded = Decode(FileOf(settings, area, {}));
    EXPECT_EQ(decoded.width, sized.width);
    EXPECT_EQ(decoded.height, sized.height);
    EXPECT_EQ(decoded.dotsPerInch, sized.dotsPerInch);
  }
}

TEST(PngPicture, RefusesWhatDoesNotFitAndSaysWhatWould) {
  const auto refusal = [](const Box& area, double dotsPerInch, std::size_t mostBytes) {
    PngSettings settings;
    settings.dotsPerInch = dotsPerInch;
    settings.mostBytes = mostBytes;
    try {
      PngPicture picture(settings, [](std::string_view) {});
      picture.BeginPage({area, ""});
    } catch (const PictureTooLarge& large) {
      return std::string(large.what());
    }
    return std::string();
  };
  const Box inches{0, 0, 7200, 7200};
  EXPECT_EQ(refusal(inches, 20, 48 << 20), "");
  const std::string text = refusal(inches, 144, 48 << 20);
  ASSERT_NE(text.find("or 28 dots per inch"), std::string::npos) << text;
  EXPECT_EQ(refusal(inches, 28, 48 << 20), "") << "what it names does";
  EXPECT_NE(refusal({0, 0, 1e300, 1e300}, 72, 400 << 20), "");
  EXPECT_NE(refusal(inches, 72, 0), "");
}

TEST(PngPicture, PassesOnWhatItsSinkThrows) {
  struct Broken {};
  PngPicture picture({}, [](std::string_view) { throw Broken(); });
  DrawSquare(picture.BeginPage({kSmall, ""}), {});
  EXPECT_THROW(picture.Finish(), Broken);
}

}  // namespace
}  // namespace orxdrawing
