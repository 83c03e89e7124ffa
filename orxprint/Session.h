// A document, the plug-in that interprets it and the limits on both, as one thing: it can be asked,
// drawn and counted. A time limit that was given is one clock for all that is done for the
// document, from the moment that the session is opened; the usual one runs for the interpreter
// only, from the end of reading what can be read only once, and stands while a run waits for a
// reader.
//
// Each of them is a run on a thread of its own in which an interpreter is built, used and deleted.
// The session keeps what ended them early. They throw Failure when there could be no run or the
// document could not be read as it was; Stopped when nothing of the run can be used.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/PageAnswers.h"
#include "drawing/PageAreas.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXPrintInterpreter.h"
#include "orxprint/CommandLine.h"
#include "orxprint/Document.h"
#include "orxprint/Failure.h"
#include "orxprint/GuardedGenerator.h"
#include "orxprint/Plugin.h"
#include "orxprint/RunControl.h"

namespace orxprint {

using orxdrawing::kMostAskedPages;
using orxdrawing::PageAnswers;
using orxdrawing::PageSize;

// The pages that a pass draws.
struct PageSelection {
  std::uint8_t allPages = 1;
  std::uint32_t page = 0;  // matters only without allPages

  static PageSelection All() { return {}; }
  static PageSelection Only(std::uint32_t page) { return {0, page}; }
};

// The unit of everything that interpreters answer and draw, as the environment sets it now.
struct Units {
  double pointsPerUnit = 72.0 / 25.4;

  static Units FromEnvironment();
  [[nodiscard]] double MillimetresPerUnit() const { return pointsPerUnit * 25.4 / 72.0; }
};

class Session {
public:
  // Opens the document, looks through it and warns when it does not begin like one. Throws Failure;
  // or Stopped, when a limit was met before the end of the document was seen.
  Session(const Plugin& itsPlugin, const CommonOptions& options, const std::string& file);

  [[nodiscard]] const Document& Source() const { return *document; }
  [[nodiscard]] const std::string& Name() const { return document->Name(); }
  // The limit that was given, if one was, and the end of the time that it leaves.
  [[nodiscard]] std::optional<double> GivenLimit() const { return givenLimit; }
  [[nodiscard]] const Deadline& GivenEnd() const { return givenEnd; }
  // Some time more, for what is to be done with the work that a limit stopped.
  void Extend(double seconds);

  // The control of a run that is to be started, under the session's limits.
  [[nodiscard]] std::shared_ptr<RunControl> NewControl() const {
    return std::make_shared<RunControl>(workEnd);
  }
  // The same with half of the time that is left, for a run before another one.
  [[nodiscard]] std::shared_ptr<RunControl> NewControlForHalf() const;

  // From now on what is drawn is judged, all of it together.
  void JudgeDrawing() { judge = std::make_shared<orxdrawing::LossJudge>(); }
  void StopJudging() { judge.reset(); }
  // What was found; none unless drawing was judged and the plug-in tells what it leaves out.
  [[nodiscard]] orxdrawing::Findings* Found() { return judge ? &judge->Found() : nullptr; }

  // Answers about the document and the pages that `choose` names when it knows the former; there
  // may be fewer pages when a limit stopped the asking.
  using ChoosePages = std::function<std::vector<std::uint32_t>(const PageAnswers& answers)>;
  [[nodiscard]] PageAnswers Ask(ChoosePages choose);
  [[nodiscard]] PageAnswers Ask();
  // What the pages of these numbers show, as far as it is stated; asks where that helps.
  [[nodiscard]] orxdrawing::PageAreas AreasOf(orxdrawing::Area area, Units units,
                                              const std::vector<std::uint32_t>& numbers);

  // Draws on a generator that nobody else touches until this returns.
  template <typename Generator>
  void Draw(PageSelection selection, std::shared_ptr<RunControl> control,
            std::shared_ptr<Generator> generator) {
    struct Guarded {
      Guarded(RunControl& running, std::shared_ptr<Generator> inner)
          : generator(std::move(inner)), guard(running, *generator) {}
      std::shared_ptr<Generator> generator;
      GuardedGenerator<Generator> guard;
    };
    const auto guarded = std::make_shared<Guarded>(*control, std::move(generator));
    DrawUnguarded(selection, std::move(control),
                  std::shared_ptr<PrintGenerator>(guarded, &guarded->guard), judge);
  }
  // The same without a guard between: for a generator that throws nothing and keeps nothing.
  void DrawUnguarded(PageSelection selection, std::shared_ptr<RunControl> control,
                     std::shared_ptr<PrintGenerator> generator,
                     std::shared_ptr<orxdrawing::LossJudge> itsJudge = {});

  // The lines of the interpreter's counts; none when the run was left behind.
  [[nodiscard]] std::optional<ORXListValORXUnicodeString> Count();

  // Why a run was stopped, and the limit of the interpreter that one met: the first of each.
  [[nodiscard]] const std::optional<Stop>& Stopping() const { return stop; }
  [[nodiscard]] const std::optional<ORXPassEnd>& LimitMet() const { return limitMet; }
  // Learns what stopped a run, or what was done under its control after it was over. Throws
  // Failure.
  void TakeEnd(RunControl& control);
  // Tells the person what of that was not told yet. Returns the status that all of it comes to.
  Status TellShortfalls();

private:
  using Work = std::function<void(ORXPrintInterpreter&)>;
  void Interpret(std::shared_ptr<RunControl> control, Work work);

  const Plugin& plugin;
  std::optional<double> givenLimit;
  Deadline givenEnd;
  Deadline workEnd;  // of the runs
  std::shared_ptr<const Document> document;
  std::shared_ptr<orxdrawing::LossJudge> judge;
  std::optional<Stop> stop;
  std::optional<ORXPassEnd> limitMet;
  std::vector<std::string> untold;
};

}  // namespace orxprint
