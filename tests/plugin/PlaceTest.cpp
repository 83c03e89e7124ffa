// Where in the document a call on the generator comes from, however the bytes were fetched.
#include <gtest/gtest.h>

#include <string>

#include "host/ORXInterpreterWatcher.h"
#include "tests/support/Interpretation.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {
namespace {

// Notes where each line width, page and image comes from: "<text at the place>@<definition>".
class PlaceNotes final : public SilentGenerator {
public:
  PlaceNotes(std::string_view text, const ORXWatchable& asked) : document(text), watchable(asked) {}

  int SetLineWidth(float) override { return Note(); }
  int NewPage() override { return Note(); }
  int DrawImage(float, float, int, ORXPixelImage*) override { return Note(); }

  std::string notes;

private:
  int Note() {
    const ORXPlace place = watchable.Place();
    const std::string_view rest = document.substr(place.token);
    notes += rest.substr(0, rest.find_first_of(" \n", 1));
    if (place.definition != ORXPlace::kNone) notes += "@" + std::to_string(place.definition);
    notes += " ";
    return 0;
  }

  const std::string_view document;
  const ORXWatchable& watchable;
};

TEST(Place, IsTheTopLevelTokenThatRuns) {
  const Outcome kTable[] = {
      {"0 0 moveto stroke\nstroke", "stroke stroke "},
      {"/s{stroke}def/t {s s} def t s", "t@2 t@2 s@2 "},
      {"{{stroke}exec stroke}exec", "exec@1 exec@0 "},
      {"/s {stroke} bind def 1 2 true{s}if", "if@3 "},
      {"%%Page: 1 1\n5 %%Page: 2 2\nstroke", "%%Page: stroke "},
      {"/stroke load exec [stroke] \x92\xa7\nstroke", "exec stroke] \x92\xa7 stroke "},
      {"/d <</Width 1/Height 1/BitsPerComponent 8/DataSource currentfile /ASCII85Decode filter >>"
       " def\n/draw {d image stroke} def draw\n5sdp~>stroke",
       "draw@100 draw@100 stroke "},
      {"currentfile eexec 00 11\ncleartomark\nstroke", "stroke "},
      {"/f {currentfile eexec stroke}def f 00\ncleartomark\nstroke", "f@3 stroke "},
  };
  for (const auto& [program, expected] : kTable) {
    for (const std::size_t block : {1U, 2U, 5U, 9U, 4096U}) {
      const std::string document = std::string(program) + "\n";
      Interpretation interpretation(program);
      auto& interpreter = interpretation.Get();
      interpreter.scanner.input.SetLargestBlock(block);
      PlaceNotes notes(document, interpreter);
      static_cast<void>(interpreter.Generate(&notes));
      EXPECT_EQ(notes.notes, expected) << program << ", blocks of " << block;
      EXPECT_EQ(interpreter.Place().token, ORXPlace::kNone) << "outside of a pass";
    }
  }
}

}  // namespace
}  // namespace orxtests
