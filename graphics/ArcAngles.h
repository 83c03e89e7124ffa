// Bringing the two angles of an arc in order.
#pragma once

namespace orxeps {

enum class ArcDirection { CounterClockwise, Clockwise };

// The first of last, last + 360, last + 720, ... that is not below `first` (clockwise: of last,
// last - 360, ... that is not above it), each sum formed in single precision. Angles too far apart
// for that, infinite ones and those that are no numbers included, give some angle at once.
[[nodiscard]] float OrderedEndAngle(float first, float last, ArcDirection direction) noexcept;

}  // namespace orxeps
