#include "orxprint/Session.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <utility>

#include "framework/TextStream.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXSystem.h"
#include "orxprint/Failure.h"
#include "orxprint/Messages.h"

namespace orxprint {

namespace {

void LetWatch(ORXPrintInterpreter& interpreter, RunControl& control) {
  auto* watchable = dynamic_cast<ORXWatchable*>(&interpreter);
  if (!watchable) return;
  control.watched = watchable;
  watchable->SetWatcher(&control);
  if (control.WantsNotes()) watchable->SetListener(&control);
}

}  // namespace

Session::Session(const Plugin& itsPlugin, const CommonOptions& options, const std::string& file)
    : plugin(itsPlugin),
      givenLimit(options.timeLimit.Given()),
      givenEnd(DeadlineIn(givenLimit)),
      workEnd(givenEnd) {
  RunControl control(givenEnd);
  document = std::make_shared<const Document>(file, control);
  if (!options.timeLimit.isGiven) workEnd = DeadlineIn(options.timeLimit.seconds);
  if (!document->Comments().startsLikePostScript) {
    Warn(file, "does not begin with %! as PostScript does");
  }
}

void Session::Extend(double seconds) {
  for (Deadline* end : {&givenEnd, &workEnd}) {
    if (*end) *end = std::max(*end, DeadlineIn(seconds));
  }
}

std::shared_ptr<RunControl> Session::NewControlForHalf() const {
  Deadline half = workEnd;
  if (half) *half -= std::max(Clock::duration::zero(), *half - Clock::now()) / 2;
  return std::make_shared<RunControl>(half);
}

void Session::Interpret(std::shared_ptr<RunControl> control, Work work) {
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
  TakeEnd(*control);
}

void Session::TakeEnd(RunControl& control) {
  const std::optional<Stop> reason = control.Reason();
  if (control.judge && !control.watched && !reason) StopJudging();
  if (reason == Stop::ReadFailed || reason == Stop::HostFailed) throw Failure(Describe(*reason));
  if (reason && !stop) {
    stop = reason;
    untold.push_back(Describe(*reason));
  }
  const std::optional<ORXPassEnd> met = control.LimitMet();
  if (met && !limitMet) {
    limitMet = met;
    untold.push_back(Describe(*met));
  }
}

Status Session::TellShortfalls() {
  for (const std::string& text : untold) Tell(Name(), text);
  untold.clear();
  return stop || limitMet ? Status::LimitReached : Status::Done;
}

PageAnswers Session::Ask() {
  return Ask([](const PageAnswers&) { return std::vector<std::uint32_t>(); });
}

orxdrawing::PageAreas Session::AreasOf(orxdrawing::Area area, Units units,
                                       const std::vector<std::uint32_t>& numbers) {
  return {document->Comments(), area, units.pointsPerUnit, numbers,
          [this](const std::vector<std::uint32_t>& pages) {
            return Ask([&pages](const PageAnswers&) { return pages; });
          }};
}

PageAnswers Session::Ask(ChoosePages choose) {
  struct Desk {
    const Plugin& plugin;
    std::shared_ptr<const Document> document;
    std::shared_ptr<RunControl> control;
    ChoosePages choose;
    orxframework::TextStream text;
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
        orxdrawing::Questioner questioner(
            desk->document->Comments().lines, *interpreter,
            [&text = desk->text](std::string_view shown) { text.Show(shown); });
        PageAnswers& answers = desk->answers = questioner.AskAboutDocument();
        for (const std::uint32_t page : desk->choose(answers)) {
          if (!desk->control->MayGoOn()) break;
          answers.pages.push_back(questioner.AskAboutPage(page));
        }
        desk->isAnswered = true;
      },
      [&progress] { progress.Show(); });
  TakeEnd(*control);
  return desk->isAnswered ? std::move(desk->answers) : PageAnswers{};
}

void Session::DrawUnguarded(PageSelection selection, std::shared_ptr<RunControl> control,
                            std::shared_ptr<PrintGenerator> generator,
                            std::shared_ptr<orxdrawing::LossJudge> itsJudge) {
  RunControl& running = *control;
  running.judge = std::move(itsJudge);
  Interpret(std::move(control), [selection, generator = std::move(generator),
                                 &running](ORXPrintInterpreter& interpreter) {
    interpreter.SetAllPages(selection.allPages);
    interpreter.SetCurrentPage(selection.page);
    if (interpreter.Generate(generator.get()) == 0) running.StopNow(Stop::GaveUp);
  });
}

std::optional<ORXListValORXUnicodeString> Session::Count() {
  struct Counting {
    ORXListValORXUnicodeString lines;
    std::atomic<bool> isOver = false;  // nothing is changed any more
  };
  const auto counting = std::make_shared<Counting>();
  Interpret(NewControl(), [counting](ORXPrintInterpreter& interpreter) {
    interpreter.CollectStatistics(counting->lines);
    counting->isOver = true;
  });
  if (!counting->isOver) return std::nullopt;
  return std::move(counting->lines);
}

Units Units::FromEnvironment() {
  const char* value = ORXGetEnv("ORXPrintOpenPSToMM");
  if (value && std::string_view(value) == "0") return {1.0};
  return {};
}

}  // namespace orxprint
