// The objects of a PDF file around contents and images that were put aside.
#pragma once

#include <vector>

#include "drawing/PdfPicture.h"

namespace orxdrawing {

// Writes the file. The same pages give the same bytes, the file's identifier included. Throws what
// the spool throws.
void WritePdfFile(const std::vector<PdfPage>& pages, const PdfSettings& settings,
                  const ByteSink& sink);

}  // namespace orxdrawing
