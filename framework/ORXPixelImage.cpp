// Pixel images: sample layouts, sharing, and the two ways of turning one over.
#include "host/ORXPixelImage.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr auto kMirroredBytes = [] {
  std::array<unsigned char, 256> mirrored{};
  for (unsigned byte = 0; byte < 256; ++byte) {
    unsigned result = 0;
    for (unsigned bit = 0; bit < 8; ++bit) result |= (byte >> bit & 1U) << (7 - bit);
    mirrored[byte] = static_cast<unsigned char>(result);
  }
  return mirrored;
}();

// Writes the pixels of a row from the last to the first.
template <std::size_t pixelBytes>
void MirrorPixels(const unsigned char* from, unsigned char* to, std::size_t rowBytes) noexcept {
  for (std::size_t i = rowBytes; i != 0; i -= pixelBytes, to += pixelBytes) {
    std::memcpy(to, from + i - pixelBytes, pixelBytes);
  }
}

// The same for one bit per pixel. Mirrored bytes have the padding in front; the shift that brings
// the first pixel to its place pushes the padding out and leaves zeros behind the last.
void MirrorBits(const unsigned char* from, unsigned char* to, std::size_t rowBytes,
                unsigned padding) noexcept {
  for (std::size_t i = 0; i < rowBytes; ++i) {
    const unsigned here = kMirroredBytes[from[rowBytes - 1 - i]];
    const unsigned next = i + 1 < rowBytes ? kMirroredBytes[from[rowBytes - 2 - i]] : 0U;
    to[i] = static_cast<unsigned char>((here << 8 | next) << padding >> 8);
  }
}

void MirrorRow(const unsigned char* from, unsigned char* to, std::size_t rowBytes, int width,
               ORXPixelImageFormat format) noexcept {
  switch (format) {
    case ORXPixelImageFormat::Bilevel1:
      return MirrorBits(from, to, rowBytes, (8U - width % 8U) % 8U);
    case ORXPixelImageFormat::Rgb24:
      return MirrorPixels<3>(from, to, rowBytes);
    case ORXPixelImageFormat::Cmyk32:
      return MirrorPixels<4>(from, to, rowBytes);
    default:
      return MirrorPixels<1>(from, to, rowBytes);
  }
}

}  // namespace

ORXPixelImage::ORXPixelImage(int imageWidth, int imageHeight, ORXPixelImageFormat imageFormat,
                             unsigned char* samples, ORXDeallocatePixels /*deallocate*/) noexcept
    : width(imageWidth), height(imageHeight), format(imageFormat), pixels(samples) {}

ORXPixelImage::ORXPixelImage(const ORXPixelImage& other) noexcept
    : width(other.width),
      height(other.height),
      format(other.format),
      pixels(other.pixels),
      ownPixels(other.ownPixels),
      xPixelSize(other.xPixelSize),
      yPixelSize(other.yPixelSize),
      linesRunUpwards(other.linesRunUpwards) {}

// cppcheck-suppress operatorEqVarError ; the references are to the object and stay with it
ORXPixelImage& ORXPixelImage::operator=(const ORXPixelImage& other) noexcept {
  width = other.width;
  height = other.height;
  format = other.format;
  pixels = other.pixels;
  ownPixels = other.ownPixels;
  xPixelSize = other.xPixelSize;
  yPixelSize = other.yPixelSize;
  linesRunUpwards = other.linesRunUpwards;
  return *this;  // whoever counts this object goes on counting it
}

ORXPixelImage::~ORXPixelImage() = default;

void ORXPixelImage::AddRef() noexcept { ++references; }

void ORXPixelImage::Release() noexcept {
  if (--references == 0) delete this;
}

void ORXPixelImage::SetXPixelSize(float size) noexcept { xPixelSize = size; }
void ORXPixelImage::SetYPixelSize(float size) noexcept { yPixelSize = size; }
float ORXPixelImage::GetXPixelSize() const noexcept { return xPixelSize; }
float ORXPixelImage::GetYPixelSize() const noexcept { return yPixelSize; }

