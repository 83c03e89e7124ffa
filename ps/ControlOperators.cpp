// Operators that run procedures. They only put them on the execution stack: whoever executes the
// operator goes on with what it started.

#include "ps/Execution.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

// any exec -> whatever it does
ResultCode Exec(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  PSRef object = TakeOperand(interpreter);
  if (object->Is(PSObjectType::Procedure)) {
    interpreter.executionStack.RunProcedure(std::move(object));
  } else {
    interpreter.executionStack.RunObject(std::move(object));
  }
  return ResultCode::Ran;
}

namespace {

PSRef TakeOfType(ORXPrintEPSInterpreter& interpreter, PSObjectType type) noexcept {
  if (interpreter.operandStack.Top()->Is(type)) return TakeOperand(interpreter);
  RaiseError(interpreter, "typecheck");
  return {};
}

// What "if" and "ifelse" do once the second procedure is off the stack. An operand of the wrong
// type stays; what was taken before it is gone.
ResultCode Choose(ORXPrintEPSInterpreter& interpreter, PSRef otherwise) {
  PSRef then = TakeOfType(interpreter, PSObjectType::Procedure);
  if (!then) return ResultCode::Ran;
  const PSRef condition = TakeOfType(interpreter, PSObjectType::Boolean);
  if (!condition) return ResultCode::Ran;
  PSRef& chosen = condition->boolValue ? then : otherwise;
  if (chosen) interpreter.executionStack.RunProcedure(std::move(chosen));
  return ResultCode::Ran;
}

}  // namespace

// bool proc1 proc2 ifelse -> whatever the chosen procedure does
ResultCode IfElse(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  PSRef otherwise = TakeOfType(interpreter, PSObjectType::Procedure);
  if (!otherwise) return ResultCode::Ran;
  return Choose(interpreter, std::move(otherwise));
}

// bool proc if -> whatever the procedure does
ResultCode If(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  return Choose(interpreter, {});
}

// proc bind -> the same procedure, its operator names replaced
ResultCode Bind(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  PSObject* procedure = interpreter.operandStack.Top();
  if (procedure->Is(PSObjectType::Procedure)) BindProcedure(interpreter, *procedure);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
