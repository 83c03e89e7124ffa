// Writes pixels as a PNG file: grey where every pixel is grey, colours otherwise, with opacity
// where the canvas has it. The same pixels give the same bytes.
#pragma once

#include "drawing/Picture.h"
#include "drawing/PixelCanvas.h"

namespace orxdrawing {

// Throws what the sink throws, and std::bad_alloc. The resolution is what the file says of itself;
// none when it cannot be told in whole dots per metre.
void EncodePng(const PixelCanvas& canvas, double dotsPerInch, const ByteSink& sink);

}  // namespace orxdrawing
