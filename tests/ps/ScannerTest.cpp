// From bytes to tokens and from tokens to objects. Tokens are looked at as the elements of a
// procedure, where nothing runs.
#include "ps/Scanner.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/Interpretation.h"

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
  Interpretation interpretation(" 7 (");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "7 ()");
  EXPECT_EQ(interpretation.Get().scanner.stringDepth, 1);
  // Inside the string that is still open, " 7" is a name.
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "7 ()");
  EXPECT_EQ(interpretation.Get().scanner.stringDepth, 2);
}

TEST(Scanner, CommentsTakeEffectByTheirLettersAlone) {
  ExpectOutcomes({
      {"1 %!PS-Adobe-3.0 EPSF-3.0 /x (\n2", "1 2"},
      {"1%c\n%c\n\n2", "1 2"},
      {"{1%}\n2}", "{1 2}"},
      {"1 %%EOF\n2", "1"},
      {"1 % 1.E (O) %F\n2", "1"},
      {"1 %%EOFX\n2", "1 2"},
      {"1 %eof\n2", "1 2"},
  });
  const struct {
    std::string_view program;
    std::uint32_t pages;
  } kTable[] = {
      {"%%Page: 1 1", 1},
      {"%%Pages: 3\n%page: 1\n(%%Page: 1)", 0},
      {"%%Page:1\nx %see Page: 2\n%%PageBoundingBox: 1", 2},
      {"%%P.a g9e:\n%PPage:\n", 2},
      {"%%EOF\n%%Page: 1", 0},
  };
  for (const auto& [program, pages] : kTable) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    EXPECT_EQ(interpretation.Get().pageCounter, pages) << program;
    const auto state = pages ? orxeps::PageState::Drawing : orxeps::PageState::NoPage;
    EXPECT_EQ(interpretation.Get().pageState, state) << program;
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
    Interpretation interpretation = Interpretation::OfExactly(row.program);
    EXPECT_EQ(interpretation.Draw(), "") << row.program;
    EXPECT_EQ(interpretation.Stack(), row.expected) << row.program;
  }
  Interpretation comment = Interpretation::OfExactly("%%Page:");
  static_cast<void>(comment.Draw());
  EXPECT_EQ(comment.Get().pageCounter, 1U);
}

TEST(Scanner, ProceduresNestAsDeepAsTheDocumentSays) {
  constexpr std::size_t kDepth = 200'000;
  Interpretation interpretation(std::string(kDepth, '{') + std::string(kDepth, '}') + " 7");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Get().operandStack.Count(), 2);
  EXPECT_EQ(interpretation.Get().operandStack.Top()->intValue, 7);
  EXPECT_EQ(StackAfter("{1 {2 {} 3} (a b) /n {x}} << /k >> ] {}"),
            "{1 {2 {} 3} (a b) /n {x}} [/k] {}");
}

}  // namespace
}  // namespace orxtests
