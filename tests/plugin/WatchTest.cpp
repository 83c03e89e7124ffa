// What hosts rely on beyond the drawing: stopping a run, knowing how it ended, callbacks that throw
// or call back, and a thread that rounds differently.
#include <gtest/gtest.h>

#include <cfenv>
#include <stdexcept>
#include <string>

#include "framework/InputStreams.h"
#include "host/ORXInterpreterWatcher.h"
#include "ps/Dictionaries.h"
#include "tests/support/Interpretation.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {
namespace {

class Watcher final : public ORXInterpreterWatcher {
public:
  bool MayGoOn() noexcept override { return --questionsLeft > 0; }
  void PassEnded(const ORXPassEnd& end) noexcept override {
    ends += std::to_string(static_cast<int>(end.result)) + " " + end.error + " " +
            std::to_string(end.position) + "\n";
  }

  int questionsLeft = 1'000'000;
  std::string ends;
};

std::string Numbers(int count) {
  std::string numbers;
  for (int i = 0; i < count; ++i) numbers += "1 ";
  return numbers;
}

// Procedures a0 to aN, each running the one before twice.
std::string Doubling(int last, const std::string& first) {
  std::string program = "/a0 {" + first + "} def ";
  for (int i = 1; i <= last; ++i) {
    const std::string inner = "a" + std::to_string(i - 1);
    program += "/a" + std::to_string(i) + " {" + inner + " " + inner + "} def ";
  }
  return program;
}

TEST(Watching, TellsHowEachPassAndQueryEnded) {
  const Outcome kTable[] = {
      {"1 2 moveto", "0  11\n"},
      {"1 2 {", "0  6\n"},
      {"/f {f} def f 3 ", "3 execstackoverflow 12\n"},
  };
  for (const auto& [program, expected] : kTable) {
    Interpretation interpretation(program);
    Watcher watcher;
    interpretation.Get().SetWatcher(&watcher);
    static_cast<void>(interpretation.Draw());
    EXPECT_EQ(watcher.ends, expected) << program;
  }
  Interpretation interpretation(Numbers(orxeps::kMaxOperands + 1));
  Watcher watcher;
  interpretation.Get().SetWatcher(&watcher);
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(watcher.ends.substr(0, 16), "3 stackoverflow ");
  watcher.ends.clear();
  float width = 0;
  float height = 0;
  static_cast<void>(interpretation.Get().GetPageSize(&width, &height));
  EXPECT_EQ(watcher.ends.substr(0, 2), "0 ") << "one query, told once";
  EXPECT_EQ(watcher.ends.find('\n'), watcher.ends.size() - 1);
  EXPECT_EQ(watcher.ends, "0  " + std::to_string(2 * (orxeps::kMaxOperands + 1) + 1) + "\n");
}

TEST(Watching, StopsARunThatWouldLastForDays) {
  Interpretation interpretation(Doubling(40, "") + "1 1 moveto a40 2 2 lineto stroke");
  Watcher watcher;
  watcher.questionsLeft = 100;
  interpretation.Get().SetWatcher(&watcher);
  EXPECT_EQ(interpretation.Draw(), "");
  EXPECT_EQ(watcher.ends.substr(0, 2), "1 ");
  // The next pass begins anew.
  watcher.questionsLeft = 1;
  watcher.ends.clear();
  EXPECT_EQ(interpretation.Count(), "");
  EXPECT_EQ(watcher.ends.substr(0, 2), "1 ");
}

// What works on many objects at once does not put the question off.
TEST(Watching, IsAskedByWorkNotByOperators) {
  const std::string prepared =
      "/big 70000 array def /n 0 def 1 1 moveto" + Doubling(16, "2 2 lineto") + "a16 ";
  const char* const operators[] = {"70000 array pop",
                                   "[ big aload ] pop",
                                   "big [1] copy pop",
                                   "big big eq pop",
                                   "gsave stroke grestore",
                                   "gsave fill grestore",
                                   "[ big aload 70000 1 roll ] pop"};
  for (const std::string program : operators) {
    Interpretation interpretation(prepared + Doubling(16, program + " /n n 1 add def") + "a16");
    Watcher watcher;
    interpretation.Get().SetWatcher(&watcher);
    watcher.questionsLeft = 200;
    static_cast<void>(interpretation.Draw());
    EXPECT_EQ(watcher.ends.substr(0, 2), "1 ") << program;
    const orxeps::PSObject& userdict = *interpretation.Get().dictionaryStack.Last();
    const orxeps::PSObject* runs = orxeps::DictLocate(userdict.Parts().dictEntries, ORXString("n"));
    ASSERT_NE(runs, nullptr);
    EXPECT_GT(runs->intValue, 10) << program;
    EXPECT_LT(runs->intValue, 400) << program;
  }
}

TEST(Watching, TellsThePagesByTheirNames) {
  class Pages final : public ORXNoteListener {
  public:
    void Noted(const ORXNote& note) noexcept override {
      if (note.kind == ORXNoteKind::PageBegun) names += std::string(note.detail) + "|";
    }
    std::string names;
  } pages;
  Interpretation interpretation("%%Page: (ground floor) 1\n%%EndPage: \n%%Page:  ii 2 \r\n1 pop");
  interpretation.Get().SetListener(&pages);
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(pages.names, "groundfloor||ii|");
}

// Throws, or asks the interpreter, at the first line.
class UnrulyGenerator final : public SilentGenerator {
public:
  int LineTo(float x, float y) override {
    if (throws) throw std::runtime_error("no more paper");
    unsigned count = 77;
    answers += std::to_string(interpreter->GetPageCount(&count)) + std::to_string(count) +
               std::to_string(interpreter->Generate(this)) + " ";
    return SilentGenerator::LineTo(x, y);
  }

