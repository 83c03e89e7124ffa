#include "orxprint/Thumbnail.h"

#include <cmath>
#include <exception>
#include <memory>

#include "drawing/Base64.h"
#include "drawing/PageFilter.h"
#include "drawing/PngPicture.h"
#include "drawing/ShapeGatherer.h"

namespace orxprint {

namespace {

using namespace orxdrawing;

constexpr int kMostPixels = 240;

PngSettings SettingsFor(Units units) {
  PngSettings settings;
  settings.pointsPerUnit = units.pointsPerUnit;
  settings.mostWidth = kMostPixels;
  settings.mostHeight = kMostPixels;
  return settings;
}

// Everything that the thread of the run touches.
struct Desk {
  Desk(const Box& area, std::vector<bool> starts, Units units)
      : picture(SettingsFor(units), [this](std::string_view bytes) { text += encoder.Add(bytes); }),
        filter(picture.BeginPage({area, ""}), PageFilter::Pages::First, std::move(starts)),
        gatherer(filter) {}

  std::string text;
  Base64Encoder encoder;
  PngPicture picture;
  PageFilter filter;
  ShapeGatherer gatherer;
};

}  // namespace

std::string MakeThumbnail(Session& session, const Box& area, Units units) {
  const bool isArea = std::isfinite(area.Width()) && std::isfinite(area.Height()) &&
                      area.Width() > 0 && area.Height() > 0;
  if (!isArea) return "";
  try {
    const auto desk = std::make_shared<Desk>(area, session.Source().Comments().pageStarts, units);
    session.StopJudging();
    session.Draw(PageSelection::All(), session.NewControl(),
                 std::shared_ptr<ShapeGatherer>(desk, &desk->gatherer));
    desk->gatherer.Finish();
    desk->picture.Finish();
    return desk->text + desk->encoder.Finish();
  } catch (const std::runtime_error&) {
    return "";  // the page says that there is none
  }
}

}  // namespace orxprint
