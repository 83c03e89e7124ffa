#include "graphics/SineCosine.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "graphics/WideVectors.h"

namespace orxeps {

namespace {

constexpr std::uint32_t kSignBit = 0x80000000;

// Below this size a quotient by pi/2 in double precision is exact enough; from there on the
// argument meets as many bits of 4/pi as it needs.
constexpr float kLargeArgument = 120.0F;

constexpr double kHalfPi = 0x1.921FB54442D18p0;
constexpr double kTwoOverPiScaled = 0x1.45F306DC9C883p+23;  // 2/pi * 2^24
constexpr double kHalfPiScaled = 0x1.921FB54442D18p-62;     // pi/2 / 2^62

// The rest of an angle after whole quarter turns, at most pi/4 in size or close to it.
struct ReducedAngle {
  double rest;
  std::int32_t quarters;  // counted modulo 4; negative for negative angles
};

// REQUIRES: size below kLargeArgument.
inline ReducedAngle ReduceModerate(float radians) noexcept {
  const double angle = radians;
  // The quotient is cut to 24 binary places before it is rounded to a whole number: where that
  // gives the quarter next to the nearest, the results' last bits tell.
  const auto scaled = static_cast<std::int32_t>(angle * kTwoOverPiScaled);
  const std::int32_t quarters = (scaled + 0x800000) >> 24;
  return {angle - quarters * kHalfPi, quarters};
}

// 4/pi in binary, behind three bytes of zeros; the point stands behind the first bit that is set.
constexpr std::array<std::uint8_t, 27> kFourOverPi = {
    0x00, 0x00, 0x00, 0xa2, 0xf9, 0x83, 0x6e, 0x4e, 0x44, 0x15, 0x29, 0xfc, 0x27, 0x57,
    0xd1, 0xf5, 0x34, 0xdd, 0xc0, 0xdb, 0x62, 0x95, 0x99, 0x3c, 0x43, 0x90, 0x41};

std::uint64_t FourOverPiWord(std::size_t firstByte) noexcept {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) word = word << 8 | kFourOverPi[firstByte + i];
  return word;
}

// `bits` are those of a finite number from kLargeArgument on, without the sign. The product of its
// mantissa and the 96 bits of 4/pi that its exponent selects is the angle in turns, of which only
// the fraction counts: its first two bits are the quarters, 62 more the rest.
ReducedAngle ReduceLarge(std::uint32_t bits) noexcept {
  const std::uint32_t exponent = bits >> 23;
  const std::uint64_t mantissa = static_cast<std::uint64_t>((bits & 0x7fffff) | 0x800000)
                                 << (exponent % 8);
  const std::size_t firstByte = exponent / 8 % 16;
  const std::uint64_t high = mantissa * FourOverPiWord(firstByte) << 32;
  const std::uint64_t middle = mantissa * FourOverPiWord(firstByte + 4);
  const std::uint64_t low = mantissa * FourOverPiWord(firstByte + 8) >> 32;
  const std::uint64_t turns = high + middle + low;
  const std::uint64_t quarters = (turns + (std::uint64_t{1} << 61)) >> 62;
  const auto rest = static_cast<std::int64_t>(turns - (quarters << 62));
  return {static_cast<double>(rest) * kHalfPiScaled, static_cast<std::int32_t>(quarters)};
}

// The order of the operations is part of the result.
inline float SineOfRest(double x) noexcept {
  const double squared = x * x;
  const double cubed = x * squared;
  const double start = x + cubed * -0x1.555545995a603p-3;
  const double end = 0x1.1107605230bc4p-7 + squared * -0x1.994eb3774cf24p-13;
  return static_cast<float>(start + cubed * squared * end);
}

inline float CosineOfRest(double x) noexcept {
  const double squared = x * x;
  const double fourth = squared * squared;
  const double start = 1.0 + squared * -0x1.ffffffd0c621cp-2 + fourth * 0x1.55553e1068f19p-5;
  const double end = -0x1.6c087e89a359dp-10 + squared * 0x1.99343027bf8c3p-16;
  return static_cast<float>(start + fourth * squared * end);
}

// Odd quarters exchange sine and cosine, and the quarter gives the signs; done on the bits, so that
// there is no branch.
inline SineCosine FromReduced(ReducedAngle angle) noexcept {
  const auto sine = std::bit_cast<std::uint32_t>(SineOfRest(angle.rest));
  const auto cosine = std::bit_cast<std::uint32_t>(CosineOfRest(angle.rest));
  const auto quarters = static_cast<std::uint32_t>(angle.quarters);
  const std::uint32_t exchanged = (sine ^ cosine) & (0U - (quarters & 1));
  return {std::bit_cast<float>(sine ^ exchanged ^ (quarters << 30 & kSignBit)),
          std::bit_cast<float>(cosine ^ exchanged ^ ((quarters + 1) << 30 & kSignBit))};
}

inline SineCosine OfModerate(float radians) noexcept {
  SineCosine result = FromReduced(ReduceModerate(radians));
  result.sine = radians == 0.0F ? radians : result.sine;  // the polynomial loses the sign of -0
  return result;
}

inline bool IsModerate(float radians) noexcept { return std::fabs(radians) < kLargeArgument; }

ORX_WIDE_VECTORS void ComputeAll(std::span<const float> radians, std::span<float> sines,
                                 std::span<float> cosines) noexcept {
  const std::size_t count = radians.size();
  const float* const angle = radians.data();
  float* const sine = sines.data();
  float* const cosine = cosines.data();
  bool areModerate = true;
  for (std::size_t i = 0; i < count; ++i) areModerate &= IsModerate(angle[i]);
  if (areModerate) {
    for (std::size_t i = 0; i < count; ++i) {
      const SineCosine result = OfModerate(angle[i]);
      sine[i] = result.sine;
      cosine[i] = result.cosine;
    }
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const SineCosine result = SineAndCosine(angle[i]);
    sine[i] = result.sine;
    cosine[i] = result.cosine;
  }
}

}  // namespace

SineCosine SineAndCosine(float radians) noexcept {
  if (IsModerate(radians)) return OfModerate(radians);
  if (!std::isfinite(radians)) {
    constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
    return {kNotANumber, kNotANumber};
  }
  const auto bits = std::bit_cast<std::uint32_t>(radians);
  SineCosine result = FromReduced(ReduceLarge(bits & ~kSignBit));
  if ((bits & kSignBit) != 0) result.sine = -result.sine;
  return result;
}

// What has several versions to choose from would be seen outside of the module.
void SinesAndCosines(std::span<const float> radians, std::span<float> sines,
                     std::span<float> cosines) noexcept {
  ComputeAll(radians, sines, cosines);
}

}  // namespace orxeps
