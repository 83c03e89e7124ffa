// A rectangle of samples, as interpreters hand it to a generator.
//
// Layout: rows follow each other from the first to the last, each padded to whole bytes; the
// samples of a pixel lie side by side, those of a row without gaps. Byte `i` of row `r` is
//   Pixels()[r * RowBytes(Width(), Format()) + i]
// and ByteCount() bytes are there. Of one-bit samples, pixel x of a row is bit 7 - x % 8 of its
// byte x / 8; the bits behind the last pixel mean nothing.
//
// Ownership: an image built over a caller's buffer borrows it; the caller releases the buffer when
// it has no more use for the image. Images that the library makes itself own their samples and are
// counted, at 1 to begin with: whoever receives one calls Release. Counts are plain numbers, so an
// image stays on one thread.
//
// A generator is lent an image for the time of DrawImage. What it wants to keep it copies, with
// CreateCopy or byte by byte. Running out of memory answers null or 0; nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/ORXFrameworkApi.h"

enum class ORXPixelImageFormat : int {
  Grey8 = 0,     // one byte per pixel, 0 black
  Rgb24 = 2,     // three bytes per pixel: red, green, blue
  Cmyk32 = 3,    // four bytes per pixel: cyan, magenta, yellow, black, 0 no ink
  Bilevel1 = 4,  // one bit per pixel, high bit first, 1 black
};

// Who releases the samples that an image is built over: always the caller.
enum class ORXDeallocatePixels : int { KeepWithCaller = 2 };

class ORX_FRAMEWORK_API ORXPixelImage {
public:
  // Over `pixels`, which has RowBytes(width, format) * height bytes and stays the caller's.
  ORXPixelImage(int width, int height, ORXPixelImageFormat format, unsigned char* pixels,
                ORXDeallocatePixels deallocate) noexcept;
  // Shows the same samples, shared or borrowed as those of `other`, and is counted by itself.
  ORXPixelImage(const ORXPixelImage& other) noexcept;
  // Shares the samples if `other` owns them, else borrows what it borrows.
  ORXPixelImage& operator=(const ORXPixelImage& other) noexcept;
  ~ORXPixelImage();

  // For counted images only: takes a reference.
  void AddRef() noexcept;
  // For counted images only: gives up a reference, the last one deletes the image.
  void Release() noexcept;

  // The size of one pixel in output units, 1 to begin with; negative sizes mirror. What documents
  // ask for may be 0 or not finite.
  void SetXPixelSize(float size) noexcept;
  void SetYPixelSize(float size) noexcept;
  [[nodiscard]] float GetXPixelSize() const noexcept;
  [[nodiscard]] float GetYPixelSize() const noexcept;

  // Reverses the order of the rows, in the caller's buffer too; samples that other images share are
  // copied first. Returns 1, or 0 when the image has no rows or there is no memory for the copy.
  int InvertLineProgression() noexcept;
  // Whether the rows run upwards: their order is the reverse of what it was when the image was
  // made. A device draws the first row of such an image at the bottom, so that it shows the same
  // picture.
  [[nodiscard]] bool LinesRunUpwards() const noexcept;
  // A new counted image, this one turned by 180 degrees, with samples of its own and the same pixel
  // sizes; null for any other angle and when memory runs out.
  [[nodiscard]] ORXPixelImage* CreateRotatedImage(int degrees) const noexcept;

  // Makes the pixels ready to be taken; called once before ExtractData.
  int PrepareData() noexcept;
  // All samples in a buffer from std::malloc that the caller frees, or null. An image that is alone
  // in owning its samples gives them away and has no rows from then on; any other copies them. The
  // arguments are (0, 1).
  [[nodiscard]] unsigned char* ExtractData(int first, int second) noexcept;

  // In pixels, as given when it was made; not positive for an image that nobody draws.
  [[nodiscard]] int Width() const noexcept;
  [[nodiscard]] int Height() const noexcept;
  [[nodiscard]] ORXPixelImageFormat Format() const noexcept;
  // The first row; null after ExtractData has given the samples away.
  [[nodiscard]] const unsigned char* Pixels() const noexcept;
  // Bytes in all rows together; 0 when the image has no positive size.
  [[nodiscard]] std::size_t ByteCount() const noexcept;
  // The layout is a matter of arithmetic, so nobody has to import it.
  [[nodiscard]] static constexpr std::size_t RowBytes(int width,
                                                      ORXPixelImageFormat format) noexcept {
    if (width <= 0) return 0;
    const auto pixelCount = static_cast<std::uint64_t>(width);
    switch (format) {
      case ORXPixelImageFormat::Rgb24:
        return SizeOf(pixelCount * 3);
      case ORXPixelImageFormat::Cmyk32:
        return SizeOf(pixelCount * 4);
      case ORXPixelImageFormat::Bilevel1:
        return SizeOf((pixelCount + 7) / 8);
      default:
        return SizeOf(pixelCount);
    }
  }

  // A new counted image with samples of its own copied from `pixels`; null when memory runs out.
  [[nodiscard]] static ORXPixelImage* CreateCopy(int width, int height, ORXPixelImageFormat format,
                                                 const unsigned char* pixels) noexcept;

private:
  // The largest layout, four bytes for each of 2^31-1 times 2^31-1 pixels, stays below 2^64. What a
  // platform cannot address is more than it can allocate, whatever that is.
  [[nodiscard]] static constexpr std::size_t SizeOf(std::uint64_t bytes) noexcept {
    return bytes > SIZE_MAX ? SIZE_MAX : static_cast<std::size_t>(bytes);
  }

  // From std::malloc, so that they can be given away.
  struct OwnPixels {
    OwnPixels() noexcept = default;
    OwnPixels(const OwnPixels&) = delete;
    OwnPixels& operator=(const OwnPixels&) = delete;
    ~OwnPixels();

    unsigned char* bytes = nullptr;
  };

  // A new counted image with samples of its own that are yet to be written, or null.
  static ORXPixelImage* CreateUnset(int width, int height, ORXPixelImageFormat format) noexcept;

  int width;
  int height;
  ORXPixelImageFormat format;
  unsigned char* pixels;
  std::shared_ptr<OwnPixels> ownPixels;  // empty for an image over a caller's buffer
  float xPixelSize = 1.0F;
  float yPixelSize = 1.0F;
  bool linesRunUpwards = false;
  std::uint32_t references = 1;
};
