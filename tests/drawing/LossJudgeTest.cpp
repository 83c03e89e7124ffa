// Every kind of loss that a program can have, by the smallest document that has it, and what looks
// like one and is none.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "drawing/LossJudge.h"
#include "framework/InputStreams.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {
namespace {

using orxdrawing::Finding;
using orxdrawing::KindOf;
using orxdrawing::Loss;
using orxdrawing::LossJudge;

// An interpreter with a judge at its side, as the host puts them together.
class JudgedRun final : public SilentGenerator, private ORXNoteListener {
public:
  explicit JudgedRun(std::string_view program)
      : document(std::string(program) + "\n"), input(document), interpreter(&input) {
    interpreter.SetListener(this);
    interpreter.Generate(this);
    interpreter.ReleaseObjects();
  }

  int SetLineWidth(float) override {
    judge.Stroking(interpreter);
    return 0;
  }
  int FillArea(int, int*, float*) override {
    judge.Filling(interpreter);
    return 0;
  }
  int DrawImage(float x, float y, int, ORXPixelImage* image) override {
    judge.DrawingImage(x, y, *image, interpreter);
    return 0;
  }

  LossJudge judge;

private:
  void Noted(const ORXNote& note) noexcept override { judge.TakeNote(note, interpreter); }

  const std::string document;
  orxframework::MemoryInputStream input;
  orxeps::ORXPrintEPSInterpreter interpreter;
};

// "kind name count@first-place", separated by "; ", but those without visible effect.
std::string LossesOf(std::string_view program) {
  JudgedRun run(program);
  std::string text;
  for (const Finding& finding : run.judge.Found().Sorted()) {
    if (KindOf(finding.loss).severity == orxdrawing::Severity::NoEffect) continue;
    if (!text.empty()) text += "; ";
    text += std::string(KindOf(finding.loss).name) + " " + finding.name + " " +
            std::to_string(finding.count) + "@" + std::to_string(finding.places.front().token);
  }
  return text;
}

struct Case {
  std::string program;
  std::string_view losses;
};

// A square of 100 points, painted.
const std::string kSquare = " 0 0 moveto 100 0 lineto 100 100 lineto 0 100 lineto closepath fill ";
const std::string kLine = " 0 0 moveto 9 0 lineto stroke ";
const std::string kCorner = " 0 0 moveto 99 0 lineto 99 99 lineto stroke ";

// An image of one grey sample, under a matrix that gives it an area.
std::string ImageOf(const std::string& entries, const std::string& data = "5l~>") {
  return "50 50 scale <</Width 1/Height 1/BitsPerComponent 8" + entries +
         "/DataSource currentfile /ASCII85Decode filter>> image\n" + data + " ";
}

// A white row of eight pixels in fax coding.
std::string FaxOf(const std::string& parameters, const std::string& entries = "") {
  return "50 50 scale/f currentfile /ASCII85Decode filter <</K -1/Columns 8/Rows 1" + parameters +
         ">> /CCITTFaxDecode filter def <</Width 8/Height 1/BitsPerComponent 1"
         "/ImageMatrix[8 0 0 -1 0 1]" +
         entries + "/DataSource f>> image\nJ-Z.*~> ";
}

void ExpectLosses(const std::vector<Case>& table) {
  for (const auto& [program, losses] : table) EXPECT_EQ(LossesOf(program), losses) << program;
}

TEST(Losses, AreFoundByKind) {
  const std::string line = " 1 setlinewidth" + kLine;
  ExpectLosses({
      {"(word) show", "text-lost show 1@7"},
      {"/a glyphshow /space glyphshow", "text-lost glyphshow 1@3"},
      {"<4142> show", "text-lost show 1@7"},
      {"/t {(a) show} def <41> t", "text-lost t 1@23"},
      {"0 0 5 5 rectfill", "paint-lost rectfill 1@8"},
      {"1 1 true [1 0 0 1 0 0] {} imagemask", "image-lost imagemask 1@26"},
      {"[3] 0 setdash" + line, "dashes-lost setdash 1@6"},
      {"1 setlinejoin 9 setlinewidth" + kCorner, "joins-lost setlinejoin 1@2"},
      {"1 0 0 0 setcmykcolor" + kSquare, "color-lost setcmykcolor 1@8"},
      {"0.5 setcolor" + kSquare, "color-lost setcolor 1@4"},
      {"0 0 moveto 5 0 lineto 5 5 lineto 0 5 lineto clip newpath" + kSquare, "clip-lost clip 1@44"},
      {"0 0 50 50 rectclip" + kSquare, "clip-lost rectclip 1@10"},
      {"0 0 moveto 5 5 9 9 3 arct" + line, "path-lost arct 1@21"},
      {"10 10 scale 1 setlinewidth" + kLine, "width-wrong setlinewidth 1@49"},
      {".5 .5 scale 2 setlinewidth" + kLine, "width-wrong setlinewidth 1@49"},
      {".7 .7 scale 2 setlinewidth" + kLine, "width-off setlinewidth 1@49"},
      {"currentlinewidth 1 setlinewidth" + kLine, "width-asked currentlinewidth 1@0"},
      {"10 dup neg exch moveto 1 1 lineto 1 setlinewidth stroke", "changed-for-all neg 1@7"},
      {"/f {5 neg 0 lineto} def 1 setlinewidth 0 0 moveto f f stroke", "changed-for-all neg 1@52"},
      {"10 20 translate 0 0 moveto currentpoint lineto 1 setlinewidth stroke",
       "device-point currentpoint 1@27"},
      {"[2 0 0 2 0 0] setmatrix 1 setlinewidth" + kLine, "integer-matrix setmatrix 1@14"},
      {"2 2 translate initmatrix" + kSquare, "matrix-lost initmatrix 1@14"},
      {"save 2 2 translate restore" + kSquare, "state-kept restore 1@19"},
      {"0 0 moveto 2 sqrt 0 lineto 1 setlinewidth stroke", "value-lost sqrt 1@13"},
      {"0.5 truncate setlinewidth 1 setlinewidth" + kLine, "not-rounded truncate 1@4"},
      {"0.25 0.5 lt {} if" + kSquare, "compared-false lt 1@9"},
      {"1 1 lineto 5 lineto 1 setlinewidth stroke", "failed lineto 1@13"},
      {"3 {1 1 lineto} repeat", "loop-lost repeat 1@15"},
      {"[1 2] {0 exch lineto} forall", "loop-lost forall 1@22"},
      {"[1 2] {(a) show} forall", "text-lost forall 1@17"},
      {"<41>" + kSquare, "failed moveto 1@9"},
      {"<41> stroke", "data-lost stroke 1@5"},
      {"/f {<41>} def" + kSquare, "data-lost } 1@3"},
      {"/f {f} def f", "limit-met execstackoverflow 1@11"},
  });
}

TEST(Losses, OfImagesAreFoundByKind) {
  const std::string usual = "/ImageMatrix[1 0 0 -1 0 1]";
  ExpectLosses({
      {ImageOf(usual), ""},
      {"1 1 8 [1 0 0 -1 0 1] {} image", "image-lost image 1@24"},
      {ImageOf("/ImageMatrix[1 0 0 1 0 0]"), "image-misplaced image 1@123"},
      {"30 rotate " + ImageOf(usual), "image-misplaced image 1@134"},
      {ImageOf(usual + "/Decode[1 0]"), "image-negative image 1@136"},
      {ImageOf(usual + "/Decode[0 255]"), "image-colors image 1@138"},
      {ImageOf(usual + "/Decode[0 1 0 1 0 1 0 1]"),
       "image-colors image 1@148; samples-missing image 1@148"},
      {ImageOf(usual, "z~>"), "samples-left image 1@124"},
      {ImageOf(usual + "/Decode[0 1 0 1 0 1]"), "samples-missing image 1@144"},
      {ImageOf(usual, "!~>"), "image-undecodable image 1@124"},
      {"1 1000000000 div 1 scale " + ImageOf(usual), "image-thin image 1@149"},
      {"currentfile /FlateDecode filter", "filter-unknown FlateDecode 1@25"},
      {FaxOf(""), ""},
      {FaxOf("/BlackIs1 true", "/Decode[1 0]"), ""},
      {FaxOf("/BlackIs1 true"), "image-negative image 1@196"},
      {FaxOf("", "/Decode[1 0]"), "image-negative image 1@194"},
      {FaxOf("/EncodedByteAlign true"), "image-fax EncodedByteAlign 1@204"},
      {FaxOf("/K 4"), "image-undecodable image 1@186"},
      {"1 1 8[1 0 0 -1 0 1]{currentfile /ASCII85Decode filter}false 3 colorimage\nz~> ",
       "image-undecodable colorimage 1@62"},
  });
}

TEST(Losses, AreNoneWhereNothingIsToBeSeen) {
  const std::string line = " 1 setlinewidth" + kLine;
  ExpectLosses({
      {"(  ) show", ""},
      {"/Helvetica findfont 12 scalefont setfont" + line, ""},
      {"[3] 0 setdash [] 0 setdash" + line, ""},
      {"gsave [3] 0 setdash grestore" + line, ""},
      {"[3] 0 setdash" + kSquare, ""},
      {"1 setlinejoin" + line, ""},
      {"0 0 0 1 setcmykcolor" + kSquare, ""},
      {"1 0 0 0 setcmykcolor 1 0 0 setrgbcolor" + kSquare, ""},
      {"-5 -5 200 200 rectclip" + kSquare, ""},
      {"gsave 0 0 5 5 rectclip grestore" + kSquare, ""},
      {"10 10 scale 0 setlinewidth" + kLine, ""},
      {"1 setgray 0 0 99 99 rectfill", ""},
      {"5 dup pop neg 0 dup neg moveto 9 9 lineto 1 setlinewidth stroke", ""},
      {"/f {5 neg 0 lineto} def 1 setlinewidth 0 0 moveto f stroke", ""},
      {"10 20 translate 0 0 moveto currentpoint pop pop (a) pop", ""},
      {"save" + line + "restore", ""},
      {"0 {1 1 lineto} repeat", ""},
      {"3 {pop} repeat", ""},
      {"systemdict /x known {} if" + kSquare, ""},
      {"4.0 truncate pop 5 6 dtransform" + kSquare, ""},
      {"10 setmiterlimit <</A 1>> setpagedevice pagehook" + kSquare, ""},
  });
}

TEST(Losses, HaveNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const auto& kind : orxdrawing::LossKinds()) {
    EXPECT_TRUE(names.insert(kind.name).second) << kind.name;
    EXPECT_FALSE(kind.group.empty() || kind.means.empty()) << kind.name;
  }
}

TEST(Losses, OfWidthsSayHowFarTheyAreOff) {
  JudgedRun run("16 16 scale 1 setlinewidth" + kLine);
  EXPECT_FLOAT_EQ(static_cast<float>(run.judge.Found().Sorted().front().ratio), 1.0F / 16);
}

}  // namespace
}  // namespace orxtests
