#include "orxprint/InterpreterRun.h"

#include <string_view>
#include <utility>

#include "host/ORXSystem.h"
#include "orxprint/Failure.h"
#include "orxprint/GuardedHost.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

// Everything that the thread of a run touches, in the order in which it must come into being.
struct Session {
  Session(const Plugin& plugin, const Document& source, Reading reading,
          std::shared_ptr<RunControl> runControl)
      : document(source),
        control(std::move(runControl)),
        stream(reading == Reading::WholeDocument ? document.MakeStream()
                                                 : document.MakeCommentStream()),
        input(*control, *stream),
        interpreter(plugin.MakeInterpreter(input)) {}

  Document document;
  std::shared_ptr<RunControl> control;
  std::unique_ptr<orxframework::WindowedInputStream> stream;
  GuardedInputStream input;
  std::unique_ptr<ORXPrintInterpreter> interpreter;
};

}  // namespace

std::optional<Stop> UseInterpreter(const Plugin& plugin, const Document& document, Reading reading,
                                   const Limits& limits, std::shared_ptr<RunControl> control,
                                   std::function<void(ORXPrintInterpreter&)> work) {
  auto session = std::make_shared<Session>(plugin, document, reading, control);
  if (!session->interpreter) throw Failure("no interpreter could be made: out of memory");
  Progress progress(document.Name());
  Run(
      control,
      [session, work = std::move(work)] {
        work(*session->interpreter);
        session->interpreter.reset();
      },
      limits, [&progress](std::uint64_t calls) { progress.Show(calls); });
  return control->Reason();
}

std::optional<Stop> DrawDocument(const Plugin& plugin, const Document& document,
                                 PageSelection selection, const Limits& limits,
                                 std::shared_ptr<RunControl> control,
                                 std::shared_ptr<PrintGenerator> generator) {
  const auto guarded = std::make_shared<GuardedGenerator>(*control, *generator);
  return UseInterpreter(plugin, document, Reading::WholeDocument, limits, control,
                        [selection, control, generator, guarded](ORXPrintInterpreter& interpreter) {
                          interpreter.SetAllPages(selection.allPages);
                          interpreter.SetCurrentPage(selection.page);
                          if (interpreter.Generate(guarded.get()) == 0)
                            control->StopNow(Stop::GaveUp);
                        });
}

Units Units::FromEnvironment() {
  const char* value = ORXGetEnv("ORXPrintOpenPSToMM");
  if (value && std::string_view(value) == "0") return {1.0};
  return {};
}

}  // namespace orxprint
