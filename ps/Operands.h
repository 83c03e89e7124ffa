// What operators do with the operand stack again and again.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "ps/Errors.h"

namespace orxeps {

[[nodiscard]] inline bool HasOperands(const ORXPrintEPSInterpreter& interpreter,
                                      std::int32_t needed) noexcept {
  return interpreter.operandStack.Count() >= needed;
}

inline ResultCode StackUnderflow(ORXPrintEPSInterpreter& interpreter) noexcept {
  return RaiseError(interpreter, "stackunderflow");
}

// REQUIRES: the stack holds an entry.
[[nodiscard]] inline PSRef TakeOperand(ORXPrintEPSInterpreter& interpreter) noexcept {
  return interpreter.operandStack.Take();
}

// An operand as a number; anything that is none counts as 0.
[[nodiscard]] inline float NumberOf(const PSObject& object) noexcept {
  if (object.Is(PSObjectType::Integer)) return static_cast<float>(object.intValue);
  if (object.Is(PSObjectType::Real)) return object.realValue;
  return 0.0F;
}
[[nodiscard]] inline float TakeNumber(ORXPrintEPSInterpreter& interpreter) noexcept {
  return NumberOf(*TakeOperand(interpreter));
}
[[nodiscard]] inline std::int32_t TakeIntValue(ORXPrintEPSInterpreter& interpreter) noexcept {
  return TakeOperand(interpreter)->intValue;
}

// Truncates toward zero. What has no place among 32-bit integers becomes the smallest of them.
[[nodiscard]] inline std::int32_t TruncateToInteger(float value) noexcept {
  constexpr float kLimit = 2147483648.0F;
  if (!(value >= -kLimit && value < kLimit)) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

// Each pushes a new literal object.
inline ResultCode PushInteger(ORXPrintEPSInterpreter& interpreter, std::int32_t value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Integer);
  object->intValue = value;
  interpreter.operandStack.Push(std::move(object));
  return ResultCode::Ran;
}
inline ResultCode PushReal(ORXPrintEPSInterpreter& interpreter, float value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Real);
  object->realValue = value;
  interpreter.operandStack.Push(std::move(object));
  return ResultCode::Ran;
}
inline ResultCode PushBoolean(ORXPrintEPSInterpreter& interpreter, bool value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Boolean);
  object->boolValue = value ? 1 : 0;
  interpreter.operandStack.Push(std::move(object));
  return ResultCode::Ran;
}
// Pushes an object that has another holder as well.
inline ResultCode PushShared(ORXPrintEPSInterpreter& interpreter, PSObject* object) {
  interpreter.operandStack.Push(PSRef::Retain(object));
  return ResultCode::Ran;
}

inline constexpr std::int32_t kNoMark = -1;

// The entries above the topmost mark, or kNoMark.
[[nodiscard]] inline std::int32_t CountAboveMark(
    const ORXPrintEPSInterpreter& interpreter) noexcept {
  const OperandStack& stack = interpreter.operandStack;
  for (std::int32_t depth = 0; depth < stack.Count(); ++depth) {
    const PSObject* entry = stack.Below(depth);
    if (entry->Is(PSObjectType::Mark) && entry->literal == 1) return depth;
  }
  return kNoMark;
}

}  // namespace orxeps
