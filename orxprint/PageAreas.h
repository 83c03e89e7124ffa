// Which part of the plane a drawing shows.
//
// The last step before writing: pages have been drawn into display lists, the document has been
// asked about its boxes, and each page is now given the rectangle that its file shows, in points.
#pragma once

#include <vector>

#include "orxprint/CommandLine.h"
#include "orxprint/PageWriter.h"
#include "orxprint/Session.h"

namespace orxprint {

// Gives every page its area. The box is that of the page or the document; without one the page from
// its origin serves, and without that the extent of what is drawn. Throws Failure for a page that
// nothing gives an area.
void ChooseAreas(Session& session, Area area, Units units, std::vector<PageToWrite>& pages);

}  // namespace orxprint
