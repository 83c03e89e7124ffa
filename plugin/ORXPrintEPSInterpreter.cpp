#include "plugin/ORXPrintEPSInterpreter.h"

#include "plugin/SystemOperators.h"

namespace orxeps {

ORXPrintEPSInterpreter::ORXPrintEPSInterpreter(PrintInputStream* input)
    : ORXPrintInterpreter("EPS"),
      Machine(SystemOperators()),
      scanner(*this, input, *this),
      filters(scanner.input) {}

}  // namespace orxeps
