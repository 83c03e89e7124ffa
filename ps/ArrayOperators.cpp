// Operators that build arrays and move their elements to and from the operand stack.

#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// n array -> array of n nulls
ResultCode Array(Machine& machine) {
  const PSObject* size = machine.operandStack.Top();
  if (!size->Is(PSObjectType::Integer)) {
    return RaiseError(machine, "Operand error : needed integer type for array size");
  }
  if (size->intValue < 0) return RaiseError(machine, "array size must be non negative");
  if (size->intValue > kMaxArrayElements) return RaiseError(machine, "limitcheck");
  const std::int32_t count = TakeIntValue(machine);
  machine.watch.CountWork(count);
  PSRef array = machine.heap.Make(PSObjectType::Array);
  ObjectList& elements = array->OwnParts().arrayElements;
  if (count > 0) elements.Reserve(count);
  for (std::int32_t i = 0; i < count; ++i) elements.Append(machine.heap.Make(PSObjectType::Null));
  machine.heap.UpdateCharge(*array);
  return PushResult(machine, std::move(array));
}

// mark a1 ... an ] -> array; does nothing without a mark
ResultCode EndArray(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  const std::int32_t count = CountAboveMark(machine);
  if (count == kNoMark) return ResultCode::Ran;
  machine.watch.CountWork(count);
  PSRef array = machine.heap.Make(PSObjectType::Array);
  if (count > 0) stack.MoveTop(count, array->OwnParts().arrayElements);
  stack.Drop(1);
  machine.heap.UpdateCharge(*array);
  return PushResult(machine, std::move(array));
}

// array aload -> a1 ... an array, sharing the elements
ResultCode ALoad(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  if (!stack.Top()->Is(PSObjectType::Array)) return RaiseError(machine, "typecheck");
  PSRef array = stack.Take();
  const ObjectList& elements = array->Parts().arrayElements;
  machine.watch.CountWork(elements.Count());
  for (std::int32_t i = 1; i <= elements.Count(); ++i) stack.Push(PSRef::Retain(elements.At(i)));
  return PushResult(machine, std::move(array));
}

// a1 ... an array astore -> array. The elements keep their identity and take the operands'
// contents.
ResultCode AStore(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  if (!stack.Top()->Is(PSObjectType::Array)) {
    return RaiseError(machine, "array type operand required for astore");
  }
  PSRef array = stack.Take();
  const ObjectList& elements = array->Parts().arrayElements;
  for (std::int32_t position = elements.Count(); position >= 1; --position) {
    const PSRef operand = stack.Take();
    if (!operand) return ResultCode::NoOperand;
    AssignCounted(machine, *elements.At(position), *operand);
  }
  return PushResult(machine, std::move(array));
}

}  // namespace orxeps::operators
