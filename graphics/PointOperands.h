// Points as operators take and leave them.
#pragma once

#include "graphics/GraphicsState.h"
#include "ps/Operands.h"

namespace orxeps {

// Coordinates are taken from the stack in reverse. REQUIRES: the stack holds two entries.
[[nodiscard]] inline FloatPoint TakePoint(Machine& machine) noexcept {
  const float y = TakeNumber(machine);
  const float x = TakeNumber(machine);
  return {x, y};
}

inline ResultCode PushPoint(Machine& machine, FloatPoint point) {
  PushReal(machine, point.x);
  return PushReal(machine, point.y);
}

}  // namespace orxeps
