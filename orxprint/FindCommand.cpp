// The command find: what touches a place of the paper, and which lines drew it.
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "drawing/Picking.h"
#include "orxprint/Commands.h"
#include "orxprint/JsonText.h"
#include "orxprint/Messages.h"
#include "orxprint/PageChoice.h"
#include "orxprint/Session.h"
#include "orxprint/ShapeRuns.h"
#include "orxprint/ShapeText.h"
#include "orxprint/SourcePlaces.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

using orxdrawing::PickingSink;
using orxdrawing::Point;
using orxdrawing::ShapeRecord;

constexpr int kJsonVersion = 1;

// Pages in the order in which they were drawn, and on each the topmost shape first.
std::vector<ShapeRecord> TopmostFirst(const PickingSink& picked) {
  std::vector<ShapeRecord> shapes(picked.Found().begin(), picked.Found().end());
  for (auto start = shapes.begin(); start != shapes.end();) {
    const auto end = std::find_if(start, shapes.end(), [page = start->page](const auto& shape) {
      return shape.page != page;
    });
    std::reverse(start, end);
    start = end;
  }
  return shapes;
}

std::string ForPeople(const std::vector<ShapeRecord>& shapes, SourcePlaces& places) {
  std::string text;
  for (const ShapeRecord& shape : shapes) {
    text += DescribePlace(shape, places) + ": " + orxdrawing::Describe(shape) + "\n";
  }
  return text;
}

std::string ForPrograms(const Session& session, const Point& place,
                        const std::vector<ShapeRecord>& shapes, const PickingSink& picked,
                        SourcePlaces& places) {
  Json list = Json::array();
  for (const ShapeRecord& shape : shapes) list.push_back(ShapeForPrograms(shape, places));
  Json object = {{"version", kJsonVersion},
                 {"file", session.Name()},
                 {"at", {{"xMm", Rounded(place.x)}, {"yMm", Rounded(place.y)}}},
                 {"shapes", std::move(list)}};
  if (picked.LeftOut() > 0) object["shapesLeftOut"] = picked.LeftOut();
  return Dump(object, 2);
}

Status FindIn(Session& session, const FindOptions& options) {
  const Units units = Units::FromEnvironment();
  const double scale = options.place.unitInMillimetres.value_or(units.MillimetresPerUnit());
  const Point place{options.place.at.x * scale, options.place.at.y * scale};
  const auto picked =
      std::make_shared<PickingSink>(place, options.withinMillimetres, units.pointsPerUnit);
  DrawShapes(session, ChoosePasses(session, options.pages), picked);
  const std::vector<ShapeRecord> shapes = TopmostFirst(*picked);
  SourcePlaces places(session.Source());
  StandardOutput output(session.GivenEnd());
  output.Write(options.json ? ForPrograms(session, place, shapes, *picked, places)
                            : ForPeople(shapes, places));
  output.RequireSuccess();
  if (shapes.empty()) Warn(session.Name(), "nothing was drawn there");
  if (!shapes.empty()) WarnOfMissingPlace(session, shapes[0].place);
  if (picked->LeftOut() > 0) {
    Warn(session.Name(), "of the shapes drawn first " + std::to_string(picked->LeftOut()) +
                             " are left out: choose fewer pages (--pages)");
  }
  return session.TellShortfalls();
}

}  // namespace

Status Find(const Plugin& plugin, const CommonOptions& common, const FindOptions& options) {
  return Attempt(options.file,
                 [&] {
                   Session session(plugin, common, options.file);
                   return FindIn(session, options);
                 })
      .status;
}

}  // namespace orxprint
