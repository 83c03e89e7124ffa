// The samples of an image packed as PNG and PDF hold them: each row as differences to its
// neighbours, by whichever of the filters of PNG makes them smallest.
#pragma once

#include "drawing/Deflater.h"
#include "drawing/Picture.h"
#include "host/ORXPixelImage.h"

namespace orxdrawing {

enum class RowForm {
  Light,  // grey of one or eight bits, or red, green and blue of eight; black is 0
  Own,    // as the image has them
};

// Rows that are left when `mayGoOn` says no are white. REQUIRES: the image has rows.
void DeflateRows(const ORXPixelImage& image, RowForm form, Deflater& deflater,
                 const MayGoOn& mayGoOn);

}  // namespace orxdrawing
