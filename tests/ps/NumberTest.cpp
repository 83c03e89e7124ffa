// Numbers, as the C library reads them.
#include "ps/Numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "ps/Scanner.h"
#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

using orxeps::PSObjectType;

// What a token of digits, signs, points and exponent letters must become.
struct Number {
  PSObjectType type = PSObjectType::None;
  std::int32_t intValue = 0;
  std::uint32_t realBits = 0;

  bool operator==(const Number&) const = default;
};

Number ByTheLibrary(const std::string& token) {
  const double real = std::atof(token.c_str());
  const bool isReal = token.find_first_of(".E") != std::string::npos ||
                      (token.find('e') != std::string::npos && real != 0.0);
  if (isReal)
    return {PSObjectType::Real, 0, std::bit_cast<std::uint32_t>(static_cast<float>(real))};
  const long long integer = std::clamp<long long>(std::strtoll(token.c_str(), nullptr, 10),
                                                  std::numeric_limits<std::int32_t>::min(),
                                                  std::numeric_limits<std::int32_t>::max());
  if (integer == 0 && token != "0") return {};
  return {PSObjectType::Integer, static_cast<std::int32_t>(integer), 0};
}

class Numbers : public testing::Test {
protected:
  Number Made(const std::string& token) {
    const orxeps::PSRef object = interpretation.Get().scanner.MakeObject(token);
    EXPECT_EQ(object->literal, 1) << token;
    return {object->type, object->intValue, std::bit_cast<std::uint32_t>(object->realValue)};
  }

  Interpretation interpretation{""};
};

TEST_F(Numbers, AgreeWithTheLibraryOnWhatDocumentsWrite) {
  std::istringstream tokens(
      "12 -7 +7 007 -0 00 3.5 -.5 +.5 5. . -. - + 1-2 1e3 1E3 1e+3 1e-3 0e5 0E5 1e 1e+ e5 --5 "
      "+-5.0 "
      "-+5.0 1.2.3 1e5.5 2147483647 2147483648 -2147483648 -2147483649 99999999999999999999 "
      "16777217.0 3.4028235e38 3.4028236e38 1e39 -1e39 1e400 -1e400 1e-46 1e-400 1E-400 1e-310 "
      "1e99999999999 1e-99999999999 0.1 0.30000001 1.17549429e-38 123456789.123456789");
  for (std::string token; tokens >> token;) EXPECT_EQ(Made(token), ByTheLibrary(token)) << token;
  EXPECT_EQ(Made(""), Number());
}

TEST_F(Numbers, AgreeWithTheLibraryOnAnything) {
  std::mt19937 random(20240501);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  constexpr std::string_view kAlphabet = "0123456789+-.eE";
  for (int round = 0; round < 200'000; ++round) {
    std::string token;
    for (std::size_t left = below(12); left > 0; --left)
      token += kAlphabet[below(kAlphabet.size())];
    // Now and then many digits, so that rounding and range matter.
    if (round % 8 == 0) {
      token.insert(below(token.size() + 1), std::string(below(60), kAlphabet[below(10)]));
    }
    ASSERT_EQ(Made(token), ByTheLibrary(token)) << token;
  }
}

TEST(HexadecimalNumbers, StopAtTheFirstOtherCharacterAndWrapAround) {
  ExpectOutcomes({
      {"16#FF 0x1F 0X1f 16#1f", "255 31 31 31"},
      {"16#1G2 16#G 16# 0x 16#-1", "1 0 0 0 0"},
      {"0x0X1F 16#0X10 0x0x1F", "31 16 0"},
      {"16#7FFFFFFF 16#FFFFFFFF 16#1FFFFFFFF", "2147483647 -1 -1"},
      {"{8#17 16$F 0y1 x0x1}", "{8#17 16$F 0y1 x0x1}"},
  });
}

}  // namespace
}  // namespace orxtests
