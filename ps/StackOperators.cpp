// Operators that rearrange the operand stack.

#include <algorithm>

#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

// any pop ->
ResultCode Pop(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  interpreter.operandStack.Drop(1);
  return ResultCode::Ran;
}

// a b exch -> b a
ResultCode Exch(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const auto pair = interpreter.operandStack.TopEntries(2);
  std::swap(pair[0], pair[1]);
  return ResultCode::Ran;
}

// a dup -> a a, the same object twice
ResultCode Dup(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  return PushShared(interpreter, interpreter.operandStack.Top());
}

// -> mark; also [ and <<
ResultCode Mark(ORXPrintEPSInterpreter& interpreter) {
  return PushResult(interpreter, interpreter.heap.Make(PSObjectType::Mark));
}

// mark a1 ... an counttomark -> mark a1 ... an n; -1 without a mark
ResultCode CountToMark(ORXPrintEPSInterpreter& interpreter) {
  return PushInteger(interpreter, CountAboveMark(interpreter));
}

// mark a1 ... an cleartomark ->; without a mark the whole stack goes
ResultCode ClearToMark(ORXPrintEPSInterpreter& interpreter) {
  const std::int32_t above = CountAboveMark(interpreter);
  interpreter.operandStack.Drop(above == kNoMark ? interpreter.operandStack.Count() : above + 1);
  return ResultCode::Ran;
}

// a1 ... an n j roll -> the same, turned by j places towards the top. n and j are read as integers
// whatever they are.
ResultCode Roll(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const std::int32_t places = TakeIntValue(interpreter);
  const std::int32_t count = TakeIntValue(interpreter);
  if (!HasOperands(interpreter, count)) return StackUnderflow(interpreter);
  if (count <= 0) return ResultCode::Ran;
  const auto entries = interpreter.operandStack.TopEntries(count);
  const std::int32_t turn = places % count;
  std::rotate(entries.begin(), turn > 0 ? entries.end() - turn : entries.begin() - turn,
              entries.end());
  return ResultCode::Ran;
}

namespace {

// a1 ... an n copy -> a1 ... an a1 ... an, sharing the objects
ResultCode CopyEntries(ORXPrintEPSInterpreter& interpreter) {
  OperandStack& stack = interpreter.operandStack;
  const std::int32_t count = TakeIntValue(interpreter);
  if (!HasOperands(interpreter, count)) return StackUnderflow(interpreter);
  if (count > kMaxOperands - stack.Count()) return AbandonRun(interpreter, "stackoverflow");
  for (std::int32_t i = 0; i < count; ++i) stack.Push(PSRef::Retain(stack.Below(count - 1)));
  return ResultCode::Ran;
}

// source destination copy -> destination, with the source's content
ResultCode CopyContent(ORXPrintEPSInterpreter& interpreter) {
  OperandStack& stack = interpreter.operandStack;
  if (stack.Top()->type != stack.Below(1)->type) return ResultCode::Failed;
  PSRef destination = stack.Take();
  const PSRef source = stack.Take();
  destination->AssignFrom(*source);
  return PushResult(interpreter, std::move(destination));
}

}  // namespace

ResultCode Copy(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (interpreter.operandStack.Top()->Is(PSObjectType::Integer)) return CopyEntries(interpreter);
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  return CopyContent(interpreter);
}

// an ... a0 n index -> an ... a0 an. A negative n is only taken off.
ResultCode Index(ORXPrintEPSInterpreter& interpreter) {
  OperandStack& stack = interpreter.operandStack;
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (!stack.Top()->Is(PSObjectType::Integer)) return ResultCode::Ran;
  const std::int32_t depth = TakeIntValue(interpreter);
  if (depth < 0) return ResultCode::Ran;
  if (depth >= stack.Count()) return StackUnderflow(interpreter);
  return PushShared(interpreter, stack.Below(depth));
}

}  // namespace orxeps::operators
