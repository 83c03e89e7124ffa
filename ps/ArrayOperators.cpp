// Operators that build arrays and move their elements to and from the operand stack.

#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

// n array -> array of n nulls
ResultCode Array(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  const PSObject* size = interpreter.operandStack.Top();
  if (!size->Is(PSObjectType::Integer)) {
    return RaiseError(interpreter, "Operand error : needed integer type for array size");
  }
  if (size->intValue < 0) return RaiseError(interpreter, "array size must be non negative");
  if (size->intValue > kMaxArrayElements) return RaiseError(interpreter, "limitcheck");
  const std::int32_t count = TakeIntValue(interpreter);
  PSRef array = interpreter.heap.Make(PSObjectType::Array);
  if (count > 0) array->arrayElements.Reserve(count);
  for (std::int32_t i = 0; i < count; ++i) {
    array->arrayElements.Append(interpreter.heap.Make(PSObjectType::Null).Leak());
  }
  interpreter.heap.UpdateCharge(*array);
  return PushResult(interpreter, std::move(array));
}

// mark a1 ... an ] -> array; does nothing without a mark
ResultCode EndArray(ORXPrintEPSInterpreter& interpreter) {
  OperandStack& stack = interpreter.operandStack;
  const std::int32_t count = CountAboveMark(interpreter);
  if (count == kNoMark) return ResultCode::Ran;
  PSRef array = interpreter.heap.Make(PSObjectType::Array);
  if (count > 0) array->arrayElements.Reserve(count);
  for (PSObject* element : stack.TopEntries(count)) array->arrayElements.Append(element);
  stack.Forget(count);
  stack.Drop(1);
  interpreter.heap.UpdateCharge(*array);
  return PushResult(interpreter, std::move(array));
}

// array aload -> a1 ... an array, sharing the elements
ResultCode ALoad(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  OperandStack& stack = interpreter.operandStack;
  if (!stack.Top()->Is(PSObjectType::Array)) return RaiseError(interpreter, "typecheck");
  PSRef array = stack.Take();
  const ObjectList& elements = array->arrayElements;
  for (std::int32_t i = 1; i <= elements.Count(); ++i) stack.Push(PSRef::Retain(elements.At(i)));
  return PushResult(interpreter, std::move(array));
}

// a1 ... an array astore -> array. The elements keep their identity and take the operands'
// contents.
ResultCode AStore(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  OperandStack& stack = interpreter.operandStack;
  if (!stack.Top()->Is(PSObjectType::Array)) {
    return RaiseError(interpreter, "array type operand required for astore");
  }
  PSRef array = stack.Take();
  for (std::int32_t position = array->arrayElements.Count(); position >= 1; --position) {
    const PSRef operand = stack.Take();
    if (!operand) return ResultCode::NoOperand;
    array->arrayElements.At(position)->AssignFrom(*operand);
  }
  return PushResult(interpreter, std::move(array));
}

}  // namespace orxeps::operators
