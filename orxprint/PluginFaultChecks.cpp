// What a build of the plug-in does when its host fails, stops it or calls it in the middle.
#include <climits>
#include <optional>

#include "framework/PropertiesControl.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXListValORXUnicodeString.h"
#include "orxprint/PluginCandidate.h"
#include "orxprint/PluginChecks.h"
#include "orxprint/PluginTroubles.h"

namespace orxprint {

namespace {

const std::string_view kDocuments[] = {kShapes, kPages, kImage, kUnfinished};

void AskAll(Host& host, const std::string& when) {
  float width = 0.0F;
  float height = 0.0F;
  unsigned count = 0;
  ORXUnicodeString label;
  ORXListValORXUnicodeString lines;
  const auto take = [&](int answer) {
    Require(answer == 0 || answer == 1, "answers " + std::to_string(answer) + when);
  };
  take(host->GetPageSize(&width, &height));
  take(host->GetPageCount(&count));
  take(host->GetPageLabel(label));
  take(host->Generate(&host.Generator()));
  take(host->CollectStatistics(lines));
}

// Does every kind of pass and question over a stream in trouble. Returns the calls on the stream,
// which one that throws need not see in order: nobody can tell how much of a call it did.
int TryAll(const Candidate& candidate, std::string_view document, Trouble trouble, int firstCall) {
  TroubledStream stream(document, trouble, firstCall);
  std::optional<Host> host(std::in_place, candidate, stream);
  AskAll(*host, " when the input has trouble from call " + std::to_string(firstCall) + " on");
  const int calls = stream.Calls();
  if (trouble != Trouble::Throws) host->Destroy();
  host.reset();
  RequireEqual(stream.Calls(), calls, "calls on the input at the end of the interpreter:");
  return calls;
}

void TryTroubleAtEachCall(const Candidate& candidate, Trouble trouble) {
  for (const std::string_view document : kDocuments) {
    const int calls = TryAll(candidate, document, Trouble::None, 1);
    for (int first = 1; first <= calls; ++first) TryAll(candidate, document, trouble, first);
  }
  RequireSameCalls(Host(candidate, kShapes).Draw(), std::string(kShapesCalls));
}

std::string StandsFailingInput(const std::filesystem::path& file) {
  TryTroubleAtEachCall(Candidate(file), Trouble::Fails);
  return {};
}

std::string StandsThrowingInput(const std::filesystem::path& file) {
  TryTroubleAtEachCall(Candidate(file), Trouble::Throws);
  return {};
}

std::string StandsNonsenseAnswers(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : {kShapes, kPages, kImage}) {
    const std::string expected = Host(candidate, document).Draw();
    for (const int nonsense : {-1, 1, 255, INT_MIN, INT_MAX}) {
      Host host(candidate, document);
      ActingGenerator generator(host.Generator(), [nonsense] { return nonsense; });
      RequireEqual(host->Generate(&generator), 1, "Generate answers");
      host.RequireKept();
      RequireSameCalls(host.TakeCalls(), expected);
    }
  }
  return {};
}

std::string StandsThrowingGenerator(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const std::string expected = Host(candidate, kShapes).Draw();
  for (int throwing = 1; throwing <= 10; ++throwing) {
    Host host(candidate, kShapes);
    int calls = 0;
    ActingGenerator generator(host.Generator(),
                              [&] { return ++calls == throwing ? throw int{calls} : 0; });
    RequireEqual(host->Generate(&generator), 0, "when the generator throws, Generate answers");
    RequireEqual(calls, throwing, "when the generator throws, the number of calls is");
    host.Destroy();
  }
  RequireSameCalls(Host(candidate, kShapes).Draw(), expected);
  return {};
}

std::string RefusesReentry(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const std::string_view document : {kShapes, kPages, kImage}) {
    Host host(candidate, document);
    std::string accepted;
    ActingGenerator generator(host.Generator(), [&] {
      float width = 0.0F;
      float height = 0.0F;
      unsigned count = 0;
      ORXUnicodeString label;
      ORXListValORXUnicodeString lines;
      if (host->Generate(&host.Generator()) != 0) accepted = "Generate";
      if (host->CollectStatistics(lines) != 0) accepted = "CollectStatistics";
      if (host->GetPageSize(&width, &height) != 0) accepted = "GetPageSize";
      if (host->GetPageCount(&count) != 0) accepted = "GetPageCount";
      if (host->GetPageLabel(label) != 0) accepted = "GetPageLabel";
      return 0;
    });
    RequireEqual(host->Generate(&generator), 1, "Generate answers");
    Require(accepted.empty(), accepted + " does not answer 0 from inside a pass");
    host.RequireKept();
    RequireSameCalls(host.TakeCalls(), Host(candidate, document).Draw());
  }
  return {};
}

