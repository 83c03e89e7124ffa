// Passes whose shapes go to a sink that knows the page and the place of each.
//
// The session runs the passes and the sink is shared with the thread of the run, which may outlive
// the caller's interest in it.
#pragma once

#include <memory>
#include <vector>

#include "drawing/PlacedShapes.h"
#include "orxprint/Session.h"

namespace orxprint {

// Draws in these passes, until one is stopped. Pages are those of the document as `render` draws
// them. Throws Failure and Stopped.
void DrawShapes(Session& session, const std::vector<PageSelection>& passes,
                const std::shared_ptr<orxdrawing::PlacedSink>& sink);

// Tells the person that a plug-in does not say where it is, if a shape that it drew there shows
// that.
void WarnOfMissingPlace(const Session& session, const ORXPlace& place);

}  // namespace orxprint
