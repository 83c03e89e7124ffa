// Tokens of the binary encoding.
#include <gtest/gtest.h>

#include <string>

#include "tests/ps/LanguageRun.h"

namespace orxtests {
namespace {

using namespace std::string_view_literals;

constexpr Outcome kTokens[] = {
    {"\x84\x00\x00\x01\x00"sv, "256"},
    {"\x84\xff\xff\xff\xfe"sv, "-2"},
    {"\x85\x00\x00\x01\x00"sv, "65536"},
    {"\x86\x01\x00"sv, "256"},
    {"\x86\xff\xfe"sv, "-2"},
    {"\x87\x00\x80"sv, "-32768"},
    {"\x88\xff"sv, "-1"},
    {"\x88\x7f"sv, "127"},
    {"\x8a\x3f\xc0\x00\x00"sv, "1.5"},
    {"\x8b\x00\x00\xc0\xbf"sv, "-1.5"},
    {"\x8d\x01"sv, "true"},
    {"\x8d\x00"sv, "false"},
    {"\x8e\x03"
     "abc"sv,
     "(abc)"},
    {"\x8e\x04)\n%\x84"sv, "()\n%\x84)"},
    {"\x8e\x00"sv, "()"},
};

TEST(BinaryTokens, GiveLiteralObjects) {
  for (const auto& [token, expected] : kTokens) {
    EXPECT_EQ(StackAfter(token), expected);
    EXPECT_EQ(StackAfter("{" + std::string(token) + "}7"), "{" + std::string(expected) + "} 7");
  }
  const std::string longest(255, 'x');
  EXPECT_EQ(StackAfter("\x8e\xff" + longest), "(" + longest + ")");
}

TEST(BinaryTokens, CutShortByTheEndOfTheDataGiveNothing) {
  for (const auto& [token, expected] : kTokens) {
    for (std::size_t length = 0; length <= token.size(); ++length) {
      LanguageRun run = LanguageRun::OfExactly(token.substr(0, length));
      run.Run();
      EXPECT_EQ(run.Stack(), length < token.size() ? "" : expected);
    }
  }
  EXPECT_EQ(StackAfter("{\x8e\x09 abc}"), "{}");
}

TEST(BinaryTokens, NamesOfOperatorsAreExecutable) {
  ExpectOutcomes({
      {"{\x92\x3e\x92\x01}", "{exch add}"},
      {"1 2 \x92\x01", "3"},
      {"{\x92\x04 \x92\xff 7}", "{7}"},  // no operator has these indices
      {"{\x92\xba}", "{where}"},
  });
}

TEST(BinaryTokens, OfOtherKindsLoseTheirFirstByteOnly) {
  for (const int type : {128, 129, 130, 131, 137, 140, 143, 144, 145, 147, 148, 149, 150, 159}) {
    const std::string byte(1, static_cast<char>(type));
    EXPECT_EQ(StackAfter(byte + "7 a" + byte + "8 {" + byte + "9}"), "7 8 {9}") << type;
  }
}

}  // namespace
}  // namespace orxtests
