// Operators that rearrange the operand stack, and those that run procedures.
#include <gtest/gtest.h>

#include <string>

#include "tests/ps/LanguageRun.h"

namespace orxtests {
namespace {

TEST(StackOperators, MoveAndShareTheirOperands) {
  ExpectOutcomes({
      {"1 2 pop", "1"},
      {"1 2 exch", "2 1"},
      {"1 dup neg", "-1 -1"},
      {"1 2 3 1 index", "1 2 3 2"},
      {"1 2 0 index neg", "1 -2 -2"},
      {"1 -1 index 2 (x) index", "1 2 (x)"},
      {"mark [ <<", "mark mark mark"},
      {"mark 1 2 counttomark", "mark 1 2 2"},
      {"mark 1 mark counttomark", "mark 1 mark 0"},
      {"1 2 counttomark", "1 2 -1"},
      {"1 mark 2 mark 3 cleartomark", "1 mark 2"},
      {"1 2 cleartomark", ""},
      // Where a search has found no mark, one may be later.
      {"1 2 3 counttomark mark 3 1 roll counttomark", "1 2 mark 3 -1 2"},
      {"1 2 counttomark mark exch counttomark", "1 2 mark -1 1"},
      {"1 2 counttomark pop pop pop mark 3 4 counttomark", "mark 3 4 2"},
      {"mark 1 2 counttomark pop pop pop pop 3 4 counttomark", "3 4 -1"},
      {"mark 1 [ 2 3 ] counttomark pop pop counttomark", "mark 1 1"},
      {"/a 1 array def a 0 get 7 counttomark mark a astore pop counttomark", "mark 7 -1 2"},
  });
}

TEST(StackOperators, UnderflowLeavesTheOperands) {
  ExpectOutcomes({
      {"1 5 index", "1 !stackunderflow"},
      {"1 1 index", "1 !stackunderflow"},
      {"(x) copy", "(x) !stackunderflow"},
  });
}

TEST(StackOperators, RollTurnsTheTopEntries) {
  ExpectOutcomes({
      {"1 2 3 3 1 roll", "3 1 2"},
      {"1 2 3 3 -1 roll", "2 3 1"},
      {"0 1 2 3 3 4 roll", "0 3 1 2"},
      {"1 2 3 3 -4 roll", "2 3 1"},
      {"1 2 3 3 2000000000 roll", "2 3 1"},
      {"1 2 3 3 -2147483648 roll", "3 1 2"},
      {"1 2 3 3 0 roll", "1 2 3"},
      {"1 2 0 1 roll -3 1 roll", "1 2"},
      {"1 2 2.0 1 roll", "1 2"},  // a Real counts as 0 entries
      {"1 2 2 1.0 roll", "1 2"},  // and as no turns
      {"1 2 3 1 roll", "1 2 !stackunderflow"},
      {"1 2000000000 1 roll", "1 !stackunderflow"},
  });
}

TEST(StackOperators, CopyRepeatsEntriesOrFillsAnObject) {
  ExpectOutcomes({
      {"1 2 2 copy", "1 2 1 2"},
      {"1 2 1 copy neg", "1 -2 -2"},
      {"1 2 0 copy -1 copy", "1 2"},
      {"1 2 3 copy", "1 2 !stackunderflow"},
      {"1.5 2.5 copy", "1.5"},
      {"(a) (b) copy true false copy /x /y copy", "(a) true /x"},
      {"[1 2] [3] copy", "[3 1 2]"},
      {"{1} {2} copy", "{2 1}"},
      {"[1] dup copy", "[1 1]"},
      {"/a [1] def /b [2 3] def b a copy pop b 0 get neg pop a b", "[1 2 3] [-2 3]"},
      {"<< /a 1 >> << /b 2 /c 3 >> copy dup /a get", "<<1>> 1"},
      {"(a) 2.5 copy", "(a) 2.5"},
      {"{1} [2] copy", "{1} [2]"},
  });
}

TEST(StackOperators, ACopyThatHasNoRoomPushesNothing) {
  const std::int32_t most = orxeps::kMaxOperands;
  const std::string fill = std::to_string(most - 9) + " array aload pop ";
  LanguageRun run(fill + "10 copy");
  run.Run();
  EXPECT_EQ(run.operandStack.Count(), most - 9);
  EXPECT_STREQ(run.lastError, "stackoverflow");
}

TEST(ControlOperators, RunWhatTheConditionChooses) {
  ExpectOutcomes({
      {"true {1} {2} ifelse false {1} {2} ifelse", "1 2"},
      {"true {1 2 add} if false {4} if", "3"},
      {"1 {1} {2} ifelse", "1 !typecheck"},
      {"true 1 {2} ifelse", "true 1 !typecheck"},
      {"true {1} 2 ifelse", "true {1} 2 !typecheck"},
      {"true 5 if", "true 5 !typecheck"},
      {"1 {5} if", "1 !typecheck"},
      {"\x8d\x02{1}{2}ifelse \x8d\x02 true eq", "1 false"},
  });
}

TEST(ControlOperators, ExecRunsProceduresAndExecutesTheRest) {
  ExpectOutcomes({
      {"{1 {2} 3} exec", "1 {2} 3"},
      {"5 exec (x) exec /x exec [1] exec", "5 (x) /x [1]"},
      {"3 4 /add load exec", "7"},
      {"{exec} exec", "!stackunderflow"},
      {"1 {2 {3} exec 4} exec 5", "1 2 3 4 5"},
  });
}

}  // namespace
}  // namespace orxtests
