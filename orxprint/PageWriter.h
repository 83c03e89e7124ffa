// Writes painted pages into files: one page of SVG or PNG, or any number of pages of PDF.
//
// The same pages give the same bytes: nothing of the moment or the machine is written.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "orxprint/CairoPainter.h"
#include "orxprint/OutputFile.h"
#include "orxprint/OutputNames.h"

namespace orxprint {

// A page of a display list, and the part of it to show.
struct PageToWrite {
  std::shared_ptr<const DisplayList> list;
  std::size_t page = 0;      // in the list, from 0
  std::uint32_t number = 1;  // in the document, from 1
  Box area;                  // in points
};

struct WriteSettings {
  Format format = Format::Svg;
  double dotsPerInch = 150;
  double pointsPerUnit = 72.0 / 25.4;
  // When painting has to be over; what is not painted by then is left out.
  std::optional<Clock::time_point> deadline;
};

// Writes the pages, of which there is one unless the format is PDF, and closes the output. Throws
// Failure when an area is too large or the output takes no more, std::bad_alloc when memory runs
// out.
Losses WritePages(OutputFile& output, std::span<const PageToWrite> pages,
                  const WriteSettings& settings);

}  // namespace orxprint
