// Modules that break the contract of plug-ins or do not get far, each in its own way, chosen when
// they are compiled.
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "host/ORXInterpreterWatcher.h"
#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintGenerator.h"

#if defined(ORX_MARKER_IS_DATA)

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule;
int fctIsORXOMModule = 1;

#else

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule() { return 1; }

namespace {

#  if defined(ORX_RUN_HANGS) || defined(ORX_RUN_TELLS_ITS_END) || defined(ORX_RUN_TELLS_NOTHING)
// Draws a line.
class Short : public ORXPrintInterpreter {
public:
  Short() : ORXPrintInterpreter("short") {}
  int GetPageSize(float* /*width*/, float* /*height*/) override { return 0; }
  int GetPageCount(unsigned* /*count*/) override { return 0; }
  int GetPageLabel(ORXUnicodeString& /*label*/) override { return 0; }
  int CollectStatistics(ORXListValORXUnicodeString& /*lines*/) override { return End(); }
  int Generate(PrintGenerator* generator) override {
    generator->SetLineWidth(1);
    generator->MoveTo(0, 0);
    generator->LineTo(10, 20);
    return End();
  }

protected:
  virtual int End() { return 1; }
};

// Never comes back and asks nobody; or tells the watcher that it ended as the variable
// ORX_PASS_RESULT says.
class Watched final : public Short, public ORXWatchable {
public:
  void SetWatcher(ORXInterpreterWatcher* newWatcher) noexcept override { watcher = newWatcher; }
  [[nodiscard]] ORXPlace Place() const noexcept override { return {}; }
  [[nodiscard]] ORXOperand Operand(std::int32_t /*fromTop*/) const noexcept override { return {}; }
  [[nodiscard]] ORXGraphics Graphics() const noexcept override { return {}; }
  [[nodiscard]] ORXExtent PathExtent() const noexcept override { return {}; }
  [[nodiscard]] bool RunsAny(std::int32_t, ORXNameTest&) noexcept override { return false; }
  [[nodiscard]] bool NameRunsAny(std::string_view, ORXNameTest&) noexcept override { return false; }
  [[nodiscard]] bool RunningRunsAny(ORXNameTest&) noexcept override { return false; }
  void SetListener(ORXNoteListener* /*listener*/) noexcept override {}
  void SetMark(std::uint32_t /*mark*/) noexcept override {}

private:
  int End() override {
#    if defined(ORX_RUN_HANGS)
    std::this_thread::sleep_for(std::chrono::hours(1));
#    endif
    const char* told = std::getenv("ORX_PASS_RESULT");
    const auto result = static_cast<ORXPassResult>(told ? std::atoi(told) : 0);
    watcher->PassEnded({result, "stackoverflow", 1234});
    return result != ORXPassResult::HostThrew;
  }

  ORXInterpreterWatcher* watcher = nullptr;
};
#  endif

void* Make(void* /*argument*/) {
#  if defined(ORX_FACTORY_THROWS)
  throw std::runtime_error("\x1b[31mno parts left");
#  elif defined(ORX_RUN_HANGS) || defined(ORX_RUN_TELLS_ITS_END)
  return static_cast<ORXPrintInterpreter*>(new Watched);
#  elif defined(ORX_RUN_TELLS_NOTHING)
  return static_cast<ORXPrintInterpreter*>(new Short);
#  endif
  return nullptr;
}

ORXOMModule* Register();
const ORXOMRegistrationFunction table[] = {&Register};
ORXOMModule module({table, table + 1});

ORXOMModule* Register() {
#  if defined(ORX_LOADING_HANGS)
  std::this_thread::sleep_for(std::chrono::hours(1));
#  endif
  ORXFillDictionary::Register("ORXPrintEPSInterpreter", &Make);
  return &module;
}

}  // namespace

#endif
