#include "orxprint/Checking.h"

#include <algorithm>
#include <array>

#include "drawing/FileChecks.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

using orxdrawing::Finding;
using orxdrawing::Loss;
using orxdrawing::LossPlace;
using orxdrawing::Severity;

std::map<std::uint64_t, orxdrawing::SourceLine> FindLines(const Document& document,
                                                          const std::vector<Finding>& findings) {
  std::vector<std::uint64_t> places;
  for (const Finding& finding : findings) {
    for (const LossPlace& place : finding.places) {
      places.push_back(place.token);
      if (place.definition != LossPlace::kNoPlace) places.push_back(place.definition);
    }
  }
  orxdrawing::LineFinder finder(std::move(places));
  std::array<char, 1 << 16> buffer;
  for (std::uint64_t place = 0; finder.WantsMore();) {
    const std::size_t count = document.Read(place, buffer.data(), buffer.size());
    if (count == 0) break;
    finder.Feed({buffer.data(), count});
    place += count;
  }
  return finder.Lines();
}

// Behind "%%Creator:" near the document's beginning.
std::string FindProducer(const Document& document) {
  constexpr std::string_view kKey = "%%Creator:";
  std::array<char, 4096> buffer;
  std::string_view text(buffer.data(), document.Read(0, buffer.data(), buffer.size()));
  const std::size_t begin = text.find(kKey);
  if (begin == std::string_view::npos) return {};
  text.remove_prefix(begin + kKey.size());
  text = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return std::string(text);
}

bool MetLimit(const CheckReport& report) {
  return std::ranges::any_of(report.findings,
                             [](const Finding& finding) { return finding.loss == Loss::LimitMet; });
}

}  // namespace

CheckReport MakeReport(Session& session) {
  const Document& document = session.Source();
  const PageAnswers answers = session.Ask(orxdrawing::PagesToCheck);
  orxdrawing::Findings& found = *session.Found();
  orxdrawing::CheckFile({document.Comments(), document.Offset() > 0, answers},
                        Units::FromEnvironment().pointsPerUnit, found);
  CheckReport report;
  report.file = session.Name();
  report.producer = FindProducer(document);
  report.box = document.Comments().box;
  report.summary = found.summary;
  report.findings = found.Sorted();
  report.lines = FindLines(document, report.findings);
  report.offset = document.Offset();
  report.stop = session.Stopping();
  report.limitMet = session.LimitMet();
  return report;
}

std::vector<std::string> KindsIn(const CheckReport& report) {
  std::vector<std::string> kinds;
  for (const Finding& finding : VisibleFindings(report)) {
    const std::string name(KindOf(finding.loss).name);
    if (std::ranges::find(kinds, name) == kinds.end()) kinds.push_back(name);
  }
  return kinds;
}

LostContent TellLostContent(Session& session, const RenderOptions& options) {
  if (!session.Found()) return {};
  const CheckReport report = MakeReport(session);
  const std::vector<std::string> lines = FindingLines(report);
  if (!lines.empty() && options.telling != Telling::ErrorsOnly) {
    Warn(session.Name(), std::to_string(lines.size()) + (lines.size() == 1 ? " kind" : " kinds") +
                             " of content lost or different (orxprint check " + session.Name() +
                             ")");
    for (const std::string& line : lines) {
      if (options.telling == Telling::All) Tell(session.Name(), line);
    }
  }
  const bool isGrave = GravestOf(report) >= Severity::Missing;
  const Status status = MetLimit(report)            ? Status::LimitReached
                        : options.strict && isGrave ? Status::ContentLost
                                                    : Status::Done;
  return {status, KindsIn(report)};
}

}  // namespace orxprint
