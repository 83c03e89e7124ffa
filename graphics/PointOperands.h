// Points as operators take and leave them: two entries of the operand stack, x below y.
//
// Path and matrix operators share these, on top of ps/Operands.h. Nothing is checked here: rows say
// how many operands there must be, and what is no number counts as 0.
#pragma once

#include "graphics/GraphicsState.h"
#include "ps/Operands.h"

namespace orxeps {

// Coordinates are taken from the stack in reverse. REQUIRES: the stack holds two entries.
[[nodiscard]] inline FloatPoint TakePoint(Machine& machine) noexcept {
  OperandStack& stack = machine.operandStack;
  const FloatPoint point = {NumberOf(*stack.Below(1)), NumberOf(*stack.Top())};
  stack.Drop(2);
  return point;
}

inline ResultCode PushPoint(Machine& machine, FloatPoint point) {
  PushReal(machine, point.x);
  return PushReal(machine, point.y);
}

}  // namespace orxeps
