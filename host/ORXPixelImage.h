// A rectangle of samples, as interpreters hand it to a generator.
//
// Rows follow each other from the first to the last, each padded to whole bytes, samples of a pixel
// side by side. An image built over a caller's buffer borrows it: the caller releases the buffer
// when it has no more use for the image. Images that the library makes itself own their samples
// and are counted: whoever receives one calls Release.
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

enum class ORXDeallocatePixels : int { KeepWithCaller = 2 };

class ORX_FRAMEWORK_API ORXPixelImage {
public:
  // Over `pixels`, which has RowBytes(width, format) * height bytes and stays the caller's.
  ORXPixelImage(int width, int height, ORXPixelImageFormat format, unsigned char* pixels,
                ORXDeallocatePixels deallocate) noexcept;
  ORXPixelImage(const ORXPixelImage& other) noexcept;
  // Shares the samples if `other` owns them, else borrows what it borrows.
  ORXPixelImage& operator=(const ORXPixelImage& other) noexcept;
  ~ORXPixelImage();

  void AddRef() noexcept;
  // For counted images only: gives up a reference, the last one deletes the image.
  void Release() noexcept;

  // The size of one pixel in output units; negative sizes mirror.
  void SetXPixelSize(float size) noexcept;
  void SetYPixelSize(float size) noexcept;
  [[nodiscard]] float GetXPixelSize() const noexcept;
  [[nodiscard]] float GetYPixelSize() const noexcept;

  // Reverses the order of the rows in place. Returns 1, or 0 when the image has no rows.
  int InvertLineProgression() noexcept;
  // Whether the rows run upwards: their order is the reverse of what it was when the image was
  // made. A device draws the first row of such an image at the bottom, so that it shows the same
  // picture.
  [[nodiscard]] bool LinesRunUpwards() const noexcept;
  // A new counted image, this one turned by 180 degrees; null for any other angle and when memory
  // runs out.
  [[nodiscard]] ORXPixelImage* CreateRotatedImage(int degrees) const noexcept;

  // Makes the pixels ready to be taken; called once before ExtractData.
  int PrepareData() noexcept;
  // All samples in a buffer from std::malloc that the caller frees, or null. An image that is alone
  // in owning its samples gives them away and has no rows from then on; any other copies them. The
  // arguments are (0, 1).
  [[nodiscard]] unsigned char* ExtractData(int first, int second) noexcept;

  [[nodiscard]] int Width() const noexcept;
  [[nodiscard]] int Height() const noexcept;
  [[nodiscard]] ORXPixelImageFormat Format() const noexcept;
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
