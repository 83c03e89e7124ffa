// From bytes to tokens and from tokens to objects. Tokens are looked at as the elements of a
// procedure, where nothing runs.
#include "ps/Scanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/ps/LanguageRun.h"

namespace orxtests {
namespace {

using namespace std::string_view_literals;

TEST(Scanner, TokensAreRunsOfRegularBytesOrSingleDelimiters) {
  ExpectOutcomes({
      {"{abc/def a[b]c}", "{abc /def a [ b ] c}"},
      {"{!#$&*+,-.:;=?^_~@`}", "{!#$&*+,-.:;=?^_~@`}"},
      {"{a\tb\vc\fd\rg\nh}", "{a b c d g h}"},
      {"{a\"b\'c|d\x7fg\xffh\x01i}", "{a b c d g h i}"},
      {"/ x /\n/] //x /a/b", "/x / /] // /a /b"},
      {"{<<1>>}", "{<< 1 >>}"},
      {"{a<b c>d g}", "{a c g}"},  // "<" and ">" alone lose the token behind them
      {"[<41>] 7", "mark 7"},
      {"{1\\2 }3", "{1 2} 3"},
      {"} \\ 5", "5"},
      {"", ""},
  });
}

TEST(Scanner, StringsKeepSpacesAndDropWhatIsADelimiter) {
  ExpectOutcomes({
      {"(a b)", "(a b)"},
      {"( a )", "( a)"},  // spaces before a delimiter go with it
      {"(a\nb\n\nc)", "(abc)"},
      {"(a\rb\tc)", "(a\rb\tc)"},
      {"(50%)", "(50)"},
      {"(a<b>[c]{d}/e)", "(abcde)"},
      {"(a(b)c)", "(abc)"},
      {"(a\\)b\\(c)", "(a)b(c)"},
      {"(a\\nb\\\\) 7", "(anb\\) 7"},
      {"(it's \x85 \xff!)", "(it's \x85 \xff!)"},
      {"()", "()"},
      {"{(a) (b)}", "{(a) (b)}"},
      // A tab before a parenthesis makes it text, though it closes the string for the scanner.
      {"(a\t) 1) 2", "(a\t)1) 2"},
  });
}

TEST(Scanner, OnlyAParenthesisRightBehindABackslashLeavesTheDepthAlone) {
  ExpectOutcomes({
      {"(a\\(b) %5\n7", "(a(b) 7"},
      {"(a\\ (b)c) 7", "(a (b) 7"},  // this one is text, but opens a level that the next one closes
      // In the level left open spaces belong to tokens, and " }" does not end a procedure.
      {"(a\\ (b){1 2 }", "(a (b) {1  2  }}"},
      // Below depth 0 comments are program text, and strings lose their spaces.
      {") % 5", "5"},
      {") (a b) 5", "(ab) 5"},
      {") (a%b)\nc) 5", "(ac) 5"},
      {") (a\x84"
       "b) 5",
       "(ab) 5"},
  });
}

TEST(Scanner, TheDepthIsNeverReset) {
  LanguageRun run(" 7 (");
  run.Run();
  EXPECT_EQ(run.Stack(), "7 ()");
  EXPECT_EQ(run.scanner.stringDepth, 1);
  // Inside the string that is still open, " 7" is a name.
  run.Run();
  EXPECT_EQ(run.Stack(), "7 ()");
  EXPECT_EQ(run.scanner.stringDepth, 2);
}

TEST(Scanner, CommentsAreHeardByTheirLettersAndSignsAlone) {
  ExpectOutcomes({
      {"1 %!PS-Adobe-3.0 EPSF-3.0 /x (\n2", "1 2"},
      {"1%c\n%c\n\n2", "1 2"},
      {"{1%}\n2}", "{1 2}"},
  });
  const struct {
    std::string_view program;
    std::vector<std::string> heard;
  } kTable[] = {
      {"%a b\r%c\n1 %d", {"abc", "d"}},  // only a newline ends it
      {"%%Page: 12 .5\tx", {"Page:x"}},
      {"% 1.E (O) %F<>[]{}/", {"EOF"}},
      {"x%\n%", {"", ""}},
      {"(a %b)\n%c", {"c"}},  // inside a string it is text
  };
  for (const auto& [program, heard] : kTable) {
    LanguageRun run(program);
    run.Run();
    EXPECT_EQ(run.comments, heard) << program;
  }
}

TEST(Scanner, ALastTokenRunsUnlessItIsASingleByte) {
  for (const Outcome& row : {Outcome{"1 12", "1 12"},
                             {"1 2", "1"},
                             {"1 (ab)", "1 (ab)"},
                             {"{1 23", "{1 23}"},
                             {"{1 {2 34", "{1 {2 34}}"},
                             {"(ab", "(ab)"},
                             {"1 23\0"sv, "1 23"},
                             {"/", ""},
                             {"/a /", "/a"},
                             {"<", ""},
                             {"", ""}}) {
    LanguageRun run = LanguageRun::OfExactly(row.program);
    run.Run();
    EXPECT_EQ(run.Stack(), row.expected) << row.program;
  }
  LanguageRun comment = LanguageRun::OfExactly("%last");
  comment.Run();
  EXPECT_EQ(comment.comments, std::vector<std::string>{"last"});
}

TEST(Scanner, ProceduresNestAsDeepAsTheDocumentSays) {
  constexpr std::size_t kDepth = 200'000;
  LanguageRun run(std::string(kDepth, '{') + std::string(kDepth, '}') + " 7");
  run.Run();
  EXPECT_EQ(run.operandStack.Count(), 2);
  EXPECT_EQ(run.operandStack.Top()->intValue, 7);
  EXPECT_EQ(StackAfter("{1 {2 {} 3} (a b) /n {x}} << /k >> ] {}"),
            "{1 {2 {} 3} (a b) /n {x}} [/k] {}");
}

}  // namespace
}  // namespace orxtests
