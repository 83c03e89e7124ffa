// Writes painted pages into files: one page of SVG or PNG, or any number of pages of PDF.
//
// The same pages give the same bytes: nothing of the moment or the machine is written.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "drawing/Picture.h"
#include "orxprint/CairoPainter.h"
#include "orxprint/Descriptor.h"

namespace orxprint {

using orxdrawing::ByteSink;

// A page of a display list, and the part of it to show.
struct PageToWrite {
  std::shared_ptr<const DisplayList> list;
  std::size_t page = 0;      // in the list, from 0
  std::uint32_t number = 1;  // in the document, from 1
  Box area;                  // in points
};

struct WriteSettings {
  double dotsPerInch = 150;
  double pointsPerUnit = 72.0 / 25.4;
  // When painting has to be over; what is not painted by then is left out.
  Deadline deadline;
};

// One function for each format. All throw Failure when an area is too large, std::bad_alloc when
// memory runs out; what the output does not take is left to its Close.

Losses WritePdf(const ByteSink& output, std::span<const PageToWrite> pages,
                const WriteSettings& settings);
// REQUIRES: one page.
Losses WritePng(const ByteSink& output, std::span<const PageToWrite> pages,
                const WriteSettings& settings);

}  // namespace orxprint
