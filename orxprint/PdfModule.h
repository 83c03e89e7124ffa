// The module that makes PDF files, loaded when the first one is to be written.
#pragma once

#include "drawing/PdfPicture.h"

namespace orxprint {

// Stays loaded. Throws Failure when the module is not where this program's parts are.
[[nodiscard]] orxdrawing::PdfWriter LoadPdfWriter();

}  // namespace orxprint
