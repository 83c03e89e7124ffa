#include "graphics/ArcAngles.h"

#include <cmath>

#include "ps/Limits.h"

namespace orxeps {

namespace {

// The counter-clockwise case; the other one is its mirror image, bit by bit.
float RaiseAngle(float first, float last) noexcept {
  if (!(first > last)) return last;
  if (std::isinf(last)) return first;
  const double distance = static_cast<double>(first) - static_cast<double>(last);
  // Where single precision rounds the sums up, fewer steps than turns lead there; never half as
  // few.
  if (std::ceil(distance / 360.0) <= 2.0 * kMaxAngleSteps) {
    float raised = last;
    for (int step = 0; step <= kMaxAngleSteps; ++step) {
      if (!(first > raised)) return raised;
      raised += 360.0F;
    }
  }
  const double beyond = std::fmod(std::fmod(last, 360.0) - std::fmod(first, 360.0), 360.0);
  return static_cast<float>(static_cast<double>(first) + (beyond < 0.0 ? beyond + 360.0 : beyond));
}

}  // namespace

float OrderedEndAngle(float first, float last, ArcDirection direction) noexcept {
  if (direction == ArcDirection::CounterClockwise) return RaiseAngle(first, last);
  return -RaiseAngle(-first, -last);
}

}  // namespace orxeps
