// A small picture of a document's first page.
//
// For pages that show many documents; a build without the library for PNG has none and says so by
// an empty text.
#pragma once

#include <string>

#include "drawing/Geometry.h"
#include "orxprint/Session.h"

namespace orxprint {

// The area, in points, as a PNG of at most 240 x 240 pixels: its bytes in base 64. Empty where no
// picture could be made. Interprets the document once more.
[[nodiscard]] std::string MakeThumbnail(Session& session, const Box& area, Units units);

}  // namespace orxprint
