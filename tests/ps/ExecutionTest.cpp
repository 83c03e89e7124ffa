// What executing an object means, and what may change while it runs.
#include "ps/Execution.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

TEST(Execution, NamesStandForTheirValues) {
  ExpectOutcomes({
      {"nope {nope} exec 1", "1"},
      {"/x 5 def x x neg", "-5 -5"},
      {"/p {1 {2} x} def /x 3 def p", "1 {2} 3"},
      {"/plus /add load def 1 2 plus", "3"},
      {"/add {sub} def 5 3 add", "2"},
      {"/n /m def n", "/m"},
      {"5 3 /add 7 def add", "5 3 7"},
  });
}

TEST(Execution, BindReplacesNamesOfOperatorsAtThatMoment) {
  ExpectOutcomes({
      {"{1 add /sub (x) {mul nope}} bind", "{1 --add-- --sub-- (x) {--mul-- nope}}"},
      {"/p {add} bind def /q {add} def /add {sub} def 5 3 p 5 3 q", "8 2"},
      {"/add {sub} def {add} bind", "{add}"},
      {"5 bind (x) bind", "5 (x)"},
      {"{1 {2 {add} bind} exec} exec", "1 2 {--add--}"},
      // The text of what has no name is looked up like any other.
      {"userdict /\n/add load put {1 (x)} bind", "{--add-- --add--}"},
  });
}

TEST(Execution, WhatRunsMayChangeMeanwhile) {
  ExpectOutcomes({
      {"/p {/p {99} def 1 2} def p p", "1 2 99"},
      {"/p {/p 5 def /p load} def p", "5"},
      // The element that is running is replaced, and the rest of the run sees it.
      {"/p {/p load bind pop add} def 3 4 p p", "7 !stackunderflow"},
      // Elements added during a run belong to the next one.
      {"/p {{9} /p load copy pop 1} def p p", "1 1 9"},
      {"/p {true {/p 0 def 1 2} if 3} def p p", "1 2 3 0"},
      {"{userdict /p 0 put 1} /p {exec 2} def p", "1 2"},
      {"/d 1 dict def d begin /p {end /d 0 def 1 2} def p d", "1 2 0"},
  });
}

TEST(Execution, RunsWithoutEndAreGivenUpAndTheNextObjectRuns) {
  ExpectOutcomes({
      {"/p {p} def p 7", "7 !execstackoverflow"},
      {"/p {{p} exec} def p 7 {8} exec", "7 8 !execstackoverflow"},
      {"{/p {p} def p 1} exec 2", "2 !execstackoverflow"},
      {"1000000 array aload pop 2 copy 1000000 copy cleartomark 1", "1 !stackoverflow"},
  });
}

TEST(Execution, OperatorsAnswerHowTheyWent) {
  const struct {
    const char* program;
    const char* name;
    int expected;
  } kTable[] = {
      {"1 2", "add", 0},
      {"1", "add", 1},
      {"showpage", "showpage", 3},
      {"1 2", "Add", 3},
      {"", "", 3},
      {"", "where", 0},
      {"5", "image", 0},
      {"(x)", "colorimage", 2},
      {"1 [1 2]", "astore", 2},
      {"1 2 [1]", "transform", 2},
      {"true 5", "if", 0},
      {"", "fill", 1},
  };
  for (const auto& [program, name, expected] : kTable) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    const orxeps::ResultCode result = DispatchOperator(interpretation.Get(), name);
    EXPECT_EQ(static_cast<int>(result), expected) << program << ' ' << name;
  }
}

}  // namespace
}  // namespace orxtests
