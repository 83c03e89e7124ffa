// Executing objects: names are looked up, procedures run element by element, operators run, and
// everything else is pushed.
//
// Nothing here recurses: what an object starts goes on the machine's execution stack and runs until
// that is as deep as it was before the call. Objects are borrowed; while they run a frame owns
// them.
#pragma once

#include <string_view>

#include "ps/Errors.h"
#include "ps/Machine.h"

namespace orxeps {

// Searches the dictionary stack from the top down, or remembers the last search. Throws
// LimitReached and std::bad_alloc where that lays open what earlier passes have left.
[[nodiscard]] NameLookup LookupName(Machine& machine, const NameText& name);

// The value that LookupName would find, borrowed, or null. Changes and remembers nothing, so that
// one who watches a run cannot disturb it.
[[nodiscard]] const PSObject* LookAtName(const Machine& machine, const NameText& name) noexcept;

// Executes an object, which may be null and stays the caller's, and everything that this starts. A
// name that no dictionary has does nothing. Throws LimitReached when a ceiling is met; whoever
// catches it abandons the execution stack.
void ExecuteObject(Machine& machine, PSObject* object);

// Executes an executable name as ExecuteObject does, without an object that bears it.
void ExecuteName(Machine& machine, Name& name);

// Runs the operator of this name and everything that it starts; UnknownOperator when there is none.
ResultCode DispatchOperator(Machine& machine, std::string_view name);

// Replaces, in a procedure and in every procedure nested in it, each element whose name stands for
// an operator by that operator's object.
void BindProcedure(Machine& machine, PSObject& procedure);

}  // namespace orxeps