  bool throws = false;
  orxeps::ORXPrintEPSInterpreter* interpreter = nullptr;
  std::string answers;
};

TEST(Callbacks, ThatThrowEndThePassAndNothingElse) {
  Interpretation interpretation("%%Pages: 3\n7 0 0 moveto {1 1 lineto stroke} exec 8 ");
  orxeps::ORXPrintEPSInterpreter& interpreter = interpretation.Get();
  Watcher watcher;
  interpreter.SetWatcher(&watcher);
  UnrulyGenerator generator;
  generator.throws = true;
  EXPECT_EQ(interpreter.Generate(&generator), 0);
  EXPECT_EQ(interpretation.Stack(), "7");
  EXPECT_EQ(watcher.ends.substr(0, 3), "6  ");
  EXPECT_FALSE(interpreter.dictionaries.systemdict);
  unsigned count = 0;
  EXPECT_EQ(interpreter.GetPageCount(&count), 1);
  static_cast<void>(interpretation.Draw());
  EXPECT_EQ(interpretation.Stack(), "7 7 8");
}

TEST(Callbacks, ThatCallBackAreAnsweredZero) {
  Interpretation interpretation("%%Pages: 3\n0 0 moveto 1 1 lineto stroke 5 ");
  UnrulyGenerator generator;
  generator.interpreter = &interpretation.Get();
  EXPECT_EQ(interpretation.Get().Generate(&generator), 1);
  EXPECT_EQ(generator.answers, "0770 ");
  EXPECT_EQ(interpretation.Stack(), "5");
}

TEST(FloatingPoint, IsSetAsideAndGivenBack) {
  const char* program =
      "0.3 0.7 scale 0 0 moveto 1.10745909 3.28488027 lineto 0 0 9 10 80 arc stroke";
  const std::string expected = CallsOf(program);
  for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(rounding);
    const std::string calls = CallsOf(program);
    EXPECT_EQ(std::fegetround(), rounding);
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(calls, expected);
  }
}

}  // namespace
}  // namespace orxtests
