// The objects of a PDF file around contents and images that were put aside.
//
// The last step of writing a PDF: content streams and samples lie packed in the spool that the
// settings name, and this reads them back. It keeps nothing. It is a module of its own, because the
// library that makes the objects takes long to be loaded; whoever draws a PDF finds WritePdfFile
// there by its name.
#pragma once

#include <vector>

#include "drawing/PdfPicture.h"

#if defined(__GNUC__)
#  define ORX_PDF_EXPORT [[gnu::visibility("default")]]
#else
#  define ORX_PDF_EXPORT
#endif

// Writes the file. The same pages give the same bytes, the file's identifier included. Throws what
// the spool throws.
extern "C" ORX_PDF_EXPORT void WritePdfFile(const std::vector<orxdrawing::PdfPage>& pages,
                                            const orxdrawing::PdfSettings& settings,
                                            const orxdrawing::ByteSink& sink);
