#include "orxprint/DrawnDocument.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>

#include "drawing/DrawnExtents.h"
#include "drawing/FindingWords.h"
#include "drawing/PageAreas.h"
#include "drawing/Picture.h"
#include "drawing/Text.h"
#include "orxprint/Checking.h"
#include "orxprint/Formats.h"
#include "orxprint/ShapeRuns.h"

namespace orxprint {

namespace {

using orxdrawing::EscapeForTerminal;
using orxdrawing::PageAreas;

constexpr Box kEmptyPage{0, 0, 595, 842};  // A4, for a page that says no size and draws nothing

// Writes each page as a file of its own.
class SvgPages final : public orxdrawing::PlacedSink {
public:
  SvgPages(PageAreas pageAreas, PictureSettings pictureSettings)
      : areas(std::move(pageAreas)), settings(std::move(pictureSettings)) {}

  // REQUIRES: no run is going on.
  std::deque<DrawnPage> Finish() {
    End();
    return std::move(pages);
  }
  [[nodiscard]] const orxdrawing::PictureLosses& Lost() const { return lost; }

  void BeginPage(std::uint32_t number) override {
    End();
    PlacedSink::BeginPage(number);
    pages.push_back({areas.Of(number).value_or(kEmptyPage), {}});
    DrawnPage& page = pages.back();
    picture = FindFormat("svg")->make(
        settings, [&svg = page.svg](std::string_view bytes) { svg.append(bytes); });
    sink = &picture->BeginPage({page.area, {}});
  }
  void Draw(const orxdrawing::StrokeShape& stroke) override { sink->Draw(stroke); }
  void Draw(const orxdrawing::FillShape& fill) override { sink->Draw(fill); }
  void Draw(const orxdrawing::ImageShape& image) override { sink->Draw(image); }

private:
  void End() {
    if (!picture) return;
    picture->Finish();
    lost.points += picture->Lost().points;
    picture.reset();
  }

  PageAreas areas;
  PictureSettings settings;
  std::deque<DrawnPage> pages;
  std::unique_ptr<orxdrawing::Picture> picture;  // of the last page
  orxdrawing::ShapeSink* sink = nullptr;
  orxdrawing::PictureLosses lost;
};

PageAreas FindAreas(Session& session, Units units) {
  std::vector<std::uint32_t> numbers(
      std::max<std::size_t>(session.Source().Comments().pageStarts.size(), 1));
  std::iota(numbers.begin(), numbers.end(), 1U);
  PageAreas areas = session.AreasOf(Area::Box, units, numbers);
  if (!areas.NeedMeasuring()) return areas;
  const auto drawn =
      std::make_shared<orxdrawing::DrawnExtents>(kMostAskedPages, units.pointsPerUnit);
  DrawShapes(session, {PageSelection::All()}, drawn);
  for (const std::uint32_t number : numbers) areas.TakeExtent(number, drawn->OfPage(number));
  return areas;
}

Json ItemOf(const orxdrawing::Finding& finding) {
  Json places = Json::array();
  for (const orxdrawing::LossPlace& place : finding.places) places.push_back(place.token);
  return {{"severity", TextOf(KindOf(finding.loss).severity)},
          {"meaning", EscapeForTerminal(MeaningOf(finding))},
          {"name", EscapeForTerminal(finding.name)},
          {"times", finding.count},
          {"places", std::move(places)}};
}

Json FindingsOf(Session& session, Units units) {
  if (!session.Found()) return nullptr;
  const CheckReport report = MakeReport(session);
  Json items = Json::array();
  for (const orxdrawing::Finding& finding : VisibleFindings(report)) {
    items.push_back(ItemOf(finding));
  }
  const std::string drawn = orxdrawing::DescribeDrawing(report.summary, units.MillimetresPerUnit());
  return {{"items", std::move(items)}, {"drawn", drawn}};
}

Json MessagesOf(const Session& session, const orxdrawing::PictureLosses& lost) {
  Json messages = Json::array();
  if (session.Stopping()) messages.push_back(Describe(*session.Stopping()));
  if (session.LimitMet()) messages.push_back(EscapeForTerminal(Describe(*session.LimitMet())));
  if (lost.points > 0) {
    messages.push_back("points without finite coordinates left out: " +
                       std::to_string(lost.points));
  }
  if (!session.Source().Comments().startsLikePostScript) {
    messages.push_back("does not begin with %! as PostScript does");
  }
  return messages;
}

}  // namespace

DrawnDocument DrawDocument(Session& session) {
  const Units units = Units::FromEnvironment();
  PictureSettings settings;
  settings.pointsPerUnit = units.pointsPerUnit;
  settings.mayGoOn = [end = session.GivenEnd()] { return !end || Clock::now() < *end; };
  const auto pages = std::make_shared<SvgPages>(FindAreas(session, units), std::move(settings));
  session.JudgeDrawing();
  DrawShapes(session, {PageSelection::All()}, pages);
  DrawnDocument drawn;
  drawn.pages = pages->Finish();
  Json findings = FindingsOf(session, units);
  drawn.report = {{"messages", MessagesOf(session, pages->Lost())},
                  {"findings", std::move(findings)}};
  return drawn;
}

}  // namespace orxprint
