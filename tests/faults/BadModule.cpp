// Modules that break the contract of plug-ins, each in its own way, chosen when they are compiled.
#include <chrono>
#include <stdexcept>
#include <thread>

#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintGenerator.h"

#if defined(ORX_MARKER_IS_DATA)

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule;
int fctIsORXOMModule = 1;

#else

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule() { return 1; }

namespace {

#  if defined(ORX_RUN_HANGS)
// Draws a line, then never comes back and asks nobody.
class Hanging final : public ORXPrintInterpreter {
public:
  Hanging() : ORXPrintInterpreter("hanging") {}
  int GetPageSize(float* /*width*/, float* /*height*/) override { return 0; }
  int GetPageCount(unsigned* /*count*/) override { return 0; }
  int GetPageLabel(ORXUnicodeString& /*label*/) override { return 0; }
  int CollectStatistics(ORXListValORXUnicodeString& /*lines*/) override { return Hang(); }
  int Generate(PrintGenerator* generator) override {
    generator->SetLineWidth(1);
    generator->MoveTo(0, 0);
    generator->LineTo(10, 20);
    return Hang();
  }

private:
  static int Hang() {
    std::this_thread::sleep_for(std::chrono::hours(1));
    return 1;
  }
};
#  endif

void* Make(void* /*argument*/) {
#  if defined(ORX_FACTORY_THROWS)
  throw std::runtime_error("\x1b[31mno parts left");
#  elif defined(ORX_RUN_HANGS)
  return static_cast<ORXPrintInterpreter*>(new Hanging);
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
