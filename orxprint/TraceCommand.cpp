// The command trace: the interpreter's calls as text on standard output.
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "drawing/TraceGenerator.h"
#include "orxprint/Commands.h"
#include "orxprint/InterpreterRun.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

using orxdrawing::TraceGenerator;

// Writes to standard output, and stops the run when that takes no more.
class StandardOutputSink {
public:
  explicit StandardOutputSink(RunControl& runControl) : control(runControl) {}

  void operator()(std::string_view text) {
    if (error) return;
    const bool isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (isWritten) return;
    error = errno;
    control.StopNow(Stop::OutputFailed);
  }
  void RequireSuccess() const {
    if (!error) return;
    throw Failure("cannot write standard output: " + std::generic_category().message(error));
  }

private:
  RunControl& control;
  int error = 0;
};

std::optional<Stop> TraceDocument(const Plugin& plugin, const Document& document,
                                  const Limits& limits, const TraceOptions& options) {
  const auto control = std::make_shared<RunControl>();
  const auto output = std::make_shared<StandardOutputSink>(*control);
  const auto generator = std::make_shared<TraceGenerator>(
      options.samples ? TraceGenerator::Samples::Written : TraceGenerator::Samples::Summary,
      [control, output](std::string_view text) { (*output)(text); });
  control->onReport = [&lines = *generator](const ORXUnicodeString& line) { lines.Report(line); };
  const PageSelection selection =
      options.page ? PageSelection::Only(*options.page) : PageSelection::All();
  const std::optional<Stop> stop =
      DrawDocument(plugin, document, selection, limits, control, generator);
  generator->Flush();
  output->RequireSuccess();
  return stop;
}

}  // namespace

Status Trace(const Plugin& plugin, const CommonOptions& common, const TraceOptions& options) {
  const auto work = [&] {
    const Limits limits = Limits::StartingNow(common.timeLimit);
    const Document document = OpenDocument(options.file, limits);
    const std::optional<Stop> stop = TraceDocument(plugin, document, limits, options);
    if (stop) throw Stopped{*stop};
    return Status::Done;
  };
  return Attempt(options.file, work).status;
}

}  // namespace orxprint
