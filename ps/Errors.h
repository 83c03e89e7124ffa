// The one door through which every error goes.
//
// An operator that fails returns what RaiseError returns, after naming the PostScript error. Nobody
// looks at the name but debuggers, tests and the end of a pass; the run goes on with the next
// object. Ceilings that are met in the middle of something throw LimitReached (ps/Limits.h)
// instead.
#pragma once

#include <string_view>

#include "ps/Machine.h"

namespace orxeps {

// Tells a watcher that the operator that runs departs from PostScript.
inline void NoteDeparture(const Machine& machine, ORXNoteKind kind, std::string_view detail = {},
                          double value = 0) noexcept {
  const std::string_view name = machine.running ? machine.running->name : std::string_view();
  machine.watch.Note({kind, name, detail, value});
}

// Marks the machine and names the error for whoever debugs. `error` is a literal.
inline ResultCode RaiseError(Machine& machine, const char* error) noexcept {
  machine.errorFlag = 1;
  machine.lastError = error;
  if (machine.watch.HasListener()) NoteDeparture(machine, ORXNoteKind::Error, error);
  return ResultCode::Failed;
}

// Raises the error of a ceiling and gives up whatever runs: what the main loop does when
// LimitReached comes back to it.
inline void AbandonRun(Machine& machine, const char* error) noexcept {
  machine.executionStack.Abandon();
  RaiseError(machine, error);
}

}  // namespace orxeps
