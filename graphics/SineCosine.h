// Sine and cosine in single precision, with the same bits on every platform and processor: what an
// arc or a rotation gives must not depend on the C library that happens to be there.
//
// The values are those of the GNU C library 2.36 without fused operations. Arguments are radians;
// infinite ones and those that are no numbers give not-a-number. Rounding to nearest is expected.
#pragma once

#include <span>

namespace orxeps {

struct SineCosine {
  float sine;
  float cosine;
};

[[nodiscard]] SineCosine SineAndCosine(float radians) noexcept;

// The same for many angles at once, several times as fast. REQUIRES: all three of one length, and
// the results not overlapping the angles or each other.
void SinesAndCosines(std::span<const float> radians, std::span<float> sines,
                     std::span<float> cosines) noexcept;

}  // namespace orxeps
