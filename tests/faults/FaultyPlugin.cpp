// The plug-in with one fault, which the environment variable ORX_PLUGIN_FAULT chooses, to see that
// the checks of a plug-in find it. It exports one name too many whatever the variable says.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <thread>

#include "host/ORXOMModule.h"
#include "plugin/ORXPrintEPSInterpreter.h"

#define ORX_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

bool Has(const char* fault) {
  const char* chosen = std::getenv("ORX_PLUGIN_FAULT");
  return chosen && std::strcmp(chosen, fault) == 0;
}

// How many there are; to have this decide anything is a fault.
std::atomic<int> alive = 0;

// Does what the interpreter does, apart from the fault.
class Faulty final : public ORXPrintInterpreter, public ORXWatchable {
public:
  explicit Faulty(PrintInputStream* itsInput)
      : ORXPrintInterpreter("faulty"), input(itsInput), inner(itsInput) {
    ++alive;
    if (Has("touches-input") && input) input->GetState();
    if (Has("leaks")) kept = new char[100];
  }
  ~Faulty() override {
    --alive;
    if (Has("calls-at-its-end") && input) input->GetState();
  }

  int GetPageSize(float* width, float* height) override {
    if (Has("lets-exceptions-through") && input) {
      input->Open("rb");
      input->Close();
    }
    return inner.GetPageSize(width, height);
  }
  int GetPageCount(unsigned* count) override {
    if (Has("hangs")) std::this_thread::sleep_for(std::chrono::hours(1));
    if (Has("clears-results")) *count = 0;
    return inner.GetPageCount(count);
  }
  int GetPageLabel(ORXUnicodeString& label) override { return inner.GetPageLabel(label); }
  int SetCurrentPage(unsigned page) override { return inner.SetCurrentPage(page); }
  int SetAllPages(unsigned char allPages) override {
    return Has("draws-all-pages") ? 1 : inner.SetAllPages(allPages);
  }
  int CollectStatistics(ORXListValORXUnicodeString& lines) override {
    if (Has("counts-zeros")) lines.Append("Curve count = 0");
    return inner.CollectStatistics(lines);
  }
  int Generate(PrintGenerator* generator) override {
    if (Has("crashes")) std::abort();
    if (Has("takes-no-generator") && !generator) return 1;
    if (Has("draws-once") && hasDrawn) return 1;
    if (Has("draws-alone") && alive > 1) return 1;
    if (Has("leaves-strokes-open") && generator) generator->MoveTo(1, 1);
    hasDrawn = true;
    const int answer = inner.Generate(generator);
    return Has("answers-nonsense") ? 2 * answer : answer;
  }
  void SetWatcher(ORXInterpreterWatcher* watcher) noexcept override {
    if (!Has("goes-on")) inner.SetWatcher(watcher);
  }
  [[nodiscard]] ORXPlace Place() const noexcept override { return inner.Place(); }
  [[nodiscard]] ORXOperand Operand(std::int32_t fromTop) const noexcept override {
    return inner.Operand(fromTop);
  }
  [[nodiscard]] ORXGraphics Graphics() const noexcept override { return inner.Graphics(); }
  [[nodiscard]] ORXExtent PathExtent() const noexcept override { return inner.PathExtent(); }
  [[nodiscard]] bool RunsAny(std::int32_t fromTop, ORXNameTest& test) noexcept override {
    return inner.RunsAny(fromTop, test);
  }
  [[nodiscard]] bool NameRunsAny(std::string_view name, ORXNameTest& test) noexcept override {
    return inner.NameRunsAny(name, test);
  }
  [[nodiscard]] bool RunningRunsAny(ORXNameTest& test) noexcept override {
    return inner.RunningRunsAny(test);
  }
  void SetMark(std::uint32_t mark) noexcept override { inner.SetMark(mark); }
  void SetListener(ORXNoteListener* listener) noexcept override { inner.SetListener(listener); }

private:
  PrintInputStream* input;
  orxeps::ORXPrintEPSInterpreter inner;
  char* kept = nullptr;
  bool hasDrawn = false;
};

}  // namespace

ORX_EXPORT int fctIsORXOMModule() { return 1; }
ORX_EXPORT int superfluous() { return 0; }
ORX_EXPORT void* fctCreateORXPrintEPSInterpreter(void* input) {
  return static_cast<ORXPrintInterpreter*>(new Faulty(static_cast<PrintInputStream*>(input)));
}

namespace {

ORXOMModule* Register();
const ORXOMRegistrationFunction table[] = {&Register};
ORXOMModule module({std::begin(table), std::end(table)});

ORXOMModule* Register() {
  ORXFillDictionary::Register("ORXPrintEPSInterpreter", &fctCreateORXPrintEPSInterpreter);
  return &module;
}

// Not by way of the table, so nobody takes it out again.
struct Rest {
  Rest() {
    if (Has("stays-registered")) Register();
  }
} rest;

}  // namespace
