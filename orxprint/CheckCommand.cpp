// The command check: what of documents will be lost or differ.
#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>

#include "drawing/NullGenerator.h"
#include "orxprint/Batch.h"
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

// What is printed of one document, or put into the page.
std::string TextOf(const CheckReport& report, const CheckOptions& options, Units units) {
  if (!options.html.empty()) return CheckPageRow(report, units);
  if (options.json) {
    // Names of files and operators may hold bytes that are not UTF-8.
    return ForPrograms(report, units).dump(2, ' ', false, Json::error_handler_t::replace);
  }
  return report.error.empty() ? ForPeople(report, units) : "";
}

// All that is printed of many documents at the end.
std::string ArrayOf(const std::string& objects) {
  if (objects.empty()) return "[]\n";
  std::string text = "[\n  ";
  for (const char c : objects) {
    text += c;
    if (c == '\n') text += "  ";
  }
  return text + "\n]\n";
}

Status WritePage(const std::string& page, const CommonOptions& common, const std::string& name) {
  return Attempt(name,
                 [&] {
                   OutputFile output(name);
                   output.Write(page);
                   output.Close();
                   output.Commit(DeadlineIn(common.timeLimit.Given()));
                   return Status::Done;
                 })
      .status;
}

}  // namespace

Status Check(const Plugin& plugin, const CommonOptions& common, const CheckOptions& options) {
  const Units units = Units::FromEnvironment();
  const bool isPrintedAtOnce = !options.json && options.html.empty();
  BatchReport report("checked", options.report);
  Batch batch;
  batch.documents = ListDocuments(options.documents);
  batch.jobs = options.jobs;
  batch.work = [&](std::size_t i) {
    CheckReport found;
    found.file = batch.documents[i].name;
    const Status status = CheckDocument(plugin, common, options, found);
    return DocumentAnswer{{found.file, status, false, found.error, {}, KindsIn(found)},
                          TextOf(found, options, units)};
  };
  std::string gathered;
  std::size_t lossy = 0;
  Status printed = Status::Done;
  batch.take = [&](const DocumentAnswer& answer) {
    if (!answer.result.problem.empty() || !answer.result.losses.empty()) ++lossy;
    if (isPrintedAtOnce) {
      printed = Print(answer.text, common);
      // Nobody reads what the other files would say either.
      return printed == Status::Done;
    }
    if (options.json && !gathered.empty() && !answer.text.empty()) gathered += ",\n";
    gathered += answer.text;
    return true;
  };
  DoBatch(batch, report);
  if (printed != Status::Done) return Gravest(report.Gravest(), printed);
  report.TellSum(true);
  const Status gravest = report.Write();
  if (!options.html.empty()) {
    const std::string page = CheckPage(gathered, batch.documents.size(), lossy);
    return Gravest(gravest, WritePage(page, common, options.html));
  }
  return options.json ? Gravest(gravest, Print(ArrayOf(gathered), common)) : gravest;
}

}  // namespace orxprint
