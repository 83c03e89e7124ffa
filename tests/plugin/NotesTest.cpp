// Watching changes nothing: the calls on the generator are the same, whether or not a watcher
// listens, looks at all it can see and leaves marks.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "drawing/LossJudge.h"
#include "host/ORXInterpreterWatcher.h"
#include "tests/support/Interpretation.h"

namespace orxtests {
namespace {

// Looks at everything there is at each note.
class CuriousListener final : public ORXNoteListener {
public:
  explicit CuriousListener(ORXWatchable& asked) : watchable(asked) {}

  void Noted(const ORXNote& note) noexcept override {
    class Nothing final : public ORXNameTest {
      bool Test(std::string_view) noexcept override { return false; }
    } nothing;
    for (std::int32_t place = -1; place < 5; ++place) {
      static_cast<void>(watchable.Operand(place));
      static_cast<void>(watchable.RunsAny(place, nothing));
    }
    static_cast<void>(watchable.NameRunsAny(note.detail, nothing));
    static_cast<void>(watchable.RunningRunsAny(nothing));
    static_cast<void>(watchable.PathExtent());
    judge.TakeNote(note, watchable);
    ++notes;
  }

  int notes = 0;

private:
  ORXWatchable& watchable;
  orxdrawing::LossJudge judge;
};

int ExpectSameCalls(const std::string& program, int passes = 1) {
  Interpretation alone = Interpretation::OfExactly(program);
  Interpretation watched = Interpretation::OfExactly(program);
  for (Interpretation* run : {&alone, &watched}) {
    run->ExpectCircles();
    run->AllowOddCalls();
  }
  CuriousListener listener(watched.Get());
  watched.Get().SetListener(&listener);
  for (int pass = 0; pass < passes; ++pass) {
    EXPECT_EQ(watched.Draw(), alone.Draw()) << program.substr(0, 500);
  }
  EXPECT_EQ(watched.Stack(), alone.Stack());
  EXPECT_EQ(watched.Get().heap.Budget().used, alone.Get().heap.Budget().used);
  return listener.notes;
}

TEST(Notes, ChangeNoCallOfWholeDocuments) {
  namespace fs = std::filesystem;
  int documents = 0;
  for (const char* folder : {ORX_SAMPLES, ORX_TEST_DATA "/documents"}) {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      if (entry.path().extension() != ".eps") continue;
      std::ostringstream text;
      text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
      ExpectSameCalls(text.str());
      ++documents;
    }
  }
  EXPECT_GT(documents, 5);
}

// The fourth pass takes an operator away and looks no name up behind it that an earlier pass's
// dictionaries could have; who watches does.
TEST(Notes, LayNothingOpenThatEarlierPassesLeft) {
  const int notes = ExpectSameCalls(
      "1 add dup 4 lt {} {/C systemdict def {add} /add /C undefineresource nothing} ifelse ", 4);
  EXPECT_GT(notes, 0);
}

TEST(Notes, ChangeNoCallOfRandomPrograms) {
  const std::vector<std::string> words = {"0",
                                          "1",
                                          "2.5",
                                          "dup",
                                          "neg",
                                          "exch",
                                          "pop",
                                          "(a%b)",
                                          "<",
                                          "ab",
                                          ">",
                                          "[",
                                          "]",
                                          "{",
                                          "}",
                                          "<<",
                                          ">>",
                                          "/x",
                                          "def",
                                          "x",
                                          "exec",
                                          "if",
                                          "lt",
                                          "gsave",
                                          "grestore",
                                          "moveto",
                                          "lineto",
                                          "true",
                                          "stroke",
                                          "fill",
                                          "clip",
                                          "show",
                                          "save",
                                          "restore",
                                          "scale",
                                          "round",
                                          "for",
                                          "forall",
                                          "concat",
                                          "matrix",
                                          "image",
                                          "filter",
                                          "setdash",
                                          "length",
                                          "repeat",
                                          "rotate",
                                          "setgray",
                                          "setcmykcolor",
                                          "currentpoint",
                                          "setlinewidth",
                                          "setmatrix",
                                          "rectclip",
                                          "currentfile",
                                          "/ASCII85Decode",
                                          "colorimage",
                                          "newpath",
                                          "currentmatrix",
                                          "\n",
                                          "%%Page: 1"};
  std::mt19937 random(20);
  int notes = 0;
  for (int run = 0; run < 400; ++run) {
    std::string program;
    for (int i = 0; i < 200; ++i) program += words[random() % words.size()] + " ";
    notes += ExpectSameCalls(program);
  }
  EXPECT_GT(notes, 1000);
}

}  // namespace
}  // namespace orxtests
