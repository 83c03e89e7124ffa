// The command trace: the interpreter's calls as text on standard output.
#include <cerrno>
#include <chrono>
#include <memory>

#include "drawing/TraceGenerator.h"
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"
#include "orxprint/Session.h"
#include "orxprint/StandardOutput.h"

namespace orxprint {

namespace {

using orxdrawing::TraceGenerator;

// Writes to standard output, and stops the run when that takes no more.
class TraceSink {
public:
  TraceSink(RunControl& runControl, const Deadline& deadline)
      : control(runControl), readersCount(deadline.has_value()), output(deadline) {}

  void operator()(std::string_view text) {
    bool isTaken = false;
    const auto write = [&] { isTaken = output.Write(text); };
    if (readersCount) {
      write();
    } else {
      control.WaitUncounted(write);
    }
    if (isTaken) return;
    control.StopNow(output.Error() == ETIMEDOUT ? Stop::TimeLimit : Stop::OutputFailed);
  }
  void RequireSuccess() const { output.RequireSuccess(); }

private:
  RunControl& control;
  bool readersCount;  // as time of the run
  StandardOutput output;
};

// What is still on its way when the time is up ends with a whole line if its reader takes it.
Deadline WithTimeForTheRest(Deadline end) {
  constexpr std::chrono::seconds kForTheRest(1);
  if (end) *end += kForTheRest;
  return end;
}

void TraceDocument(Session& session, const TraceOptions& options) {
  const auto control = session.NewControl();
  const auto sink = std::make_shared<TraceSink>(*control, WithTimeForTheRest(session.GivenEnd()));
  const auto generator = std::make_shared<TraceGenerator>(
      options.samples ? TraceGenerator::Samples::Written : TraceGenerator::Samples::Summary,
      [control, sink](std::string_view text) { (*sink)(text); });
  control->onReport = [&lines = *generator](const ORXUnicodeString& line) { lines.Report(line); };
  const PageSelection selection =
      options.page ? PageSelection::Only(*options.page) : PageSelection::All();
  try {
    session.Draw(selection, control, generator);
  } catch (const Failure&) {
    generator->Flush();
    throw;
  }
  generator->Flush();
  sink->RequireSuccess();
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
  const auto work = [&] {
    Session session(plugin, common, options.file);
    if (options.page) WarnOfMissingPage(session, *options.page);
    TraceDocument(session, options);
    return session.TellShortfalls();
  };
  return Attempt(options.file, work).status;
}

}  // namespace orxprint
