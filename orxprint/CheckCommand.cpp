// The command check: what of documents will be lost or differ.
#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>

#include "drawing/NullGenerator.h"
#include "orxprint/BatchReport.h"
#include "orxprint/CheckPage.h"
#include "orxprint/Checking.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/OutputFile.h"
#include "orxprint/StandardOutput.h"
#include "orxprint/Thumbnail.h"

namespace orxprint {

namespace {

using orxdrawing::NullGenerator;
using orxdrawing::Severity;
using Json = nlohmann::ordered_json;

// Interprets the pages that were asked for; draws nothing.
void Interpret(Session& session, const CheckOptions& options) {
  const auto draw = [&session](PageSelection selection) {
    session.Draw(selection, session.NewControl(), std::make_shared<NullGenerator>());
  };
  session.JudgeDrawing();
  if (!options.pages) return draw(PageSelection::All());
  const std::uint32_t stated = session.Ask().count.value_or(0);
  const std::uint32_t count =
      stated > 0 ? stated : std::max(session.Source().Comments().pageComments, 1U);
  for (const std::uint32_t page : SelectPages(*options.pages, count)) {
    draw(PageSelection::Only(page));
    if (session.Stopping()) return;
  }
}

// Of the document's box, or of what is drawn.
void AddThumbnail(Session& session, CheckReport& report) {
  const Units units = Units::FromEnvironment();
  const double scale = units.pointsPerUnit;
  const Box& drawn = report.summary.extent;
  const Box extent = {drawn.left * scale, drawn.bottom * scale, drawn.right * scale,
                      drawn.top * scale};
  report.thumbnail = MakeThumbnail(session, report.box.value_or(extent), units);
}

Status CheckDocument(const Plugin& plugin, const CommonOptions& common, const CheckOptions& options,
                     CheckReport& report) {
  const std::string file = report.file;
  const Outcome outcome = Attempt(file, [&] {
    Session session(plugin, common, file);
    Interpret(session, options);
    if (!session.Found()) throw Failure("this plug-in does not tell what it leaves out");
    report = MakeReport(session);
    if (!options.html.empty()) AddThumbnail(session, report);
    return session.TellShortfalls();
  });
  report.error = outcome.problem;
  const bool metLimit = std::ranges::any_of(report.findings, [](const auto& finding) {
    return finding.loss == orxdrawing::Loss::LimitMet;
  });
  const Status found = metLimit                                 ? Status::LimitReached
                       : GravestOf(report) >= Severity::Missing ? Status::ContentLost
                                                                : Status::Done;
  return Gravest(outcome.status, found);
}

Status Print(std::string_view text, const CommonOptions& common) {
  StandardOutput output(DeadlineIn(common.timeLimit.Given()));
  if (output.Write(text)) return Status::Done;
  Tell("cannot write standard output: " + ErrorText(output.Error()));
  return output.Error() == ETIMEDOUT ? Status::LimitReached : Status::FileFailed;
}

Status WritePage(const std::vector<CheckReport>& reports, Units units, const CommonOptions& common,
                 const std::string& name) {
  return Attempt(name,
                 [&] {
                   OutputFile output(name);
                   output.Write(CheckPage(reports, units));
                   output.Close();
                   output.Commit(DeadlineIn(common.timeLimit.Given()));
                   return Status::Done;
                 })
      .status;
}

}  // namespace

Status Check(const Plugin& plugin, const CommonOptions& common, const CheckOptions& options) {
  const Units units = Units::FromEnvironment();
  BatchReport batch("checked", options.report);
  Json objects = Json::array();
  std::vector<CheckReport> reports;
  for (const ListedDocument& document : ListDocuments(options.documents)) {
    CheckReport report;
    report.file = document.name;
    const Status status = CheckDocument(plugin, common, options, report);
    batch.Add({report.file, status, false, report.error, {}, KindsIn(report)});
    if (!options.html.empty()) {
      reports.push_back(std::move(report));
    } else if (options.json) {
      objects.push_back(ForPrograms(report, units));
    } else if (report.error.empty()) {
      const Status printed = Print(ForPeople(report, units), common);
      // Nobody reads what the other files would say either.
      if (printed != Status::Done) return Gravest(batch.Gravest(), printed);
    }
  }
  batch.TellSum(true);
  const Status gravest = batch.Write();
  if (!options.html.empty()) {
    return Gravest(gravest, WritePage(reports, units, common, options.html));
  }
  if (!options.json) return gravest;
  // Names of files and operators may hold bytes that are not UTF-8.
  const std::string text = objects.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
  return Gravest(gravest, Print(text, common));
}

}  // namespace orxprint
