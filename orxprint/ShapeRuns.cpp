#include "orxprint/ShapeRuns.h"

#include <utility>
#include <vector>

#include "drawing/PageFilter.h"
#include "orxprint/Messages.h"
#include "orxprint/SourcePlaces.h"

namespace orxprint {

namespace {

using orxdrawing::PageFilter;
using orxdrawing::PlacedGatherer;
using orxdrawing::PlacedSink;
using orxdrawing::PlaceTeller;

// Everything that the thread of a pass touches.
struct Desk {
  Desk(std::shared_ptr<PlacedSink> itsSink, PageFilter::Pages pages, std::vector<bool> starts,
       std::shared_ptr<RunControl> itsControl)
      : sink(std::move(itsSink)),
        control(std::move(itsControl)),
        filter(*sink, pages, std::move(starts)),
        teller(filter, *sink, [&running = *control] { return PlaceOf(running); }),
        gatherer(teller) {}

  std::shared_ptr<PlacedSink> sink;
  std::shared_ptr<RunControl> control;
  PageFilter filter;
  PlaceTeller teller;
  PlacedGatherer gatherer;
};

}  // namespace

void DrawShapes(Session& session, const std::vector<PageSelection>& passes,
                const std::shared_ptr<PlacedSink>& sink) {
  for (const PageSelection& pass : passes) {
    const bool isOne = pass.allPages == 0;
    const auto control = session.NewControl();
    const auto desk =
        std::make_shared<Desk>(sink, isOne ? PageFilter::Pages::First : PageFilter::Pages::All,
                               session.Source().Comments().pageStarts, control);
    sink->BeginPage(isOne ? pass.page : 1);
    session.Draw(pass, control, std::shared_ptr<PlacedGatherer>(desk, &desk->gatherer));
    desk->gatherer.Finish();
    desk->filter.Finish();
    if (session.Stopping()) return;
  }
}

void WarnOfMissingPlace(const Session& session, const ORXPlace& place) {
  if (place.token != ORXPlace::kNone) return;
  Warn(session.Name(), "the plug-in does not tell where it is: lines are left out");
}

}  // namespace orxprint
