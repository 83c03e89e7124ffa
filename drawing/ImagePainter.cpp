#include "drawing/ImagePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/ImageRows.h"

namespace orxdrawing {

namespace {

using Format = ORXPixelImageFormat;

// Sizes are taken as equal when they differ by no more than this share.
constexpr double kSameSize = 0.001;
// Of an image, in pixels: its edges may round to the same place.
constexpr double kLeastLength = 1e-6;

std::size_t ChannelsOf(const ORXPixelImage& image) {
  return image.Format() == Format::Rgb24 || image.Format() == Format::Cmyk32 ? 3 : 1;
}

// One ink and black as the light of one colour.
std::uint8_t LightOf(std::uint8_t ink, std::uint8_t black) {
  return static_cast<std::uint8_t>(255 - std::min(255, ink + black));
}

// A part of a row of samples as bytes of grey or of red, green, blue; those that need no change
// stay where they are.
const std::uint8_t* Lights(const ORXPixelImage& image, int row, int first, int count,
                           std::vector<std::uint8_t>& store) {
  const std::uint8_t* samples = RowOf(image, row).data();
  const auto begin = static_cast<std::size_t>(first);
  const auto length = static_cast<std::size_t>(count);
  switch (image.Format()) {
    case Format::Rgb24:
      return samples + 3 * begin;
    case Format::Grey8:
      return samples + begin;
    case Format::Bilevel1:
      store.resize(length);
      for (std::size_t i = 0; i < length; ++i) {
        const std::size_t bit = begin + i;
        store[i] = (samples[bit / 8] >> (7 - bit % 8) & 1) != 0 ? 0 : 255;
      }
      break;
    case Format::Cmyk32:
      store.resize(3 * length);
      for (std::size_t i = 0; i < length; ++i) {
        const std::uint8_t* inks = samples + 4 * (begin + i);
        for (std::size_t c = 0; c < 3; ++c) store[3 * i + c] = LightOf(inks[c], inks[3]);
      }
      break;
  }
  return store.data();
}

}  // namespace

// Adds rows of samples, column by column of the picture, each with a weight.
class ImagePainter::RowSum {
public:
  RowSum(const ORXPixelImage& summedImage, const Axis& axis)
      : image(summedImage), channels(ChannelsOf(image)), columns(axis) {
    firstSample = image.Width();
    for (const Share& share : columns.shares) {
      firstSample = std::min(firstSample, share.first);
      endSample = std::max(endSample, share.first + share.count);
    }
    sums.resize(columns.shares.size() * channels);
  }

  void Add(int row, float weight) {
    if (row != heldRow) Reduce(row);
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += weight * held[i];
    weights += weight;
  }
  // Gives the mean of a column and what was added so far.
  [[nodiscard]] PixelColour Mean(std::size_t column) const {
    const float* sum = &sums[column * channels];
    const auto byte = [this](float value) {
      return static_cast<std::uint8_t>(std::min(value / weights + 0.5F, 255.0F));
    };
    return {byte(sum[0]), byte(sum[channels / 3]), byte(sum[channels / 3 * 2])};
  }
  void Clear() {
    std::fill(sums.begin(), sums.end(), 0.0F);
    weights = 0;
  }

private:
  // The columns' means of one row, kept for rows of the picture that show it again.
  void Reduce(int row) {
    const std::uint8_t* lights = Lights(image, row, firstSample, endSample - firstSample, store);
    held.resize(sums.size());
    float* mean = held.data();
    for (const Share& share : columns.shares) {
      const std::uint8_t* first =
          lights + static_cast<std::size_t>(share.first - firstSample) * channels;
      for (std::size_t c = 0; c < channels; ++c) *mean++ = MeanOf(first + c, share);
    }
    heldRow = row;
  }
  [[nodiscard]] float MeanOf(const std::uint8_t* light, const Share& share) const {
    if (share.count == 1) return *light;
    const auto inner = static_cast<std::size_t>(share.count - 1);
    std::uint64_t whole = 0;
    for (std::size_t i = 1; i < inner; ++i) whole += light[i * channels];
    const float sum = static_cast<float>(whole) + share.firstWeight * static_cast<float>(light[0]) +
                      share.lastWeight * static_cast<float>(light[inner * channels]);
    return sum / (share.firstWeight + share.lastWeight + static_cast<float>(inner - 1));
  }

