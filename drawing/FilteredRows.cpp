#include "drawing/FilteredRows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "drawing/ImageRows.h"

namespace orxdrawing {

namespace {

// The ways to write a row as differences, and the number that stands for each in the file.
enum class Filter : unsigned char { None = 0, Sub = 1, Up = 2, Paeth = 4 };
constexpr std::array kFilters = {Filter::None, Filter::Sub, Filter::Up, Filter::Paeth};

unsigned char Nearest(int left, int above, int corner) {
  const int estimate = left + above - corner;
  const int toLeft = std::abs(estimate - left);
  const int toAbove = std::abs(estimate - above);
  const int toCorner = std::abs(estimate - corner);
  if (toLeft <= toAbove && toLeft <= toCorner) return static_cast<unsigned char>(left);
  return static_cast<unsigned char>(toAbove <= toCorner ? above : corner);
}

// Chooses for each row the filter with the smallest differences.
class RowFilter {
public:
  RowFilter(std::size_t rowBytes, std::size_t bytesPerPixel)
      : step(bytesPerPixel), before(rowBytes), candidate(rowBytes + 1), best(rowBytes + 1) {}

  // The row with the filter's number in front.
  std::span<const unsigned char> Apply(std::span<const unsigned char> row) {
    std::size_t least = SIZE_MAX;
    for (const Filter filter : kFilters) {
      const std::size_t cost = Try(filter, row);
      if (cost >= least) continue;
      least = cost;
      std::swap(best, candidate);
    }
    std::copy(row.begin(), row.end(), before.begin());
    return best;
  }
  // Rows of one bit a pixel are best left as they are.
  std::span<const unsigned char> Keep(std::span<const unsigned char> row) {
    best[0] = 0;
    std::copy(row.begin(), row.end(), best.begin() + 1);
    return best;
  }

private:
  std::size_t Try(Filter filter, std::span<const unsigned char> row) {
    candidate[0] = static_cast<unsigned char>(filter);
    std::size_t cost = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const int left = i >= step ? row[i - step] : 0;
      const int corner = i >= step ? before[i - step] : 0;
      int predicted = 0;
      if (filter == Filter::Sub) predicted = left;
      if (filter == Filter::Up) predicted = before[i];
      if (filter == Filter::Paeth) predicted = Nearest(left, before[i], corner);
      const auto difference = static_cast<unsigned char>(row[i] - predicted);
      candidate[i + 1] = difference;
      cost += difference < 128 ? difference : 256U - difference;
    }
    return cost;
  }

  std::size_t step;
  std::vector<unsigned char> before;
  std::vector<unsigned char> candidate;
  std::vector<unsigned char> best;
};

std::size_t BytesPerPixel(ORXPixelImageFormat format, RowForm form) {
  switch (format) {
    case ORXPixelImageFormat::Rgb24:
      return 3;
    case ORXPixelImageFormat::Cmyk32:
      return form == RowForm::Light ? 3 : 4;
    default:
      return 1;
  }
}

void TakeRow(const ORXPixelImage& image, int row, RowForm form, std::vector<unsigned char>& bytes) {
  if (form == RowForm::Light) return LightOfRow(image, row, bytes);
  const std::span<const unsigned char> samples = RowOf(image, row);
  bytes.assign(samples.begin(), samples.end());
}

}  // namespace

void DeflateRows(const ORXPixelImage& image, RowForm form, Deflater& deflater,
                 const MayGoOn& mayGoOn) {
  const bool isBilevel = image.Format() == ORXPixelImageFormat::Bilevel1;
  const bool isInk = image.Format() == ORXPixelImageFormat::Cmyk32 && form == RowForm::Own;
  const unsigned char white = isInk || (isBilevel && form == RowForm::Own) ? 0 : 255;
  std::vector<unsigned char> bytes;
  TakeRow(image, 0, form, bytes);
  RowFilter filter(bytes.size(), BytesPerPixel(image.Format(), form));
  bool isStopped = false;
  for (int row = 0; row < image.Height(); ++row) {
    isStopped = isStopped || !mayGoOn();
    if (isStopped) {
      std::fill(bytes.begin(), bytes.end(), white);
    } else {
      TakeRow(image, row, form, bytes);
    }
    deflater.Add(isBilevel || isStopped ? filter.Keep(bytes) : filter.Apply(bytes));
  }
}

}  // namespace orxdrawing
