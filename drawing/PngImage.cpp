#include "drawing/PngImage.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "drawing/Crc32.h"
#include "drawing/ImageRows.h"

namespace orxdrawing {

namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
constexpr int kGrey = 0;
constexpr int kTrueColour = 2;

// Numbers in a PNG file have their high byte first.
void AppendNumber(std::string& text, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(number >> shift & 0xFF);
}

void WriteChunk(const ByteSink& sink, std::string_view kind, std::string_view content) {
  std::string chunk;
  AppendNumber(chunk, static_cast<std::uint32_t>(content.size()));
  chunk += kind;
  chunk += content;
  const auto* checked = reinterpret_cast<const unsigned char*>(chunk.data()) + 4;
  AppendNumber(chunk, Crc32({checked, chunk.size() - 4}));
  sink(chunk);
}

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

std::string Header(const ORXPixelImage& image, bool isBilevel, bool isGrey) {
  std::string header;
  AppendNumber(header, static_cast<std::uint32_t>(image.Width()));
  AppendNumber(header, static_cast<std::uint32_t>(image.Height()));
  header += static_cast<char>(isBilevel ? 1 : 8);
  header += static_cast<char>(isGrey ? kGrey : kTrueColour);
  header.append(3, '\0');  // the only compression, the only filtering, not interlaced
  return header;
}

}  // namespace

void WritePngImage(const ORXPixelImage& image, const MakeDeflater& makeDeflater,
                   const MayGoOn& mayGoOn, const ByteSink& sink) {
  const bool isBilevel = image.Format() == ORXPixelImageFormat::Bilevel1;
  const bool isGrey = isBilevel || image.Format() == ORXPixelImageFormat::Grey8;
  sink(kSignature);
  WriteChunk(sink, "IHDR", Header(image, isBilevel, isGrey));
  const auto deflater =
      makeDeflater([&sink](std::string_view bytes) { WriteChunk(sink, "IDAT", bytes); });
  std::vector<unsigned char> light;
  LightOfRow(image, 0, light);
  RowFilter filter(light.size(), isGrey ? 1 : 3);
  bool isStopped = false;
  for (int row = 0; row < image.Height(); ++row) {
    isStopped = isStopped || !mayGoOn();
    if (isStopped) {
      std::fill(light.begin(), light.end(), static_cast<unsigned char>(255));
    } else {
      LightOfRow(image, row, light);
    }
    deflater->Add(isBilevel || isStopped ? filter.Keep(light) : filter.Apply(light));
  }
  deflater->Finish();
  WriteChunk(sink, "IEND", {});
}

}  // namespace orxdrawing
