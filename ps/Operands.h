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

// Pushes what an operator leaves, as the last thing it does. A full stack is met without throwing:
// documents that overflow it go on to do so with every token.
inline ResultCode PushResult(ORXPrintEPSInterpreter& interpreter, PSRef object) {
  if (interpreter.operandStack.IsFull()) return AbandonRun(interpreter, "stackoverflow");
  interpreter.operandStack.Push(std::move(object));
  return ResultCode::Ran;
}

// Each pushes a new literal object.
inline ResultCode PushInteger(ORXPrintEPSInterpreter& interpreter, std::int32_t value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Integer);
  object->intValue = value;
  return PushResult(interpreter, std::move(object));
}
inline ResultCode PushReal(ORXPrintEPSInterpreter& interpreter, float value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Real);
  object->realValue = value;
  return PushResult(interpreter, std::move(object));
}
inline ResultCode PushBoolean(ORXPrintEPSInterpreter& interpreter, bool value) {
  PSRef object = interpreter.heap.Make(PSObjectType::Boolean);
  object->boolValue = value ? 1 : 0;
  return PushResult(interpreter, std::move(object));
}
// Pushes an object that has another holder as well.
inline ResultCode PushShared(ORXPrintEPSInterpreter& interpreter, PSObject* object) {
  return PushResult(interpreter, PSRef::Retain(object));
}

// The entries above the topmost mark, or kNoMark.
inline constexpr std::int32_t kNoMark = OperandStack::kNoMark;
[[nodiscard]] inline std::int32_t CountAboveMark(ORXPrintEPSInterpreter& interpreter) noexcept {
  return interpreter.operandStack.CountAboveMark(interpreter.heap.MarksWritten());
}

}  // namespace orxeps
