// Operators that run procedures. They only put them on the execution stack: whoever executes the
// operator goes on with what it started.

#include "ps/Execution.h"
#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// any exec -> whatever it does
ResultCode Exec(Machine& machine) {
  PSRef object = TakeOperand(machine);
  if (object->Is(PSObjectType::Procedure)) {
    machine.executionStack.RunProcedure(std::move(object));
  } else {
    machine.executionStack.RunObject(std::move(object));
  }
  return ResultCode::Ran;
}

namespace {

PSRef TakeOfType(Machine& machine, PSObjectType type) noexcept {
  if (machine.operandStack.Top()->Is(type)) return TakeOperand(machine);
  RaiseError(machine, "typecheck");
  return {};
}

// What "if" and "ifelse" do once the second procedure is off the stack. An operand of the wrong
// type stays; what was taken before it is gone.
ResultCode Choose(Machine& machine, PSRef otherwise) {
  PSRef then = TakeOfType(machine, PSObjectType::Procedure);
  if (!then) return ResultCode::Ran;
  const PSRef condition = TakeOfType(machine, PSObjectType::Boolean);
  if (!condition) return ResultCode::Ran;
  PSRef& chosen = condition->boolValue ? then : otherwise;
  if (chosen) machine.executionStack.RunProcedure(std::move(chosen));
  return ResultCode::Ran;
}

}  // namespace

// bool proc1 proc2 ifelse -> whatever the chosen procedure does
ResultCode IfElse(Machine& machine) {
  PSRef otherwise = TakeOfType(machine, PSObjectType::Procedure);
  if (!otherwise) return ResultCode::Ran;
  return Choose(machine, std::move(otherwise));
}

// bool proc if -> whatever the procedure does
ResultCode If(Machine& machine) { return Choose(machine, {}); }

// proc bind -> the same procedure, its operator names replaced
ResultCode Bind(Machine& machine) {
  PSObject* procedure = machine.operandStack.Top();
  if (procedure->Is(PSObjectType::Procedure)) BindProcedure(machine, *procedure);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
