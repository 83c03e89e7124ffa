#include "plugin/ORXPrintEPSInterpreter.h"

#include <string_view>

#include "host/ORXSystem.h"
#include "image/DecodeFilters.h"
#include "plugin/Units.h"

namespace orxeps {

bool UnitsAreMillimetres() noexcept {
  const char* setting = ORXGetEnv("ORXPrintOpenPSToMM");
  return !setting || std::string_view(setting) != "0";
}

ORXPrintEPSInterpreter::ORXPrintEPSInterpreter(PrintInputStream* input)
    : ORXPrintInterpreter("EPS"),
      inputStream(input),
      unitScale(UnitsAreMillimetres() ? kMillimetresPerUnit : 1.0F) {}

ORXPrintEPSInterpreter::~ORXPrintEPSInterpreter() { ReleaseObjects(); }

void ORXPrintEPSInterpreter::ReleaseObjects() noexcept {
  executionStack.Abandon();
  operandStack.Clear();
  for (std::int32_t i = 1; i <= dictionaryStack.Count(); ++i) dictionaryStack.At(i)->Release();
  dictionaryStack.RemoveAll();
  dictionaries = {};
}

}  // namespace orxeps
