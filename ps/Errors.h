// How operators report, and the one door through which every error goes.
#pragma once

#include "plugin/ORXPrintEPSInterpreter.h"

namespace orxeps {

// What an operator answers. No caller acts on it: interpretation goes on with the next object.
enum class ResultCode : int {
  Ran = 0,              // including what an operator silently ignores
  Failed = 1,           // in most cases an error was raised
  NoOperand = 2,        // an operand was missing, or not of the kind that the operator works on
  UnknownOperator = 3,  // no operator has this name
};

// Marks the interpreter and names the error for whoever debugs. `error` is a literal.
inline ResultCode RaiseError(ORXPrintEPSInterpreter& interpreter, const char* error) noexcept {
  interpreter.errorFlag = 1;
  interpreter.lastError = error;
  return ResultCode::Failed;
}

// Raises the error of a ceiling and gives up whatever runs, back to the main loop. What meets a
// ceiling in the middle of its work throws LimitReached instead, and the main loop does this.
inline ResultCode AbandonRun(ORXPrintEPSInterpreter& interpreter, const char* error) noexcept {
  interpreter.executionStack.Abandon();
  return RaiseError(interpreter, error);
}

}  // namespace orxeps
