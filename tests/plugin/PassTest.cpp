// Passes over a document: what carries over, which pages run, what is counted, low memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "framework/PropertiesControl.h"
#include "ps/Execution.h"
#include "tests/support/Interpretation.h"
#include "tests/support/ScopedUnits.h"

namespace orxtests {
namespace {

using orxframework::PropertiesControl;

TEST(Passes, LeaveTheStacksAndTheGraphicsStateToTheNext) {
  const ScopedPoints points;
  Interpretation interpretation(
      "/x where {pop 1} {0} ifelse /x 5 def matrix currentmatrix 0 get currentlinewidth\n"
      "3 setlinewidth 2 2 scale gsave 1 1 moveto");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "0 1.0 0.1");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "0 1.0 0.1 1 1.0 3.0");
  EXPECT_EQ(interpretation.Path(), "M 2 2 M 2 2");
  EXPECT_EQ(interpretation.Get().dictionaryStack.Count(), 4);
  EXPECT_EQ(interpretation.Get().canvas.states.SavedCount(), 2U);
  EXPECT_FALSE(interpretation.Get().dictionaries.systemdict);
  // A counting pass goes on with the matrix that it finds.
  static_cast<void>(interpretation.Count());
  EXPECT_EQ(interpretation.Stack(), "0 1.0 0.1 1 1.0 3.0 1 2.0 3.0");
}

// Three passes that only count, on the operand stack, then one that reaches for their dictionaries.
TEST(Passes, KeepDictionariesOfTheirOwnBeneathTheNext) {
  const struct {
    const char* program;  // of the fourth pass
    const char* left;
  } kCases[] = {
      {"end end /k 5 def end end /k where {pop 1} {0} ifelse", "0"},
      {"end end end /add 7 def end end 1 2 add", "3"},
      {"end end end /add 7 def 1 2 add end add", "1 9"},
      {"1 dict systemdict copy pop 1 2 add /add where {/sub 3 put} if sub", "3 3"},
      {"/C systemdict def /add /C undefineresource 1 2 add end end end /add 7 def add", "3 7"},
  };
  for (const auto& [program, left] : kCases) {
    Interpretation interpretation("1 add dup 4 lt {} {" + std::string(program) + "} ifelse");
    for (int pass = 0; pass < 4; ++pass) static_cast<void>(interpretation.Draw());
    EXPECT_EQ(interpretation.Stack(), "4 " + std::string(left)) << program;
  }
}

TEST(Passes, CostLittleWhereTheyLeaveNothing) {
  Interpretation interpretation("0 0 moveto 1 1 lineto stroke unknown");
  static_cast<void>(interpretation.Draw());
  orxeps::ORXPrintEPSInterpreter& interpreter = interpretation.Get();
  const std::size_t used = interpreter.heap.Budget().used;
  for (int pass = 0; pass < 20; ++pass) static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpreter.heap.Budget().used, used);
  EXPECT_EQ(interpreter.dictionaryStack.Count(), 2 * 21);
}

// A pass whose document has little room left.
std::string DrawWithLittleRoom(Interpretation& interpretation) {
  orxeps::MemoryBudget& budget = interpretation.Get().heap.Budget();
  budget.used += orxeps::kMaxBytes;
  const std::string calls = interpretation.Draw();
  budget.Give(orxeps::kMaxBytes);
  return calls;
}

