#include "drawing/FarImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "drawing/ContourCleaner.h"
#include "drawing/Extent.h"
#include "drawing/ImageRows.h"

namespace orxdrawing {

namespace {

constexpr std::int64_t kMostSamples = 10'000;

// Samples from `begin` on, up to `end`.
struct Samples {
  int begin = 0;
  int end = 0;
};

// Those of a row or column that touch the stretch from `low` to `high`.
Samples Touching(double start, double size, int count, double low, double high) {
  double first = (low - start) / size;
  double last = (high - start) / size;
  if (first > last) std::swap(first, last);
  return {static_cast<int>(std::clamp<double>(std::floor(first), 0, count)),
          static_cast<int>(std::clamp<double>(std::ceil(last), 0, count))};
}

Samples ColumnsOn(const Box& page, const ImageShape& shape) {
  return Touching(shape.x, shape.xPixelSize, shape.image->Width(), page.left, page.right);
}

// Counted upwards from the image's origin.
Samples RowsOn(const Box& page, const ImageShape& shape) {
  return Touching(shape.y, shape.yPixelSize, shape.image->Height(), page.bottom, page.top);
}

Colour ColourOf(const std::vector<unsigned char>& light, ORXPixelImageFormat format, int column) {
  const auto at = static_cast<std::size_t>(column);
  const auto part = [](unsigned char byte) { return static_cast<float>(byte) / 255; };
  switch (format) {
    case ORXPixelImageFormat::Bilevel1: {
      const float grey = light[at / 8] >> (7 - at % 8) & 1U ? 1.0F : 0.0F;
      return {grey, grey, grey};
    }
    case ORXPixelImageFormat::Grey8:
      return {part(light[at]), part(light[at]), part(light[at])};
    default:
      return {part(light[3 * at]), part(light[3 * at + 1]), part(light[3 * at + 2])};
  }
}

}  // namespace

FarImages::FarImages(const Box& area, double pointsPerUnit)
    : page{area.left / pointsPerUnit, area.bottom / pointsPerUnit, area.right / pointsPerUnit,
           area.top / pointsPerUnit},
      reach(kReachPoints / pointsPerUnit) {}

bool FarImages::Include(const ImageShape& shape) const {
  const Box box = *ExtentOf(shape);
  const bool isFar = box.left < page.left - reach || box.right > page.right + reach ||
                     box.bottom < page.bottom - reach || box.top > page.top + reach;
  if (!isFar) return false;
  const Samples columns = ColumnsOn(page, shape);
  const Samples rows = RowsOn(page, shape);
  return std::int64_t{columns.end - columns.begin} * (rows.end - rows.begin) <= kMostSamples;
}

void FarImages::Draw(const ImageShape& shape,
                     const std::function<void(const FillShape& fill)>& draw) const {
  static constexpr std::array<std::uint32_t, 1> kLengths = {4};
  const auto side = [](double start, double size, int sample, double low, double high) {
    return static_cast<float>(std::clamp(start + sample * size, low, high));
  };
  const Samples columns = ColumnsOn(page, shape);
  const Samples rows = RowsOn(page, shape);
  std::vector<unsigned char> light;
  for (int row = rows.begin; row < rows.end; ++row) {
    LightOfRow(*shape.image, shape.image->Height() - 1 - row, light);
    const float bottom = side(shape.y, shape.yPixelSize, row, page.bottom, page.top);
    const float top = side(shape.y, shape.yPixelSize, row + 1, page.bottom, page.top);
    for (int column = columns.begin; column < columns.end; ++column) {
      const float left = side(shape.x, shape.xPixelSize, column, page.left, page.right);
      const float right = side(shape.x, shape.xPixelSize, column + 1, page.left, page.right);
      const std::array<float, 8> corners = {left, bottom, right, bottom, right, top, left, top};
      draw(
          {{kLengths, corners}, ColourOf(light, shape.image->Format(), column), FillRule::Winding});
    }
  }
}

}  // namespace orxdrawing
