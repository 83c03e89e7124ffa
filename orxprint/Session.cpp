#include "orxprint/Session.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <utility>

#include "host/ORXInterpreterWatcher.h"
#include "host/ORXSystem.h"
#include "orxprint/Failure.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

void LetWatch(ORXPrintInterpreter& interpreter, RunControl& control) {
  if (auto* watchable = dynamic_cast<ORXWatchable*>(&interpreter)) watchable->SetWatcher(&control);
}

}  // namespace

Session::Session(const Plugin& itsPlugin, const CommonOptions& options, const std::string& file)
    : plugin(itsPlugin), timeLimit(options.timeLimit), deadline(DeadlineIn(timeLimit)) {
  RunControl control(deadline);
  document = std::make_shared<const Document>(file, control);
  if (!document->Comments().startsLikePostScript) {
    Warn(file, "does not begin with %! as PostScript does");
  }
}

void Session::Extend(double seconds) {
  if (deadline) deadline = std::max(*deadline, *DeadlineIn(seconds));
}

std::optional<Stop> Session::Interpret(std::shared_ptr<RunControl> control, Work work) const {
  // Everything that the thread of the run touches.
  struct Desk {
    const Plugin& plugin;
    std::shared_ptr<const Document> document;
    std::shared_ptr<RunControl> control;
    std::unique_ptr<DocumentStream> stream;
    Work work;
  };
  const std::shared_ptr<Desk> desk(
      new Desk{plugin, document, control, document->MakeStream(*control), std::move(work)});
  Progress progress(Name(), "interpreting");
  Run(
      control,
      [desk] {
        const auto interpreter = desk->plugin.MakeInterpreter(*desk->stream);
        LetWatch(*interpreter, *desk->control);
        if (desk->control->MayGoOn()) desk->work(*interpreter);
      },
      [&] { progress.Show(desk->stream->PercentRead()); });
  document->RequireUnchanged();
  return control->Reason();
}

PageAnswers Session::Ask() const {
  return Ask([](const PageAnswers&) { return std::vector<std::uint32_t>(); });
}

PageAnswers Session::Ask(ChoosePages choose) const {
  struct Desk {
    const Plugin& plugin;
    std::shared_ptr<const Document> document;
    std::shared_ptr<RunControl> control;
    ChoosePages choose;
    TextStream text;
    PageAnswers answers;
    std::atomic<bool> isAnswered = false;  // nothing is changed any more
  };
  const auto control = NewControl();
  const std::shared_ptr<Desk> desk(new Desk{plugin, document, control, std::move(choose), {}, {}});
  Progress progress(Name(), "asking about pages");
  Run(
      control,
      [desk] {
        const auto interpreter = desk->plugin.MakeInterpreter(desk->text);
        LetWatch(*interpreter, *desk->control);
        Questioner questioner(desk->document->Comments().lines, *interpreter, desk->text);
        PageAnswers& answers = desk->answers = questioner.AskAboutDocument();
        for (const std::uint32_t page : desk->choose(answers)) {
          if (!desk->control->MayGoOn()) break;
          answers.pages.push_back(questioner.AskAboutPage(page));
        }
        desk->isAnswered = true;
      },
      [&progress] { progress.Show(); });
  return desk->isAnswered ? std::move(desk->answers) : PageAnswers{};
}

std::optional<Stop> Session::DrawUnguarded(PageSelection selection,
                                           std::shared_ptr<RunControl> control,
                                           std::shared_ptr<PrintGenerator> generator) const {
  RunControl& running = *control;
  return Interpret(std::move(control), [selection, generator = std::move(generator),
                                        &running](ORXPrintInterpreter& interpreter) {
    interpreter.SetAllPages(selection.allPages);
    interpreter.SetCurrentPage(selection.page);
    if (interpreter.Generate(generator.get()) == 0) running.StopNow(Stop::GaveUp);
  });
}

Session::Counts Session::Count() const {
  struct Counting {
    ORXListValORXUnicodeString lines;
    std::atomic<bool> isOver = false;  // nothing is changed any more
  };
  const auto counting = std::make_shared<Counting>();
  Counts counts;
  counts.stop = Interpret(NewControl(), [counting](ORXPrintInterpreter& interpreter) {
    interpreter.CollectStatistics(counting->lines);
    counting->isOver = true;
  });
  if (counting->isOver) counts.lines = std::move(counting->lines);
  return counts;
}

Units Units::FromEnvironment() {
  const char* value = ORXGetEnv("ORXPrintOpenPSToMM");
  if (value && std::string_view(value) == "0") return {1.0};
  return {};
}

}  // namespace orxprint
