#include "bench/ImageDocuments.h"

#include <array>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

#include "bench/DocumentWriter.h"
#include "bench/Encodings.h"

namespace orxbench {

namespace {

// Rows that change slowly, with a little noise, as photographs have.
std::string ShadedSamples(std::size_t width, std::size_t height) {
  std::string samples;
  samples.reserve(width * height);
  std::mt19937 random{85};
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      samples += static_cast<char>((x / 7 + y / 5 + random() % 12) & 0xff);
    }
  }
  return samples;
}

// Runs of one value, of 1 to `longest`, as charts have.
std::string RunsOfSamples(std::size_t count, std::uint32_t longest) {
  std::string samples;
  std::mt19937 random{60};
  while (samples.size() < count) {
    samples.append(1 + random() % longest % (1 + random() % longest),
                   static_cast<char>(random() & 0xff));
  }
  samples.resize(count);
  return samples;
}

// Images of one size, one after the other, of two sets of data in turn.
struct ImageStream {
  int width, height, bits;
  std::string_view filters;
  std::array<std::string, 2> data;
};

std::string Images(std::size_t bytes, const ImageStream& image) {
  DocumentWriter writer(bytes);
  for (std::size_t i = 0; i == 0 || writer.IsWanted(); ++i) {
    writer.Add("gsave 10 10 translate 590 770 scale\n<< /ImageType 1 /Width ").Integer(image.width);
    writer.Add("/Height ").Integer(image.height).Add("/BitsPerComponent ").Integer(image.bits);
    writer.Add("/Decode [0 1] /ImageMatrix [").Integer(image.width).Add("0 0 ");
    writer.Integer(-image.height).Add("0 ").Integer(image.height);
    writer.Add("]\n/DataSource currentfile ").Add(image.filters).Add(" >> image\n");
    writer.Add(image.data[i % image.data.size()]).Add("grestore\n");
  }
  return writer.Finish();
}

// A scanned page: lines of small black shapes that repeat from row to row, and specks.
std::vector<std::vector<bool>> ScannedPage(std::size_t width, std::size_t height,
                                           std::uint32_t seed) {
  std::mt19937 random{seed};
  std::vector<std::vector<bool>> page(height, std::vector<bool>(width, false));
  const std::size_t margin = width / 10;
  for (std::size_t top = margin; top + 40 < height; top += random() % 10 == 0 ? 120 : 44) {
    for (std::size_t left = margin; left + 32 < width - margin; left += 26) {
      if (random() % 6 == 0) continue;
      std::array<std::uint32_t, 5> shape;
      for (std::uint32_t& part : shape) part = random() & random();
      for (std::size_t y = 0; y < 30; ++y) {
        for (std::size_t x = 0; x < 20; ++x) {
          page[top + y][left + x] = (shape[y / 6] >> (x / 2) & 1) != 0;
        }
      }
    }
    page[top][random() % width] = true;
  }
  return page;
}

}  // namespace

std::string GreyImages(std::size_t bytes) {
  const std::string samples = ShadedSamples(1000, 1001);
  return Images(bytes, {1000,
                        1000,
                        8,
                        "/ASCII85Decode filter",
                        {EncodeBase85({samples.data(), 1000000}),
                         EncodeBase85({samples.data() + 1000, 1000000})}});
}

std::string RunLengthImages(std::size_t bytes) {
  const std::string samples = RunsOfSamples(4002000, 90);
  return Images(bytes, {2000,
                        2000,
                        8,
                        "/ASCII85Decode filter /RunLengthDecode filter",
                        {EncodeBase85(EncodeRunLength({samples.data(), 4000000})),
                         EncodeBase85(EncodeRunLength({samples.data() + 2000, 4000000}))}});
}

std::string ColourImages(std::size_t bytes) {
  constexpr int kWidth = 400;
  constexpr int kMostRows = 400;
  DocumentWriter writer(bytes);
  const std::string row(kWidth, '-');
  writer.Add("/R (" + row + ") def /G (" + row + ") def /B (" + row + ") def\n");
  const std::string samples = RunsOfSamples(3 * kWidth * kMostRows, 30);
  for (int image = 0; image == 0 || writer.IsWanted(); ++image) {
    std::string data;
    int rows = 0;
    while (rows < kMostRows && (rows < 8 || data.size() < writer.BytesWanted())) {
      for (int source = 0; source < 3; ++source) {
        const auto start = static_cast<std::size_t>((3 * rows + source) * kWidth);
        data += EncodeBase85(EncodeRunLength({samples.data() + start, kWidth}));
      }
      ++rows;
    }
    writer.Add("gsave 10 10 translate 300 380 scale\n").Integer(kWidth).Integer(rows).Add("8 [");
    writer.Integer(kWidth).Add("0 0 ").Integer(rows).Add("0 0]\n");
    for (const std::string_view source : {"R", "G", "B"}) {
      writer.Add("{currentfile /ASCII85Decode filter /RunLengthDecode filter ");
      writer.Add(source).Add(" readstring pop}\n");
    }
    writer.Add("true 3 colorimage\n").Add(data).Add("grestore\n");
  }
  return writer.Finish();
}

std::string FaxImages(std::size_t bytes) {
  const auto page = [](std::uint32_t seed) {
    return EncodeBase85(EncodeFax(ScannedPage(2480, 3508, seed)));
  };
  return Images(bytes, {2480,
                        3508,
                        1,
                        "/ASCII85Decode filter << /K -1 /Columns 2480 /Rows 3508 >> "
                        "/CCITTFaxDecode filter",
                        {page(4), page(5)}});
}

}  // namespace orxbench