// Refuses from the question with this number on; 0 never does.
class RefusingWatcher final : public ORXInterpreterWatcher {
public:
  explicit RefusingWatcher(int itsRefusal) : refusal(itsRefusal) {}
  bool MayGoOn() noexcept override { return ++questions != refusal; }
  void PassEnded(const ORXPassEnd& end) noexcept override {
    ++ends;
    last = end.result;
  }

  int refusal;
  int questions = 0;
  int ends = 0;
  ORXPassResult last = ORXPassResult::Complete;
};

std::string StopsWhenTold(const std::filesystem::path& file) {
  const Candidate candidate(file);
  for (const int refusal : {1, 2, 3, 10}) {
    Host host(candidate, kEndless);
    auto* const watchable = dynamic_cast<ORXWatchable*>(host.operator->());
    if (!watchable) return "takes no watcher, so it cannot be stopped";
    RefusingWatcher watcher(refusal);
    watchable->SetWatcher(&watcher);
    host.Draw();
    RequireEqual(watcher.questions, refusal, "until the refusal the watcher is asked");
    RequireEqual(watcher.ends, 1, "ends of a pass that are told are");
    Require(watcher.last == ORXPassResult::Stopped, "a stopped pass is not told as stopped");
    watchable->SetWatcher(nullptr);
    host.Destroy();
  }
  RefusingWatcher patient(0);
  Host host(candidate, kShapes);
  dynamic_cast<ORXWatchable*>(host.operator->())->SetWatcher(&patient);
  RequireSameCalls(host.Draw(), std::string(kShapesCalls));
  Require(patient.last == ORXPassResult::Complete, "a whole pass is not told as complete");
  host.Destroy();
  return {};
}

std::string HeedsLowMemory(const std::filesystem::path& file) {
  const Candidate candidate(file);
  const orxframework::ScopedProperties restored;
  using orxframework::PropertiesControl;
  int lines = 0;
  PropertiesControl::SetReportSink([&lines](PrintInfoType type, const ORXUnicodeString& text) {
    const bool isKnown = text == ORXUnicodeString("ORXPrintCGM2Interpreter: Low Memory Error");
    if (type == PrintInfoType::Error && isKnown) ++lines;
  });
  PropertiesControl::SetMemoryGauge([](float threshold) { return threshold > 0.89F ? 1 : 0; });
  RequireSameCalls(Host(candidate, kShapes).Draw(), std::string(kShapesCalls));
  Require(lines > 1, "low memory is not reported at every token");
  lines = 0;
  PropertiesControl::SetOnErrorAction(OnErrorAction::Stop);
  RequireSameCalls(Host(candidate, kShapes).Draw(), {});
  RequireEqual(lines, 1, "the lines of a pass that low memory stops are");
  return {};
}

constexpr PluginCheck kChecks[] = {
    {"failing-input", "whichever call on the input fails, everything comes back",
     &StandsFailingInput},
    {"throwing-input", "whichever call on the input throws, nothing comes through",
     &StandsThrowingInput},
    {"nonsense", "what a generator answers changes nothing", &StandsNonsenseAnswers},
    {"throwing-generator", "a generator that throws ends the pass, which answers 0",
     &StandsThrowingGenerator},
    {"reentry", "passes and questions from inside a pass answer 0 and touch nothing",
     &RefusesReentry},
    {"stop", "a watcher stops documents without end and is told how passes ended", &StopsWhenTold},
    {"low-memory", "low memory is reported and ends passes where the framework says so",
     &HeedsLowMemory},
};

}  // namespace

std::span<const PluginCheck> FaultChecks() { return kChecks; }

}  // namespace orxprint
