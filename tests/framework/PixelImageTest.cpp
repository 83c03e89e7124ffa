// Pixel images: layouts, turning over, and whose samples are whose.
#include "host/ORXPixelImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

namespace {

using Format = ORXPixelImageFormat;
using Samples = std::vector<unsigned char>;

constexpr ORXDeallocatePixels kBorrowed = ORXDeallocatePixels::KeepWithCaller;

struct Releaser {
  void operator()(ORXPixelImage* image) const { image->Release(); }
};
using CountedImage = std::unique_ptr<ORXPixelImage, Releaser>;

Samples SamplesOf(const ORXPixelImage& image) {
  return {image.Pixels(), image.Pixels() + image.ByteCount()};
}

// The bits of one pixel as a number.
unsigned PixelAt(const ORXPixelImage& image, int x, int y) {
  const std::size_t rowBytes = ORXPixelImage::RowBytes(image.Width(), image.Format());
  const unsigned char* row = image.Pixels() + rowBytes * static_cast<std::size_t>(y);
  const auto column = static_cast<std::size_t>(x);
  if (image.Format() == Format::Bilevel1) return row[column / 8] >> (7 - column % 8) & 1U;
  const std::size_t pixelBytes = rowBytes / static_cast<std::size_t>(image.Width());
  unsigned pixel = 0;
  for (std::size_t i = 0; i < pixelBytes; ++i) pixel = pixel << 8 | row[column * pixelBytes + i];
  return pixel;
}

TEST(PixelImage, RowsArePaddedToBytes) {
  const struct {
    int width;
    Format format;
    std::size_t rowBytes;
  } cases[] = {
      {5, Format::Grey8, 5},    {5, Format::Rgb24, 15},   {5, Format::Cmyk32, 20},
      {8, Format::Bilevel1, 1}, {9, Format::Bilevel1, 2}, {INT_MAX, Format::Bilevel1, 1U << 28},
      {0, Format::Rgb24, 0},    {-8, Format::Grey8, 0},   {INT_MAX, Format::Cmyk32, 8589934588U},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ORXPixelImage::RowBytes(each.width, each.format), each.rowBytes) << each.width;
  }
  EXPECT_EQ(ORXPixelImage(INT_MAX, INT_MAX, Format::Cmyk32, nullptr, kBorrowed).ByteCount(),
            std::size_t{8589934588} * INT_MAX);
  EXPECT_EQ(ORXPixelImage(3, -1, Format::Grey8, nullptr, kBorrowed).ByteCount(), 0U);
}

TEST(PixelImage, TurningOverMovesEveryPixelOfEveryFormat) {
  std::mt19937 random(23);
  for (const Format format : {Format::Grey8, Format::Rgb24, Format::Cmyk32, Format::Bilevel1}) {
    for (int width = 1; width <= 26; ++width) {
      const int height = 1 + width % 4;
      Samples samples(ORXPixelImage::RowBytes(width, format) * static_cast<std::size_t>(height));
      std::generate(samples.begin(), samples.end(), std::ref(random));
      const Samples original = samples;
      ORXPixelImage image(width, height, format, samples.data(), kBorrowed);
      image.SetXPixelSize(2.5F);
      const CountedImage turned(image.CreateRotatedImage(180));
      ORXPixelImage flipped = *CountedImage(image.CreateRotatedImage(180));
      ASSERT_EQ(flipped.InvertLineProgression(), 1);
      EXPECT_TRUE(flipped.LinesRunUpwards());
      EXPECT_FALSE(turned->LinesRunUpwards());
      EXPECT_EQ(turned->GetXPixelSize(), 2.5F);
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const unsigned pixel = PixelAt(image, x, y);
          ASSERT_EQ(PixelAt(*turned, width - 1 - x, height - 1 - y), pixel) << x << " of " << width;
          ASSERT_EQ(PixelAt(flipped, width - 1 - x, y), pixel) << x << " of " << width;
        }
      }
      if (format == Format::Bilevel1 && width % 8 != 0) {
        EXPECT_EQ(turned->Pixels()[width / 8] & 0xFF >> width % 8, 0) << "pad bits of " << width;
      }
      EXPECT_EQ(samples, original);
      image.InvertLineProgression();
      image.InvertLineProgression();
      EXPECT_EQ(samples, original);
    }
  }
}

TEST(PixelImage, OnlyAHalfTurnIsMadeAndOnlyRowsAreReversed) {
  Samples samples = {1, 2};
  ORXPixelImage image(2, 1, Format::Grey8, samples.data(), kBorrowed);
  for (const int degrees : {0, 90, -180, 360}) {
    EXPECT_EQ(image.CreateRotatedImage(degrees), nullptr) << degrees;
  }
  EXPECT_EQ(image.InvertLineProgression(), 1);
  EXPECT_EQ(samples, (Samples{1, 2}));
  EXPECT_EQ(ORXPixelImage(2, 0, Format::Grey8, samples.data(), kBorrowed).InvertLineProgression(),
            0);
}

TEST(PixelImage, OwnedSamplesAreSharedUntilOneImageChangesThem) {
  const Samples samples = {1, 2, 3};
  const CountedImage made(ORXPixelImage::CreateCopy(1, 3, Format::Grey8, samples.data()));
  Samples other = {9};
  ORXPixelImage image(1, 1, Format::Grey8, other.data(), kBorrowed);
  image = *made;
  EXPECT_EQ(image.Pixels(), made->Pixels());
  EXPECT_EQ(image.Height(), 3);
  image.InvertLineProgression();
  EXPECT_EQ(SamplesOf(image), (Samples{3, 2, 1}));
  EXPECT_EQ(SamplesOf(*made), samples);
  EXPECT_EQ(other, (Samples{9}));
}

struct Free {
  void operator()(unsigned char* bytes) const { std::free(bytes); }
};
using Buffer = std::unique_ptr<unsigned char[], Free>;

TEST(PixelImage, SamplesAreGivenAwayByTheirOnlyOwnerAndCopiedFromAnyOther) {
  const Samples samples = {1, 2, 3};
  const CountedImage made(ORXPixelImage::CreateCopy(1, 3, Format::Grey8, samples.data()));
  Buffer copy;
  {
    ORXPixelImage sharing = *made;
    copy.reset(sharing.ExtractData(0, 1));
    EXPECT_NE(copy.get(), made->Pixels());
    EXPECT_EQ(SamplesOf(sharing), samples);
  }
  Samples callers = samples;
  ORXPixelImage borrowing(1, 3, Format::Grey8, callers.data(), kBorrowed);
  const Buffer borrowed(borrowing.ExtractData(0, 1));
  EXPECT_NE(borrowed.get(), callers.data());
  const unsigned char* pixels = made->Pixels();
  const Buffer taken(made->ExtractData(0, 1));
  EXPECT_EQ(taken.get(), pixels);
  for (const unsigned char* each : {copy.get(), borrowed.get(), taken.get()}) {
    EXPECT_EQ(Samples(each, each + 3), samples);
  }
  EXPECT_EQ(made->ByteCount(), 0U);
  EXPECT_EQ(made->ExtractData(0, 1), nullptr);
}

}  // namespace
