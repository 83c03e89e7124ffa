#include <windows.h>

#include "orxprint/TemporaryNames.h"

namespace orxprint {

namespace {

// Called on a thread of its own; what follows ends the program.
BOOL WINAPI RemoveFilesBeforeTheEnd(DWORD) {
  TemporaryName::RemoveHeld();
  return FALSE;
}

}  // namespace

void CatchEndingSignals() { SetConsoleCtrlHandler(RemoveFilesBeforeTheEnd, TRUE); }

}  // namespace orxprint
