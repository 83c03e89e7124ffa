// Bringing the two angles of an arc in order.
//
// An arc runs from its first angle to its last, upwards or downwards, so the last must lie on the
// right side of the first; documents give it anywhere on the circle. One pure function, used by
// `arc` and `arcn` before they compute points; angles are in degrees.
#pragma once

namespace orxeps {

enum class ArcDirection { CounterClockwise, Clockwise };

// The first of last, last + 360, last + 720, ... that is not below `first` (clockwise: of last,
// last - 360, ... that is not above it), each sum formed in single precision. Angles too far apart
// for that are brought in order at once, by what remains of their distance; an end that is infinite
// on the wrong side becomes the start. Other infinite ones and no numbers stay.
[[nodiscard]] float OrderedEndAngle(float first, float last, ArcDirection direction) noexcept;

}  // namespace orxeps
