#include "orxprint/ImageSurfaces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <new>
#include <span>
#include <string>
#include <vector>

namespace orxprint {

namespace {

using Layout = ImageSamples::Layout;

// The drawing library's own bound is 32767 pixels a side.
constexpr int kMostSide = 32'000;
constexpr std::int64_t kMostColourPixels = 64 << 20;
constexpr std::int64_t kMostBilevelPixels = 1024 << 20;

int Reduced(int side, int factor) { return (side - 1) / factor + 1; }

std::size_t ChannelsOf(const ImageSamples& samples) {
  return samples.layout == Layout::Rgb24 || samples.layout == Layout::Cmyk32 ? 3 : 1;
}

// One ink and black as the light of one colour.
unsigned char LightOf(unsigned char ink, unsigned char black) {
  return static_cast<unsigned char>(255 - std::min(255, ink + black));
}

// A row of samples as bytes of grey or of red, green, blue.
void ExpandRow(const ImageSamples& samples, int row, std::vector<unsigned char>& pixels) {
  const std::span<const unsigned char> bytes = samples.Row(row);
  const auto width = static_cast<std::size_t>(samples.width);
  pixels.resize(width * ChannelsOf(samples));
  if (samples.layout == Layout::Bilevel1) {
    for (std::size_t i = 0; i < width; ++i) {
      pixels[i] = (bytes[i / 8] >> (7 - i % 8) & 1) != 0 ? 0 : 255;
    }
  } else if (samples.layout == Layout::Cmyk32) {
    for (std::size_t i = 0; i < width; ++i) {
      for (std::size_t c = 0; c < 3; ++c) {
        pixels[3 * i + c] = LightOf(bytes[4 * i + c], bytes[4 * i + 3]);
      }
    }
  } else {
    std::copy_n(bytes.begin(), pixels.size(), pixels.begin());
  }
}

using RowSink = std::function<void(int row, std::span<const unsigned char> pixels)>;

// The sums of the samples of one row of blocks.
class BlockRow {
public:
  BlockRow(std::size_t width, std::size_t channelCount, int blockWidth)
      : blockX(static_cast<std::size_t>(blockWidth)),
        channels(channelCount),
        sums(((width - 1) / blockX + 1) * channelCount),
        counts(sums.size()) {}

  void Add(std::span<const unsigned char> pixels) {
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const std::size_t place = i / channels / blockX * channels + i % channels;
      sums[place] += pixels[i];
      ++counts[place];
    }
  }
  // Gives the means and starts again.
  std::span<const unsigned char> TakeMeans() {
    means.resize(sums.size());
    for (std::size_t i = 0; i < sums.size(); ++i) {
      means[i] = static_cast<unsigned char>((sums[i] + counts[i] / 2) / counts[i]);
    }
    std::fill(sums.begin(), sums.end(), 0);
    std::fill(counts.begin(), counts.end(), 0);
    return means;
  }

private:
  std::size_t blockX;
  std::size_t channels;
  std::vector<std::uint64_t> sums;
  std::vector<std::uint64_t> counts;
  std::vector<unsigned char> means;
};

void ForEachRow(const ImageSamples& samples, Reduction reduction, const RowSink& sink) {
  std::vector<unsigned char> pixels;
  BlockRow blocks(static_cast<std::size_t>(samples.width), ChannelsOf(samples), reduction.x);
  for (int row = 0; row < samples.height; ++row) {
    ExpandRow(samples, row, pixels);
    if (reduction.IsNone()) {
      sink(row, pixels);
      continue;
    }
    blocks.Add(pixels);
    const bool isLastOfBlock = (row + 1) % reduction.y == 0 || row + 1 == samples.height;
    if (isLastOfBlock) sink(row / reduction.y, blocks.TakeMeans());
  }
}

// Gives access to the rows of a new surface.
class SurfaceBuilder {
public:
  SurfaceBuilder(cairo_format_t format, int width, int height)
      : surface(cairo_image_surface_create(format, width, height)) {
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) throw std::bad_alloc();
    data = cairo_image_surface_get_data(surface.get());
    stride = cairo_image_surface_get_stride(surface.get());
  }
  [[nodiscard]] unsigned char* Row(int row) const {
    return data + static_cast<std::ptrdiff_t>(row) * stride;
  }
  SurfacePointer Finish() {
    cairo_surface_mark_dirty(surface.get());
    return std::move(surface);
  }

private:
  SurfacePointer surface;
  unsigned char* data = nullptr;
  int stride = 0;
};

constexpr std::array<unsigned char, 256> MakeReversedBits() {
  std::array<unsigned char, 256> table{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      if ((byte >> bit & 1) != 0)
        table[byte] = static_cast<unsigned char>(table[byte] | 0x80 >> bit);
    }
  }
  return table;
}

