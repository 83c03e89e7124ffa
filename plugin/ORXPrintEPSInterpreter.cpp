#include "plugin/ORXPrintEPSInterpreter.h"

#include "plugin/SystemOperators.h"

namespace orxeps {

ORXPrintEPSInterpreter::ORXPrintEPSInterpreter(PrintInputStream* input)
    : ORXPrintInterpreter("EPS"),
      Machine(SystemOperators()),
      canvas(heap.Budget()),
      scanner(*this, input, *this),
      filters(scanner.input, heap.Budget()) {}

}  // namespace orxeps
