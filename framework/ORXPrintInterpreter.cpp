// What every interpreter inherits: the page selection, and answers for what it does not know.
#include "host/ORXPrintInterpreter.h"

namespace {

constexpr unsigned kInterfaceVersion = 1;

}  // namespace

ORXPrintInterpreter::ORXPrintInterpreter(const ORXString& name) : interpreterName(name) {}

ORXPrintInterpreter::~ORXPrintInterpreter() = default;

int ORXPrintInterpreter::GetBounds(float& /*left*/, float& /*bottom*/, float& /*right*/,
                                   float& /*top*/) {
  return 0;
}

int ORXPrintInterpreter::SetCurrentPage(unsigned page) {
  selectedPage = page;
  return 1;
}

int ORXPrintInterpreter::SetAllPages(unsigned char allPages) {
  allPagesFlag = allPages;
  return 1;
}

int ORXPrintInterpreter::GetVersion(unsigned& version) {
  version = kInterfaceVersion;
  return 1;
}

long ORXPrintInterpreter::Interpret(ORXPrtModel** /*model*/) { return 0; }

long ORXPrintInterpreter::GetTransformations(ORXPrintTransformation** /*transformations*/) {
  return 0;
}

long ORXPrintInterpreter::SetTransformations(ORXPrintTransformation* /*transformations*/) {
  return 0;
}