  const ORXPixelImage& image;
  std::size_t channels;
  const Axis& columns;
  int firstSample = 0;
  int endSample = 0;
  std::vector<std::uint8_t> store;
  std::vector<float> held;
  int heldRow = -1;
  std::vector<float> sums;
  float weights = 0;
};

ImagePainter::ImagePainter(const ImageShape& shape, const PixelFrame& frame, bool inGrey)
    : image(*shape.image), isGrey(inGrey) {
  const double farX = shape.x + image.Width() * double{shape.xPixelSize};
  const double farY = shape.y + image.Height() * double{shape.yPixelSize};
  const Point first = frame.ToPixels(shape.x, farY);
  const Point last = frame.ToPixels(farX, shape.y);
  columns = AxisOf(first.x, last.x, image.Width(), frame.width);
  rows = AxisOf(first.y, last.y, image.Height(), frame.height);
}

ImagePainter::Axis ImagePainter::AxisOf(double firstEdge, double lastEdge, int samples,
                                        int pixels) {
  const auto [low, high] = std::minmax(firstEdge, lastEdge);
  const double begin = std::round(low);
  const double end = std::max(std::round(high), begin + 1);
  Axis axis;
  axis.begin = static_cast<int>(std::clamp<double>(begin, 0, pixels));
  const int endPixel = static_cast<int>(std::clamp<double>(end, 0, pixels));
  const double length = std::max(high - low, kLeastLength);
  const double samplesPerPixel = (lastEdge < firstEdge ? -samples : samples) / length;
  const bool isFiner = std::abs(samplesPerPixel) > 1 + kSameSize;
  axis.shares.reserve(static_cast<std::size_t>(endPixel - axis.begin));
  for (int pixel = axis.begin; pixel < endPixel; ++pixel) {
    const double middle = (pixel + 0.5 - firstEdge) * samplesPerPixel;
    const double reach = isFiner ? std::abs(samplesPerPixel) / 2 : 0;
    axis.shares.push_back(ShareOf(middle - reach, middle + reach, samples));
  }
  return axis;
}

ImagePainter::Share ImagePainter::ShareOf(double from, double to, int samples) {
  const double first = std::clamp<double>(std::floor(from), 0, samples - 1);
  const double last = std::clamp<double>(std::ceil(to) - 1, first, samples - 1);
  Share share;
  share.first = static_cast<int>(first);
  share.count = static_cast<int>(last - first) + 1;
  if (share.count == 1) return share;
  share.firstWeight = static_cast<float>(std::min(1.0, first + 1 - from));
  share.lastWeight = static_cast<float>(std::min(1.0, to - last));
  return share;
}

PixelRect ImagePainter::Covered() const {
  return {columns.begin, rows.begin, columns.End(), rows.End()};
}

void ImagePainter::Paint(PixelCanvas& canvas, int top, int bottom, StopSignal& stop) const {
  if (columns.shares.empty()) return;
  RowSum sum(image, columns);
  for (int y = std::max(top, rows.begin); y < std::min(bottom, rows.End()); ++y) {
    const Share& share = rows.shares[static_cast<std::size_t>(y - rows.begin)];
    sum.Clear();
    for (int i = 0; i < share.count; ++i) {
      if (!stop.GoesOn()) return;
      const bool isLast = i + 1 == share.count;
      sum.Add(share.first + i, i == 0 ? share.firstWeight : isLast ? share.lastWeight : 1.0F);
    }
    for (std::size_t i = 0; i < columns.shares.size(); ++i) {
      PixelColour colour = sum.Mean(i);
      if (isGrey) colour.red = colour.green = colour.blue = GreyOf(colour);
      canvas.Paint(columns.begin + static_cast<int>(i), y, colour);
    }
  }
}

}  // namespace orxdrawing
