// The command trace: the interpreter's calls as text on standard output.
#include <cerrno>
#include <chrono>
#include <memory>

#include "drawing/PageSummary.h"
#include "drawing/TraceGenerator.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/PageChoice.h"
#include "orxprint/Session.h"
#include "orxprint/ShapeRuns.h"
#include "orxprint/SourcePlaces.h"
#include "orxprint/StandardOutput.h"
#include "orxprint/SummaryText.h"

namespace orxprint {

namespace {

using orxdrawing::PageSummary;
using orxdrawing::PageSummarySink;
using orxdrawing::TraceGenerator;

// Writes to standard output, and stops the run when that takes no more.
class TraceSink {
public:
  explicit TraceSink(const Deadline& deadline)
      : readersCount(deadline.has_value()), output(deadline) {}

  // What is written from now on comes from that run.
  void BeginRun(std::shared_ptr<RunControl> runControl) { control = std::move(runControl); }

  void operator()(std::string_view text) {
    bool isTaken = false;
    const auto write = [&] { isTaken = output.Write(text); };
    if (readersCount || !control) {
      write();
    } else {
      control->WaitUncounted(write);
    }
    if (isTaken || !control) return;
    control->StopNow(output.Error() == ETIMEDOUT ? Stop::TimeLimit : Stop::OutputFailed);
  }
  void RequireSuccess() const { output.RequireSuccess(); }
  [[nodiscard]] bool HasFailed() const { return output.Error() != 0; }

private:
  std::shared_ptr<RunControl> control;
  bool readersCount;  // as time of the run
  StandardOutput output;
};

// What is still on its way when the time is up ends with a whole line if its reader takes it.
Deadline WithTimeForTheRest(Deadline end) {
  constexpr std::chrono::seconds kForTheRest(1);
  if (end) *end += kForTheRest;
  return end;
}

// The trace of one document. A run that is left behind keeps it.
struct DocumentTrace : std::enable_shared_from_this<DocumentTrace> {
  DocumentTrace(const Session& session, const TraceOptions& options, bool isOneOfMany)
      : sink(WithTimeForTheRest(session.GivenEnd())),
        places(session.Source()),
        lines(SettingsOf(options), [this](std::string_view text) { sink(text); }) {
    if (isOneOfMany || options.json) lines.BeginDocument(session.Name());
  }

  TraceGenerator::Settings SettingsOf(const TraceOptions& options) {
    TraceGenerator::Settings settings;
    settings.calls = options.calls;
    if (options.samples) settings.samples = TraceGenerator::Samples::Written;
    if (options.json) settings.form = TraceGenerator::Form::Json;
    if (options.where) settings.origin = [this] { return places.Locate(PlaceOf(*control)); };
    return settings;
  }

  void BeginRun(const std::shared_ptr<RunControl>& runControl) {
    control = runControl;
    sink.BeginRun(runControl);
    control->onReport = [this](const ORXUnicodeString& line) { lines.Report(line); };
  }

  std::shared_ptr<RunControl> control;
  TraceSink sink;
  SourcePlaces places;
  TraceGenerator lines;
};

std::vector<PageSelection> PassesOf(Session& session, const TraceOptions& options) {
  if (options.page) return {PageSelection::Only(*options.page)};
  return ChoosePasses(session, options.pages);
}

// Each page of a list begins with a line of its own, as in a trace of all pages.
void TracePasses(Session& session, const TraceOptions& options, DocumentTrace& trace) {
  std::uint32_t before = 0;
  for (const PageSelection& pass : PassesOf(session, options)) {
    if (before > 0) trace.lines.NextPass(pass.page);
    if (before == 0 && pass.allPages == 0) trace.lines.SetPage(pass.page);
    before = pass.page;
    const auto control = session.NewControl();
    trace.BeginRun(control);
    const auto owner = trace.shared_from_this();
    session.Draw(pass, control, std::shared_ptr<TraceGenerator>(owner, &owner->lines));
    if (options.where && !control->watched) {
      throw Failure("the plug-in does not tell where it is: --where cannot be answered");
    }
    if (session.Stopping()) return;
  }
}

void TraceDocument(Session& session, const TraceOptions& options, bool& isOutputOpen) {
  const auto trace = std::make_shared<DocumentTrace>(session, options, options.files.size() > 1);
  const auto flush = [&] {
    trace->lines.Flush();
    isOutputOpen = !trace->sink.HasFailed();
  };
  try {
    TracePasses(session, options, *trace);
  } catch (const Failure&) {
    flush();
    throw;
  }
  flush();
  trace->sink.RequireSuccess();
}

void SummariseDocument(Session& session, const TraceOptions& options, bool& isOutputOpen) {
  const auto summary = std::make_shared<PageSummarySink>(Units::FromEnvironment().pointsPerUnit);
  DrawShapes(session, PassesOf(session, options), summary);
  TraceSink sink(WithTimeForTheRest(session.GivenEnd()));
  TraceGenerator::Settings settings;
  if (options.json) settings.form = TraceGenerator::Form::Json;
  TraceGenerator heading(settings, [&sink](std::string_view text) { sink(text); });
  if (options.files.size() > 1 || options.json) heading.BeginDocument(session.Name());
  heading.Flush();
  for (const PageSummary& page : summary->Pages()) {
    sink(options.json ? SummaryForPrograms(page) : SummaryForPeople(page));
  }
  isOutputOpen = !sink.HasFailed();
  sink.RequireSuccess();
}

// A page that no page comment begins is no error, but hardly what was meant.
void WarnOfMissingPage(const Session& session, std::uint32_t page) {
  const std::uint32_t count = session.Source().Comments().pageComments;
  if (count == 0 || (page >= 1 && page <= count)) return;
  Warn(session.Name(), "there is no page " + std::to_string(page) + ": the document has " +
                           std::to_string(count) + (count == 1 ? " page" : " pages"));
}

}  // namespace

Status Trace(const Plugin& plugin, const CommonOptions& common, const TraceOptions& options) {
  Status gravest = Status::Done;
  bool isOutputOpen = true;
  for (const std::string& file : options.files) {
    const auto work = [&] {
      Session session(plugin, common, file);
      if (options.page) WarnOfMissingPage(session, *options.page);
      options.summary ? SummariseDocument(session, options, isOutputOpen)
                      : TraceDocument(session, options, isOutputOpen);
      return session.TellShortfalls();
    };
    gravest = Gravest(gravest, Attempt(file, work).status);
    // Nobody reads what the other files would say either.
    if (!isOutputOpen) break;
  }
  return gravest;
}

}  // namespace orxprint
