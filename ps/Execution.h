// Executing objects: names are looked up, procedures run element by element, operators run, and
// everything else is pushed.
#pragma once

#include "host/ORXString.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "ps/Errors.h"
#include "ps/OperatorTable.h"

namespace orxeps {

// Where a name was found; both borrowed, both null when it was not.
struct NameLookup {
  PSObject* value = nullptr;
  PSObject* dictionary = nullptr;
};

// Searches the dictionary stack from the top down.
[[nodiscard]] NameLookup LookupName(const ORXPrintEPSInterpreter& interpreter,
                                    const ORXString& name) noexcept;

// Executes an object, which may be null and stays the caller's, and everything that this starts. A
// name that no dictionary has does nothing. Throws LimitReached when a ceiling is met; whoever
// catches it abandons the execution stack.
void ExecuteObject(ORXPrintEPSInterpreter& interpreter, PSObject* object);

// Runs the operator of this name and everything that it starts; UnknownOperator when there is none.
ResultCode DispatchOperator(ORXPrintEPSInterpreter& interpreter, const ORXString& name);

// Replaces, in a procedure and in every procedure nested in it, each element whose name stands for
// an operator by that operator's object.
void BindProcedure(ORXPrintEPSInterpreter& interpreter, PSObject& procedure);

}  // namespace orxeps
