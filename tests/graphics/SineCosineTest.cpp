// The library's own sine and cosine: the same bits everywhere.
#include "graphics/SineCosine.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace orxtests {
namespace {

using orxeps::SineAndCosine;
using orxeps::SineCosine;
using orxeps::SinesAndCosines;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

// What tells two results apart: all bits of a number, of those that are none only that they are.
std::uint32_t Bits(float value) {
  return std::bit_cast<std::uint32_t>(std::isnan(value) ? kNotANumber : value);
}

// Numbers of every exponent and both signs, infinite ones and those that are none: 2.8 million
// patterns of bits, evenly spread, and the neighbourhood of the first multiples of pi/4.
std::vector<float> Arguments() {
  std::vector<float> arguments;
  for (std::uint64_t bits = 0; bits < std::uint64_t{1} << 32; bits += 1531) {
    arguments.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
  }
  for (int eighth = -200; eighth <= 200; ++eighth) {
    const auto near =
        std::bit_cast<std::uint32_t>(static_cast<float>(eighth * 0.78539816339744831));
    for (std::uint32_t i = 0; i < 1000; ++i) {
      arguments.push_back(std::bit_cast<float>(near + i - 500));
    }
  }
  return arguments;
}

TEST(SineCosine, KeepsTheBitsOfKnownValues) {
  struct Case {
    float radians, sine, cosine;
  };
  const Case cases[] = {
      {0.0F, 0.0F, 1.0F},
      {-0.0F, -0.0F, 1.0F},
      {0x1p-149F, 0x1p-149F, 1.0F},
      {0x1.fffffep-13F, 0x1.fffffep-13F, 1.0F},
      {1.0F, 0x1.aed548p-1F, 0x1.14a28p-1F},
      {0x1.921fb6p+0F, 1.0F, -0x1.777a5cp-25F},
      {-0x1.921fb6p+1F, 0x1.777a5cp-24F, -1.0F},
      {kInfinity, kNotANumber, kNotANumber},
      {-kInfinity, kNotANumber, kNotANumber},
      {kNotANumber, kNotANumber, kNotANumber},
  };
  for (const Case& c : cases) {
    const SineCosine result = SineAndCosine(c.radians);
    EXPECT_EQ(Bits(result.sine), Bits(c.sine)) << "sine of " << c.radians;
    EXPECT_EQ(Bits(result.cosine), Bits(c.cosine)) << "cosine of " << c.radians;
  }
}

// The sum stands for the values of the GNU C library 2.36 without fused operations, with which all
// 2^32 arguments were compared when it was written down. It must come out on every platform.
TEST(SineCosine, IsTheSameOnEveryPlatform) {
  std::uint64_t sum = 0xcbf29ce484222325;
  const auto add = [&sum](float value) { sum = (sum ^ Bits(value)) * 0x100000001b3; };
  for (const float argument : Arguments()) {
    const SineCosine result = SineAndCosine(argument);
    add(result.sine);
    add(result.cosine);
  }
  EXPECT_EQ(sum, 0xc7995d5130ddef8U);
}

// Every length up to several vectors, with and without an argument that does not fit the fast loop.
TEST(SineCosine, ManyAtOnceAreTheSameAsOneByOne) {
  const float strangers[] = {-0.0F, 119.99999F, 120.0F, -1e30F, kInfinity, kNotANumber};
  std::vector<float> radians;
  for (std::size_t length = 0; length <= 67; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      radians.clear();
      for (std::size_t i = 0; i < length; ++i) {
        radians.push_back(static_cast<float>(i) * 1.7F - 40.0F);
      }
      if (place < length) radians[place] = strangers[(length + place) % std::size(strangers)];
      std::vector<float> sines(length);
      std::vector<float> cosines(length);
      SinesAndCosines(radians, sines, cosines);
      for (std::size_t i = 0; i < length; ++i) {
        const SineCosine one = SineAndCosine(radians[i]);
        ASSERT_EQ(Bits(sines[i]), Bits(one.sine)) << radians[i] << ", place " << i;
        ASSERT_EQ(Bits(cosines[i]), Bits(one.cosine)) << radians[i] << ", place " << i;
      }
    }
  }
  const std::vector<float> arguments = Arguments();
  std::vector<float> moderate;
  for (const float argument : arguments) {
    if (std::fabs(argument) < 120.0F) moderate.push_back(argument);
  }
  std::vector<float> sines(moderate.size());
  std::vector<float> cosines(moderate.size());
  SinesAndCosines(moderate, sines, cosines);
  for (std::size_t i = 0; i < moderate.size(); ++i) {
    const SineCosine one = SineAndCosine(moderate[i]);
    ASSERT_EQ(Bits(sines[i]), Bits(one.sine)) << moderate[i];
    ASSERT_EQ(Bits(cosines[i]), Bits(one.cosine)) << moderate[i];
  }
}

#ifdef __GLIBC__
// Where the platform's library is the one that the values come from, it says the same. Its variant
// with fused operations, which it chooses by the processor, differs in a few last bits, most of
// them beside multiples of pi/2.
TEST(SineCosine, AgreesWithTheGnuCLibrary) {
  std::size_t differing = 0;
  const std::vector<float> arguments = Arguments();
  for (const float argument : arguments) {
    const SineCosine result = SineAndCosine(argument);
    if (Bits(result.sine) != Bits(std::sin(argument))) ++differing;
    if (Bits(result.cosine) != Bits(std::cos(argument))) ++differing;
  }
  EXPECT_LE(differing, arguments.size() / 100'000);
}
#endif

}  // namespace
}  // namespace orxtests
