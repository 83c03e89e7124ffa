// The raster formats library: turns a decoded bitmap into a pixel image.
//
// The interpreter's fax filter hands over the bitmap that CCITT_G4_dec has written and takes the
// samples out of the image again (ORXPixelImage::ExtractData). Hosts need none of this. Safe on any
// number of threads.
#pragma once

#include <cstdint>

#include "host/ORXFrameworkApi.h"
#include "host/ORXPixelImage.h"

// What the bitmap was decoded from.
enum class ORXMMediaImageType : int { Fax = 4 };

// What a conversion may depend on; a format derives its own options from this.
class ORX_FRAMEWORK_API ORXMMediaImageDecodingOption {
public:
  ORXMMediaImageDecodingOption() noexcept;
  virtual ~ORXMMediaImageDecodingOption();

  void SetOptionValue(std::uint64_t value) noexcept { optionValue = value; }
  [[nodiscard]] std::uint64_t OptionValue() const noexcept { return optionValue; }

private:
  std::uint64_t optionValue = 1;
};

class ORX_FRAMEWORK_API ORXMMediaImageConverter {
public:
  // A new counted image of a one-bit bitmap of `size` bytes, rows padded to whole bytes; the caller
  // releases it. Null when the type is not Fax, the size does not fit or memory runs out.
  static ORXPixelImage* CreatePixelImage(const unsigned char* data, int size, int width, int height,
                                         ORXMMediaImageType type,
                                         const ORXMMediaImageDecodingOption* option) noexcept;
};
