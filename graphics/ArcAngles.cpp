#include "graphics/ArcAngles.h"

#include <cmath>

#include "ps/Limits.h"

namespace orxeps {

namespace {

// The counter-clockwise case; the other one is its mirror image, bit by bit.
float RaiseAngle(float first, float last) noexcept {
  const double turns = std::ceil((static_cast<double>(first) - static_cast<double>(last)) / 360.0);
  // Where single precision rounds the sums up, fewer steps than turns lead there; never half as
  // few.
  if (turns <= 2.0 * kMaxAngleSteps) {
    float raised = last;
    for (int step = 0; step <= kMaxAngleSteps; ++step) {
      if (!(first > raised)) return raised;
      raised += 360.0F;
    }
  }
  if (!(first > last)) return last;
  return static_cast<float>(static_cast<double>(last) + turns * 360.0);
}

}  // namespace

float OrderedEndAngle(float first, float last, ArcDirection direction) noexcept {
  if (direction == ArcDirection::CounterClockwise) return RaiseAngle(first, last);
  return -RaiseAngle(-first, -last);
}

}  // namespace orxeps