int ORXPixelImage::InvertLineProgression() noexcept {
  if (ByteCount() == 0) return 0;
  if (ownPixels.use_count() > 1) {
    // Other images show the same samples and must go on showing them in their order.
    ORXPixelImage* copy = CreateCopy(width, height, format, pixels);
    if (!copy) return 0;
    pixels = copy->pixels;
    ownPixels = copy->ownPixels;
    copy->Release();
  }
  const std::size_t rowBytes = RowBytes(width, format);
  unsigned char* upper = pixels;
  unsigned char* lower = pixels + ByteCount() - rowBytes;
  for (; upper < lower; upper += rowBytes, lower -= rowBytes) {
    std::swap_ranges(upper, upper + rowBytes, lower);
  }
  linesRunUpwards = !linesRunUpwards;
  return 1;
}

bool ORXPixelImage::LinesRunUpwards() const noexcept { return linesRunUpwards; }

ORXPixelImage* ORXPixelImage::CreateRotatedImage(int degrees) const noexcept {
  if (degrees != 180) return nullptr;
  ORXPixelImage* turned = CreateUnset(width, height, format);
  if (!turned) return nullptr;
  turned->xPixelSize = xPixelSize;
  turned->yPixelSize = yPixelSize;
  const std::size_t rowBytes = RowBytes(width, format);
  const std::size_t total = ByteCount();
  for (std::size_t offset = 0; offset < total; offset += rowBytes) {
    const unsigned char* from = pixels + total - rowBytes - offset;
    MirrorRow(from, turned->pixels + offset, rowBytes, width, format);
  }
  return turned;
}

int ORXPixelImage::PrepareData() noexcept { return 1; }

unsigned char* ORXPixelImage::ExtractData(int /*first*/, int /*second*/) noexcept {
  const std::size_t size = ByteCount();
  if (size == 0) return nullptr;
  if (ownPixels.use_count() == 1) {
    height = 0;
    pixels = nullptr;
    return std::exchange(ownPixels->bytes, nullptr);
  }
  auto* copy = static_cast<unsigned char*>(std::malloc(size));
  if (copy) std::memcpy(copy, pixels, size);
  return copy;
}

int ORXPixelImage::Width() const noexcept { return width; }
int ORXPixelImage::Height() const noexcept { return height; }
ORXPixelImageFormat ORXPixelImage::Format() const noexcept { return format; }
const unsigned char* ORXPixelImage::Pixels() const noexcept { return pixels; }

std::size_t ORXPixelImage::ByteCount() const noexcept {
  if (height <= 0) return 0;
  return SizeOf(std::uint64_t{RowBytes(width, format)} * static_cast<std::uint64_t>(height));
}

ORXPixelImage* ORXPixelImage::CreateCopy(int width, int height, ORXPixelImageFormat format,
                                         const unsigned char* pixels) noexcept {
  ORXPixelImage* copy = CreateUnset(width, height, format);
  if (copy && copy->ByteCount() != 0) std::memcpy(copy->pixels, pixels, copy->ByteCount());
  return copy;
}

ORXPixelImage* ORXPixelImage::CreateUnset(int width, int height,
                                          ORXPixelImageFormat format) noexcept {
  try {
    auto image = std::make_unique<ORXPixelImage>(width, height, format, nullptr,
                                                 ORXDeallocatePixels::KeepWithCaller);
    image->ownPixels = std::make_shared<OwnPixels>();
    const std::size_t size = image->ByteCount();
    image->ownPixels->bytes = static_cast<unsigned char*>(std::malloc(size != 0 ? size : 1));
    if (!image->ownPixels->bytes) return nullptr;
    image->pixels = image->ownPixels->bytes;
    return image.release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

ORXPixelImage::OwnPixels::~OwnPixels() { std::free(bytes); }
