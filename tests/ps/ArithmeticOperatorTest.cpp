// Arithmetic in single precision, and comparisons.
#include <gtest/gtest.h>

#include "tests/support/Outcomes.h"

namespace orxtests {
namespace {

TEST(Arithmetic, IsSinglePrecisionAndRealIfAnOperandIs) {
  ExpectOutcomes({
      {"1 2 add 1 2 sub 3 4 mul", "3 -1 12"},
      {"1 2.0 add 1.5 2 sub 3.0 4.0 mul", "3.0 -0.5 12.0"},
      {"16777217 1 add 16777217 0 sub", "16777216 16777216"},
      {"2147483647 2 mul -2147483647 1 sub", "-2147483648 -2147483648"},
      {"1e30 dup mul 0.1 0.2 add", "inf 0.3"},
      {"1 (x) sub [1] 2.5 mul /a 1 add", "1 0.0 1"},
  });
}

TEST(Arithmetic, DividesByTheRulesOfEachOperator) {
  ExpectOutcomes({
      {"7 2 div 6 3 div", "3.5 2.0"},
      {"1 0 div 1 0.0005 div -1 -0.00099 div", "0.0 0.0 0.0"},
      {"1 0.001 div -1 0.001 div", "999.99994 -999.99994"},
      {"-7 2 idiv 7 -2 idiv 16777217 1 idiv", "-3 -3 16777216"},
      {"5 0 idiv 0 0 idiv", "-2147483648 -2147483648"},
      {"7.0 2 idiv 7 2.0 idiv", "0 -2147483648"},
      {"-7 2 mod 7 -2 mod 16777217 16777216 mod", "-1 1 1"},
      {"7 0 mod 7 2.0 mod 7.5 2 mod -2147483648 -1 mod", "0 0 0 0"},
  });
}

TEST(Arithmetic, RoundsAndChangesSigns) {
  ExpectOutcomes({
      {"3 abs -3 abs -3.5 abs (abc) abs", "3 3 3.5 0"},
      {"-2147483648 abs", "-2147483648"},
      {"2.5 floor -2.5 floor 3 floor", "2.0 -3.0 3"},
      {"2.5 ceiling -2.5 ceiling -0.5 ceiling", "3.0 -2.0 -0.0"},
      {"2.5 round -2.5 round 2.4 round -2.6 round 3 round", "3 -2 2 -3 3"},
      {"0.49999997 round 8388608.0 round 1e30 round -1e30 round",
       "0 8388608 -2147483648 -2147483648"},
      {"(x) round (x) neg", "(x) (x)"},
      {"5 neg -2147483648 neg 2.5 neg", "-5 -2147483648 -2.5"},
      // These two change the object itself, whoever holds it.
      {"5 dup neg 2.5 dup round", "-5 -5 3 3"},
      {"/x 7 def x neg pop x", "-7"},
  });
}

TEST(Relations, EqualityLooksAtTypesAndIdentity) {
  ExpectOutcomes({
      {"1 1 eq 1 2 eq 1 1.0 eq 1.5 1.5 eq", "true false true true"},
      {"16777217 16777216.0 eq 16777217 16777216 eq", "true false"},
      {"(abc) (abc) eq (abc) (abd) eq /a /a eq", "true false true"},
      {"(abc) /abc eq /abc (abc) eq /abd (abc) eq", "true true false"},
      {"[1] dup eq [1] [1] eq [ ] [ ] eq [ ] [null] eq", "true false true false"},
      {"/n 1 def [n 2] [n 2] eq [n] [n] eq", "false true"},
      {"currentdict dup eq {1} dup eq 00 dup eq", "false false false"},
      {"/add load dup eq mark mark eq null null eq", "false true true"},
      {"true true eq true false eq 1 true eq 1 (1) eq null mark eq",
       "true false false false false"},
  });
}

TEST(Relations, OrderHoldsForIntegersMixedNumbersAndStrings) {
  ExpectOutcomes({
      {"1 2 lt 2 1 lt 1 1 lt 16777216 16777217 lt", "true false false true"},
      {"1 1.5 lt 1.5 2 lt 2 1.5 lt 16777216 16777217.0 lt", "true true false false"},
      {"1.0 2.0 lt", "false"},
      {"(a) (b) lt (b) (a) lt (a) (ab) lt (a) (a) lt () (a) lt", "true false true false true"},
      {"(z) (\xe9!) lt", "true"},
      {"/a /b lt (a) /b lt false true lt 1 (2) lt", "false false false false"},
  });
}

}  // namespace
}  // namespace orxtests
