// An image as a PNG file, in as few bits a pixel as its samples need.
//
// For images inside other files, such as SVG; pages are PngPicture's. The image is borrowed and
// bytes leave through the sink as they are packed.
#pragma once

#include "drawing/Deflater.h"
#include "drawing/Picture.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {

// Rows that are left when `mayGoOn` says no are white. REQUIRES: the image has rows.
void WritePngImage(const ORXPixelImage& image, const MakeDeflater& makeDeflater,
                   const MayGoOn& mayGoOn, const ByteSink& sink);

}  // namespace orxdrawing