constexpr std::array<unsigned char, 256> kReversedBits = MakeReversedBits();

// One bit a pixel, in the order of the machine's words. `flip` is 0xFF to exchange black and white.
SurfacePointer MakeBitSurface(const ImageSamples& samples, unsigned char flip) {
  SurfaceBuilder builder(CAIRO_FORMAT_A1, samples.width, samples.height);
  for (int row = 0; row < samples.height; ++row) {
    unsigned char* target = builder.Row(row);
    for (const unsigned char byte : samples.Row(row)) {
      const auto bits = static_cast<unsigned char>(byte ^ flip);
      *target++ = std::endian::native == std::endian::little ? kReversedBits[bits] : bits;
    }
  }
  return builder.Finish();
}

SurfacePointer MakeGreySurface(const ImageSamples& samples, Reduction reduction) {
  SurfaceBuilder builder(CAIRO_FORMAT_A8, Reduced(samples.width, reduction.x),
                         Reduced(samples.height, reduction.y));
  ForEachRow(samples, reduction, [&](int row, std::span<const unsigned char> pixels) {
    std::copy(pixels.begin(), pixels.end(), builder.Row(row));
  });
  return builder.Finish();
}

cairo_status_t AppendTo(void* closure, const unsigned char* data, unsigned length) {
  try {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
  } catch (const std::bad_alloc&) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

// Gives the surface its own pixels in compressed form, light for light.
void AttachPicture(cairo_surface_t* surface) {
  auto picture = std::make_unique<std::string>();
  if (cairo_surface_write_to_png_stream(surface, AppendTo, picture.get()) != CAIRO_STATUS_SUCCESS) {
    throw std::bad_alloc();
  }
  const auto* bytes = reinterpret_cast<const unsigned char*>(picture->data());
  const auto destroy = [](void* owner) { delete static_cast<std::string*>(owner); };
  const cairo_status_t status = cairo_surface_set_mime_data(
      surface, CAIRO_MIME_TYPE_PNG, bytes, picture->size(), destroy, picture.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::bad_alloc();
  [[maybe_unused]] std::string* ownedBySurface = picture.release();
}

}  // namespace

Reduction BoundedReduction(const ImageSamples& samples, Reduction wanted, BilevelAs bilevelAs) {
  Reduction reduction{std::max(wanted.x, Reduced(samples.width, kMostSide)),
                      std::max(wanted.y, Reduced(samples.height, kMostSide))};
  const auto pixels = [&] {
    return std::int64_t{Reduced(samples.width, reduction.x)} * Reduced(samples.height, reduction.y);
  };
  const bool isOneBit = bilevelAs == BilevelAs::OneBit && StaysBilevel(samples, reduction);
  if (isOneBit && pixels() <= kMostBilevelPixels) return reduction;
  while (pixels() > kMostColourPixels) {
    ++reduction.x;
    ++reduction.y;
  }
  return reduction;
}

bool StaysBilevel(const ImageSamples& samples, Reduction reduction) {
  return samples.layout == Layout::Bilevel1 && reduction.IsNone();
}

SurfacePointer MakeColourSurface(const ImageSamples& samples, Reduction reduction) {
  SurfaceBuilder builder(CAIRO_FORMAT_RGB24, Reduced(samples.width, reduction.x),
                         Reduced(samples.height, reduction.y));
  const std::size_t channels = ChannelsOf(samples);
  ForEachRow(samples, reduction, [&](int row, std::span<const unsigned char> pixels) {
    auto* target = reinterpret_cast<std::uint32_t*>(builder.Row(row));
    for (std::size_t i = 0; i < pixels.size(); i += channels) {
      const std::uint32_t red = pixels[i];
      const std::uint32_t green = pixels[i + channels / 3];
      const std::uint32_t blue = pixels[i + channels / 3 * 2];
      *target++ = red << 16 | green << 8 | blue;
    }
  });
  return builder.Finish();
}

SurfacePointer MakeBlackMask(const ImageSamples& samples) { return MakeBitSurface(samples, 0); }

SurfacePointer MakePictureSurface(const ImageSamples& samples, Reduction reduction) {
  SurfacePointer surface;
  if (StaysBilevel(samples, reduction)) {
    surface = MakeBitSurface(samples, 0xFF);
  } else if (ChannelsOf(samples) == 1) {
    surface = MakeGreySurface(samples, reduction);
  } else {
    surface = MakeColourSurface(samples, reduction);
  }
  AttachPicture(surface.get());
  return surface;
}

}  // namespace orxprint
