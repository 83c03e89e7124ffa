// Image samples as the drawing library takes them.
//
// A surface takes up to four bytes a pixel, so an image of many pixels is reduced first: each pixel
// of the surface is then the mean of a block of samples. Bilevel images that need no reduction stay
// at one bit a pixel.
#pragma once

#include <cairo.h>

#include <memory>

#include "drawing/DisplayList.h"

namespace orxprint {

using orxdrawing::ImageSamples;

struct SurfaceDestroyer {
  void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDestroyer>;

// How many samples, along and across, become one pixel.
struct Reduction {
  int x = 1;
  int y = 1;

  [[nodiscard]] bool IsNone() const { return x == 1 && y == 1; }
};

// How a surface is to hold bilevel samples.
enum class BilevelAs { Colour, OneBit };

// The least reduction of at least `wanted` that keeps the surface within bounds.
[[nodiscard]] Reduction BoundedReduction(const ImageSamples& samples, Reduction wanted,
                                         BilevelAs bilevelAs);

// Whether the samples can stay at one bit a pixel.
[[nodiscard]] bool StaysBilevel(const ImageSamples& samples, Reduction reduction);

// All throw std::bad_alloc when memory runs out.

// The colours of the samples, for painting on pixels.
[[nodiscard]] SurfacePointer MakeColourSurface(const ImageSamples& samples, Reduction reduction);
// A mask that is set where the samples are black. REQUIRES: StaysBilevel.
[[nodiscard]] SurfacePointer MakeBlackMask(const ImageSamples& samples);
// A surface that carries a compressed picture of the samples, in as few bits a pixel as they need,
// for documents that hold pictures in this form.
[[nodiscard]] SurfacePointer MakePictureSurface(const ImageSamples& samples, Reduction reduction);

}  // namespace orxprint
