// Modules that break the contract of plug-ins, each in its own way, chosen when they are compiled.
#include <chrono>
#include <stdexcept>
#include <thread>

#include "host/ORXOMModule.h"

#if defined(ORX_MARKER_IS_DATA)

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule;
int fctIsORXOMModule = 1;

#else

extern "C" __attribute__((visibility("default"))) int fctIsORXOMModule() { return 1; }

namespace {

void* MakeNothing(void* /*argument*/) {
#  if defined(ORX_FACTORY_THROWS)
  throw std::runtime_error("\x1b[31mno parts left");
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
  ORXFillDictionary::Register("ORXPrintEPSInterpreter", &MakeNothing);
  return &module;
}

}  // namespace

#endif
