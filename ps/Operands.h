// What operators do with the operand stack again and again: taking operands as numbers and objects,
// pushing results.
//
// A handler's row has already made sure that enough entries are there; their types are the
// handler's to look at. Take... gives ownership, what is pushed is given away.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "ps/Errors.h"

namespace orxeps {

// For operators that need more operands in one of their forms than their row says.
[[nodiscard]] inline bool HasOperands(const Machine& machine, std::int32_t needed) noexcept {
  return machine.operandStack.Count() >= needed;
}

inline ResultCode StackUnderflow(Machine& machine) noexcept {
  return RaiseError(machine, "stackunderflow");
}

// REQUIRES: the stack holds an entry.
[[nodiscard]] inline PSRef TakeOperand(Machine& machine) noexcept {
  return machine.operandStack.Take();
}

// An operand as a number; anything that is none counts as 0.
[[nodiscard]] inline float NumberOf(const PSObject& object) noexcept {
  if (object.Is(PSObjectType::Integer)) return static_cast<float>(object.intValue);
  if (object.Is(PSObjectType::Real)) return object.realValue;
  return 0.0F;
}
[[nodiscard]] inline float TakeNumber(Machine& machine) noexcept {
  return NumberOf(*TakeOperand(machine));
}
[[nodiscard]] inline std::int32_t TakeIntValue(Machine& machine) noexcept {
  return TakeOperand(machine)->intValue;
}

// Truncates toward zero. What has no place among 32-bit integers becomes the smallest of them.
[[nodiscard]] inline std::int32_t TruncateToInteger(float value) noexcept {
  constexpr float kLimit = 2147483648.0F;
  if (!(value >= -kLimit && value < kLimit)) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

// Pushes what an operator leaves. Throws LimitReached (stackoverflow) when the stack is full.
inline ResultCode PushResult(Machine& machine, PSRef object) {
  machine.operandStack.Push(std::move(object));
  return ResultCode::Ran;
}

// Each pushes a new literal object.
inline ResultCode PushInteger(Machine& machine, std::int32_t value) {
  PSRef object = machine.heap.Make(PSObjectType::Integer);
  object->intValue = value;
  return PushResult(machine, std::move(object));
}
inline ResultCode PushReal(Machine& machine, float value) {
  PSRef object = machine.heap.Make(PSObjectType::Real);
  object->realValue = value;
  return PushResult(machine, std::move(object));
}
inline ResultCode PushBoolean(Machine& machine, bool value) {
  PSRef object = machine.heap.Make(PSObjectType::Boolean);
  object->boolValue = value ? 1 : 0;
  return PushResult(machine, std::move(object));
}
// Pushes an object that has another holder as well.
inline ResultCode PushShared(Machine& machine, PSObject* object) {
  return PushResult(machine, PSRef::Retain(object));
}

// Assigns, and counts the objects that this has copied as work.
inline void AssignCounted(Machine& machine, PSObject& destination, const PSObject& source) {
  const std::size_t before = machine.heap.LiveCount();
  destination.AssignFrom(source);
  machine.watch.CountWork(static_cast<std::int64_t>(machine.heap.LiveCount() - before));
}

// The entries above the topmost mark, or kNoMark.
inline constexpr std::int32_t kNoMark = OperandStack::kNoMark;
[[nodiscard]] inline std::int32_t CountAboveMark(Machine& machine) noexcept {
  return machine.operandStack.CountAboveMark(machine.heap.MarksWritten());
}

}  // namespace orxeps
