// Writes pixels as a PNG file: grey where every pixel is grey, colours otherwise, with opacity
// where the canvas has it. The same pixels give the same bytes.
#pragma once

#include <functional>
#include <string_view>

#include "drawing/PixelCanvas.h"

namespace orxdrawing {

// Takes the bytes of a file, piece by piece. Returns whether it goes on taking them; may throw.
using ByteSink = std::function<bool(std::string_view bytes)>;

// Returns whether the sink took everything, and throws what it throws, std::bad_alloc besides. The
// resolution is what the file says of itself; none when it is not finite and positive.
bool EncodePng(const PixelCanvas& canvas, double dotsPerInch, const ByteSink& sink);

}  // namespace orxdrawing
