// Operators that rearrange the operand stack.

#include <algorithm>

#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// any pop ->
ResultCode Pop(Machine& machine) {
  machine.operandStack.Drop(1);
  return ResultCode::Ran;
}

// a b exch -> b a
ResultCode Exch(Machine& machine) {
  const auto pair = machine.operandStack.TopEntries(2);
  std::swap(pair[0], pair[1]);
  return ResultCode::Ran;
}

// a dup -> a a, the same object twice
ResultCode Dup(Machine& machine) { return PushShared(machine, machine.operandStack.Top()); }

// -> mark; also [ and <<
ResultCode Mark(Machine& machine) {
  return PushResult(machine, machine.heap.Make(PSObjectType::Mark));
}

// mark a1 ... an counttomark -> mark a1 ... an n; -1 without a mark
ResultCode CountToMark(Machine& machine) { return PushInteger(machine, CountAboveMark(machine)); }

// mark a1 ... an cleartomark ->; without a mark the whole stack goes
ResultCode ClearToMark(Machine& machine) {
  const std::int32_t above = CountAboveMark(machine);
  machine.watch.CountWork(machine.operandStack.Count());
  machine.operandStack.Drop(above == kNoMark ? machine.operandStack.Count() : above + 1);
  return ResultCode::Ran;
}

// a1 ... an n j roll -> the same, turned by j places towards the top. n and j are read as integers
// whatever they are.
ResultCode Roll(Machine& machine) {
  const std::int32_t places = TakeIntValue(machine);
  const std::int32_t count = TakeIntValue(machine);
  if (!HasOperands(machine, count)) return StackUnderflow(machine);
  if (count <= 0) return ResultCode::Ran;
  machine.watch.CountWork(count);
  const auto entries = machine.operandStack.TopEntries(count);
  const std::int32_t turn = places % count;
  std::rotate(entries.begin(), turn > 0 ? entries.end() - turn : entries.begin() - turn,
              entries.end());
  return ResultCode::Ran;
}

namespace {

// a1 ... an n copy -> a1 ... an a1 ... an, sharing the objects
ResultCode CopyEntries(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  const std::int32_t count = TakeIntValue(machine);
  if (!HasOperands(machine, count)) return StackUnderflow(machine);
  if (count > kMaxOperands - stack.Count()) throw LimitReached{"stackoverflow"};
  machine.watch.CountWork(count);
  for (std::int32_t i = 0; i < count; ++i) stack.Push(PSRef::Retain(stack.Below(count - 1)));
  return ResultCode::Ran;
}

// source destination copy -> destination, with the source's content
ResultCode CopyContent(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  if (stack.Top()->type != stack.Below(1)->type) return ResultCode::Failed;
  PSRef destination = stack.Take();
  const PSRef source = stack.Take();
  AssignCounted(machine, *destination, *source);
  return PushResult(machine, std::move(destination));
}

}  // namespace

ResultCode Copy(Machine& machine) {
  if (machine.operandStack.Top()->Is(PSObjectType::Integer)) return CopyEntries(machine);
  if (!HasOperands(machine, 2)) return StackUnderflow(machine);
  return CopyContent(machine);
}

// an ... a0 n index -> an ... a0 an. A negative n is only taken off.
ResultCode Index(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  if (!stack.Top()->Is(PSObjectType::Integer)) return ResultCode::Ran;
  const std::int32_t depth = TakeIntValue(machine);
  if (depth < 0) return ResultCode::Ran;
  if (depth >= stack.Count()) return StackUnderflow(machine);
  return PushShared(machine, stack.Below(depth));
}

}  // namespace orxeps::operators