TEST(Passes, DropWhatHasNoRoomToItsEnd) {
  std::string body;
  for (int i = 0; i < 60'000; ++i) body += "1 2 lineto ";
  Interpretation procedure("/p { 0 0 moveto {" + body + "} stroke } def p 5");
  EXPECT_EQ(DrawWithLittleRoom(procedure), "");
  EXPECT_EQ(procedure.Stack(), "/p 5");
  Interpretation string("(" + std::string(orxeps::kMaxTextBytes + 1, 'x') + " y ) 5");
  static_cast<void>(string.Draw());
  EXPECT_EQ(string.Error(), "limitcheck");
  EXPECT_EQ(string.Stack(), "5");
}

TEST(Passes, WithoutInputFindNothing) {
  orxeps::ORXPrintEPSInterpreter interpreter(nullptr);
  EXPECT_EQ(interpreter.scanner.ReadToken().text, "");
  EXPECT_FALSE(interpreter.scanner.ReadBinaryToken());
  EXPECT_EQ(interpreter.scanner.ReadString()->type, orxeps::PSObjectType::String);
  EXPECT_EQ(interpreter.scanner.ReadProcedure()->type, orxeps::PSObjectType::Procedure);
  EXPECT_EQ(DispatchOperator(interpreter, "eexec"), orxeps::ResultCode::Ran);
}

TEST(Passes, ForgetNamesThatNothingUses) {
  std::string program = "/kept 1 def ";
  for (int i = 0; i < 5'000; ++i) program += "unknown" + std::to_string(i) + " ";
  Interpretation interpretation(program);
  static_cast<void>(interpretation.Draw());
  EXPECT_LT(interpretation.Get().names.Count(), 200U);
  EXPECT_LT(interpretation.Get().heap.Budget().used, std::size_t{64} << 10);
}

TEST(Passes, RecurseThroughDictionariesOfTheirOwn) {
  const std::string calls = CallsOf(
      "/rec { 1 dict begin /n exch def n 0 eq { 1 1 moveto } { n 1 sub rec } ifelse n 2 lineto end "
      "} "
      "def newpath 1100 rec stroke");
  EXPECT_EQ(std::ranges::count(calls, 'L'), 1101 + 3) << "lines, and the attributes' names";
}

TEST(HostilePasses, ThatCountLeaveRoomForDrawing) {
  std::string program = "gsave ";
  for (int i = 0; i < 140'000; ++i) program += "0 0 1 0 90 arc stroke ";
  Interpretation interpretation(program + "newpath 1 1 moveto 2 2 lineto stroke");
  static_cast<void>(interpretation.Count());
  const std::string calls = interpretation.Draw();
  EXPECT_NE(calls.find("LineTo"), std::string::npos);
  EXPECT_GT(std::ranges::count(calls, 'M'), 140'000);
}

TEST(Passes, EndOpensDictionariesOfTheirOwnOnly) {
  // Each pass begins with its own pair on top; "end" can take it off again, down to the first two.
  Interpretation interpretation("/y 1 def end end end y 1 dict begin");
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Error(), "dictstackunderflow");
  EXPECT_EQ(interpretation.Get().dictionaryStack.Count(), 3);
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Get().dictionaryStack.Count(), 3);
  EXPECT_EQ(interpretation.Stack(), "1 1");
}

TEST(Passes, CountWhatRanWhateverItsResult) {
  const Outcome kTable[] = {
      {"1 1 lineto 2 2 lineto 3 3 lineto 4 4 rlineto 0 0 1 0 90 arc 0 0 1 0 90 arcn",
       "Line count = 4\nArc count = 2\n"},
      {"curveto {closepath} exec image lineto",
       "Curve count = 1\nLine count = 1\nImage count = 1\nClosed Path count = 1\n"},
      {"/l /lineto load def l {lineto} bind exec\xa0 \x92\x63", "Line count = 3\n"},
      {"0 0 moveto 1 1 rmoveto stroke fill colorimage (lineto) /lineto pop pop", ""},
      {"/lineto {pop pop} def 1 1 lineto", ""},
      {"%%Page: 1 1\n1 1 lineto\n%%Page: 2 2\n1 1 lineto", "Line count = 2\n"},
  };
  for (const auto& [program, expected] : kTable) {
    Interpretation interpretation(program);
    EXPECT_EQ(interpretation.Count(), expected) << program;
    static_cast<void>(interpretation.Draw());
    EXPECT_EQ(interpretation.Get().counters, nullptr);
    EXPECT_EQ(interpretation.Count(), expected) << program;
  }
}

TEST(Passes, CountingGoesOnDrawingOnTheGenerator) {
  Interpretation interpretation("stroke");
  EXPECT_EQ(interpretation.Count(), "");
  EXPECT_EQ(interpretation.Calls(), "");
  const std::string drawn = interpretation.Draw();
  EXPECT_NE(drawn, "");
  static_cast<void>(interpretation.Count());
  EXPECT_EQ(interpretation.Calls(), drawn);
}

TEST(Passes, WithoutInputOrGeneratorDoNothing) {
  Interpretation document("1");
  EXPECT_EQ(document.Get().Generate(nullptr), 0);
  EXPECT_EQ(document.Stack(), "");
  orxdrawing::TraceGenerator tracer(orxdrawing::TraceGenerator::Samples::Summary,
                                    [](std::string_view) {});
  orxeps::ORXPrintEPSInterpreter interpreter(nullptr);
  EXPECT_EQ(interpreter.Generate(&tracer), 0);
  ORXListValORXUnicodeString lines;
  EXPECT_EQ(interpreter.CollectStatistics(lines), 1);
  EXPECT_EQ(lines.Count(), 0U);
  unsigned count = 3;
  float size = 4;
  ORXUnicodeString label("kept");
  EXPECT_EQ(interpreter.GetPageCount(&count), 0);
  EXPECT_EQ(interpreter.GetPageSize(&size, &size), 0);
  EXPECT_EQ(interpreter.GetPageLabel(label), 0);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(size, 4.0F);
  EXPECT_EQ(label.ToUtf8(), "kept");
}

TEST(StructureComments, TakeEffectByTheirLettersAlone) {
  ExpectOutcomes({
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

TEST(PageFilter, LetsTheSelectedPageAndWhatSurroundsPagesRun) {
  constexpr const char* kDocument =
      "0\n%%Page: a 1\n1 showpage 2\n%%Page: b 2\n3 (x) pop showpage 4\n%%Page: c 3\n5 showpage 6";
  const struct {
    unsigned char allPages;
    unsigned page;
    const char* stack;
  } kTable[] = {
      {1, 2, "0 1 2 3 4 5 6"},
      {0, 1, "0 1 2 4 6"},
      {0, 2, "0 3 4 6"},
      {0, 3, "0 5 6"},
      {0, 0, "0"},
      {0, 4, "0"},
      {2, 3, "0 5 6"},
      {0, 4'294'967'295U, "0"},
  };
  for (const auto& [allPages, page, stack] : kTable) {
    Interpretation interpretation(kDocument);
    interpretation.Get().SetAllPages(allPages);
    interpretation.Get().SetCurrentPage(page);
    EXPECT_EQ(interpretation.Draw(), allPages == 1 ? "NewPage()\nNewPage()\n" : "");
    EXPECT_EQ(interpretation.Stack(), stack) << page;
  }
  // A "showpage" of the document's own runs on its page only, and one in a procedure ends nothing.
  Interpretation own(std::string("/showpage {99} def ") + kDocument);
  static_cast<void>(own.DrawPage(1));
  EXPECT_EQ(own.Stack(), "0 1 99 2 4 6");
  Interpretation nested("%%Page: a 1\n{showpage} exec 1\n%%Page: b 2\n{showpage} 2");
  static_cast<void>(nested.DrawPage(1));
  EXPECT_EQ(nested.Stack(), "1");
}

// Runs numbers from 1 to 25 with a gauge that answers from a list, its last answer from then on,
// and gives the stack's count, the questions asked and the lines reported.
std::vector<std::size_t> RunWithGauge(OnErrorAction action, std::vector<int> answers) {
  const orxframework::ScopedProperties properties;
  std::size_t asked = 0;
  std::size_t reported = 0;
  PropertiesControl::SetOnErrorAction(action);
  PropertiesControl::SetMemoryGauge([&](float threshold) {
    EXPECT_EQ(threshold, 0.9F);
    return answers[std::min(asked++, answers.size() - 1)];
  });
  PropertiesControl::SetReportSink([&](PrintInfoType type, const ORXUnicodeString& text) {
    EXPECT_EQ(type, PrintInfoType::Error);
    EXPECT_EQ(text.ToUtf8(), "ORXPrintCGM2Interpreter: Low Memory Error");
    ++reported;
  });
  std::string program;
  for (int i = 1; i <= 25; ++i) program += std::to_string(i) + " ";
  Interpretation interpretation = Interpretation::OfExactly(program);
  EXPECT_EQ(interpretation.Draw(), "");
  return {static_cast<std::size_t>(interpretation.Get().operandStack.Count()), asked, reported};
}

TEST(LowMemory, IsAskedForOnNineTokensOfTenAndReportedWhileItLasts) {
  using Counts = std::vector<std::size_t>;
  // Twenty-six iterations, the last for the space at the end; the 1st, 11th and 21st do not ask.
  EXPECT_EQ(RunWithGauge(OnErrorAction::Stop, {0}), (Counts{25, 23, 0}));
  EXPECT_EQ(RunWithGauge(OnErrorAction::Stop, {1}), (Counts{2, 1, 1}));
  EXPECT_EQ(RunWithGauge(OnErrorAction::Stop, {0, 0, 7, 0}), (Counts{4, 3, 1}));
  EXPECT_EQ(RunWithGauge(OnErrorAction::GoOn, {1}), (Counts{25, 23, 24}));
  EXPECT_EQ(RunWithGauge(OnErrorAction::GoOn, {0, 1, 1, 0}), (Counts{25, 23, 2}));
  // The answer of the 10th iteration still stands after the 11th.
  EXPECT_EQ(RunWithGauge(OnErrorAction::GoOn, {0, 0, 0, 0, 0, 0, 0, 0, 1, 0}), (Counts{25, 23, 2}));
  EXPECT_EQ(RunWithGauge(static_cast<OnErrorAction>(2), {1}), (Counts{25, 23, 24}));
}

}  // namespace
}  // namespace orxtests
