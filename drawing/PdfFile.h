// The objects of a PDF file around contents and images that were put aside.
//
// The last step of writing a PDF: content streams and samples lie packed in the spool that the
// settings name, and this reads them back. It keeps nothing.
#pragma once

#include <vector>

#include "drawing/PdfPicture.h"

namespace orxdrawing {

// Writes the file. The same pages give the same bytes, the file's identifier included. Throws what
// the spool throws.
void WritePdfFile(const std::vector<PdfPage>& pages, const PdfSettings& settings,
                  const ByteSink& sink);

}  // namespace orxdrawing
