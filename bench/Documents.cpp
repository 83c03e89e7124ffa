#include "bench/Documents.h"

#include <array>
#include <cstdint>
#include <string>

#include "bench/DocumentWriter.h"
#include "bench/Encodings.h"
#include "bench/ImageDocuments.h"

namespace orxbench {

namespace {

// A walk over the page in hundredths, each step of at most `stride`.
class Walk {
public:
  explicit Walk(DocumentWriter& document)
      : writer(document), x(document.Random(3000, 58000)), y(document.Random(3000, 76000)) {}

  Walk& Step(int stride) {
    x = Turned(x + writer.Random(-stride, stride), 60000);
    y = Turned(y + writer.Random(-stride, stride), 78000);
    writer.Decimal(x, 2).Decimal(y, 2);
    return *this;
  }
  void Add(std::string_view piece) { writer.Add(piece); }

private:
  static int Turned(int value, int end) {
    if (value < 1000) return 2000 - value;
    return value > end ? 2 * end - value : value;
  }

  DocumentWriter& writer;
  int x;
  int y;
};

std::string Lines(std::size_t bytes) {
  DocumentWriter writer(bytes);
  while (writer.IsWanted()) {
    writer.Add("N\n");
    Walk walk(writer);
    walk.Step(0).Add("M\n");
    for (int i = 0; i < 300; ++i) walk.Step(900).Add("L\n");
    writer.Add("S\n");
  }
  return writer.Finish();
}

std::string RelativeLines(std::size_t bytes) {
  DocumentWriter writer(bytes);
  while (writer.IsWanted()) {
    writer.Add("newpath ").Integer(writer.Random(100, 500)).Integer(writer.Random(100, 700));
    writer.Add("moveto\n");
    for (int i = 0; i < 100; ++i) {
      const int x = writer.Random(-9, 9);
      const int y = writer.Random(-9, 9);
      writer.Integer(x).Integer(y).Add("rlineto\n");
      writer.Integer(writer.Random(-1, 1) - x).Integer(writer.Random(-1, 1) - y).Add("rlineto\n");
    }
    writer.Add("stroke\n");
  }
  return writer.Finish();
}

std::string Curves(std::size_t bytes) {
  DocumentWriter writer(bytes);
  while (writer.IsWanted()) {
    writer.Add("N\n");
    Walk walk(writer);
    walk.Step(0).Add("M\n");
    for (int i = 0; i < 30; ++i) walk.Step(1500).Step(1500).Step(1500).Add("C\n");
    writer.Add("S\n");
  }
  return writer.Finish();
}

std::string Arcs(std::size_t bytes) {
  DocumentWriter writer(bytes);
  writer.Add(
      "/Arc {newpath arc stroke} bind def /Arcn {newpath arcn stroke} bind def\n"
      "/Disc {newpath 0 360 arc closepath fill} bind def\n");
  static constexpr std::array<std::string_view, 5> kCalls = {"Arc\n", "Arc\n", "Arcn\n", "Arcn\n",
                                                             "Disc\n"};
  for (std::size_t i = 0; writer.IsWanted(); ++i) {
    writer.PointOnPage().Decimal(writer.Random(100, 3000), 2);
    const std::string_view call = kCalls[i % kCalls.size()];
    if (call != "Disc\n") {
      const int first = writer.Random(0, 3600);
      const int last = first + writer.Random(100, 3500);
      const bool isForward = call == "Arc\n";
      writer.Decimal(isForward ? first : last, 1).Decimal(isForward ? last : first, 1);
    }
    writer.Add(call);
  }
  return writer.Finish();
}

std::string Fills(std::size_t bytes) {
  DocumentWriter writer(bytes);
  writer.Add(
      "/Box {0 0 M 1 0 L 1 1 L 0 1 L H F} bind def\n"
      "/Tip {0 0 M 1 0 L 0.4 0.8 L H eofill} bind def\n"
      "/Place {6 array astore concat} bind def\n");
  while (writer.IsWanted()) {
    writer.Add("Gs ");
    for (int i = 0; i < 3; ++i) writer.Decimal(writer.Random(0, 1000), 3);
    writer.Add("Rgb ");
    for (int i = 0; i < 4; ++i) writer.Decimal(writer.Random(2000, 9000), 3);
    writer.PointOnPage().Add("Place Box Gr\nGs ").PointOnPage().Add("translate ");
    writer.Integer(writer.Random(0, 359)).Add("rotate ");
    writer.Decimal(writer.Random(200, 900), 2).Decimal(writer.Random(200, 900), 2).Add("scale ");
    writer.Decimal(writer.Random(0, 100), 2).Add("setgray Tip Gr\n");
  }
  return writer.Finish();
}

std::string FillsAndStrokes(std::size_t bytes) {
  DocumentWriter writer(bytes);
  writer.Add("/Both {Gs F Gr S} bind def /Thrice {Gs Gs F Gr 0.5 setgray S Gr 0.2 W S} bind def\n");
  for (int outline = 0; writer.IsWanted(); ++outline) {
    for (int i = 0; i < 3; ++i) writer.Decimal(writer.Random(0, 100), 2);
    writer.Add("Rgb N\n");
    Walk walk(writer);
    walk.Step(0).Add("M\n");
    for (int i = 0; i < 300; ++i) walk.Step(400).Add("L\n");
    writer.Add(outline % 2 == 0 ? "H Both\n" : "H Thrice\n");
  }
  return writer.Finish();
}

// Arithmetic, stack, dictionary and array work, and procedures that call themselves. What comes out
// is drawn, so that two interpreters can be compared.
std::string Computing(std::size_t bytes) {
  DocumentWriter writer(bytes);
  writer.Add(
      "/Total 0 def /Cells 8 array def /Pair 4 dict def\n"
      "/Sum {dup 0 eq {} {dup 1 sub Sum add} ifelse} def\n"
      "/Fib {dup 2 lt {} {dup 1 sub Fib exch 2 sub Fib add} ifelse} def\n"
      "/Gcd {dup 0 eq {pop} {exch 1 index mod Gcd} ifelse} def\n"
      "/Count {Total add 10007 mod /Total exch def} bind def\n"
      "/Keep {exch 8 mod exch Cells 3 1 roll put} bind def\n"
      "/Size {Pair begin /b exch def /a exch def a a mul b b mul add a b add 1 add div end} bind "
      "def\n"
      "/Turn {8 3 roll 8 -2 roll Cells astore aload pop add add add add add add add} bind def\n"
      "/Larger {2 copy lt {exch} if pop} bind def\n");
  for (int i = 0; i < 8; ++i) writer.Add("Cells ").Integer(i).Add("0 put\n");
  while (writer.IsWanted()) {
    writer.Integer(writer.Random(3, 9)).Add("Sum Count ");
    writer.Integer(writer.Random(3, 6)).Add("Fib Count\n");
    writer.Integer(writer.Random(10, 9999)).Integer(writer.Random(10, 999)).Add("Gcd Count ");
    writer.Integer(writer.Random(0, 99)).Integer(writer.Random(0, 999)).Add("Keep\n");
    writer.Decimal(writer.Random(1, 9000), 2).Decimal(writer.Random(1, 9000), 2);
    writer.Add("Size floor pop\n");
    for (int i = 0; i < 8; ++i) writer.Integer(writer.Random(0, 999));
    writer.Add("Turn Count ");
    writer.Integer(writer.Random(0, 999))
        .Integer(writer.Random(0, 999))
        .Add("Larger 7 idiv Count\n");
  }
  return writer.Add("N 10 10 M 500 Total 700 mod L S\n").Finish();
}

std::string Numbers(std::size_t bytes) {
  DocumentWriter writer(bytes);
  writer.Add("/Drop {pop pop pop pop pop pop pop pop pop pop} bind def\n");
  while (writer.IsWanted()) {
    writer.Integer(writer.Random(-9999, 99999)).Decimal(writer.Random(-900000, 900000), 3);
    writer.Add(".").Integer(writer.Random(0, 999)).Add("-.").Integer(writer.Random(1, 99));
    writer.Decimal(writer.Random(0, 1000000), 6).Integer(writer.Random(0, 9));
    writer.Add(std::to_string(writer.Random(1, 99))).Add(". ");
    writer.Add(std::to_string(writer.Random(1, 9))).Add(".5e-").Integer(writer.Random(1, 9));
    writer.Decimal(writer.Random(0, 60000), 2).Decimal(writer.Random(-100000, 100000), 4);
    writer.Add("Drop\n");
  }
  return writer.Finish();
}

constexpr std::array<std::string_view, 16> kWords = {
    "outline", "layer",  "shade",    "symbol",  "block",   "hatch", "view",  "detail",
    "level",   "corner", "distance", "bearing", "surface", "title", "frame", "revision"};

std::string_view RandomWord(DocumentWriter& writer) {
  return kWords[static_cast<std::size_t>(writer.Random(0, kWords.size() - 1))];
}

std::string Comments(std::size_t bytes) {
  DocumentWriter writer(bytes);
  while (writer.IsWanted()) {
    const int words = writer.Random(3, 40);
    writer.Add(words % 5 == 0 ? "%%Layer:" : "%");
    for (int i = 0; i < words; ++i) writer.Add(" ").Add(RandomWord(writer));
    writer.Add(words % 10 == 0 ? "\n0 setgray\n" : "\n");
  }
  return writer.Finish();
}

// Strings, names, procedures and dictionaries being defined, and almost nothing drawn.
std::string Definitions(std::size_t bytes) {
  DocumentWriter writer(bytes);
  const auto name = [&writer] {
    return std::string(RandomWord(writer)) + std::to_string(writer.Random(0, 199));
  };
  while (writer.IsWanted()) {
    writer.Add("/" + name() + " (");
    for (int i = writer.Random(2, 9); i > 0; --i) writer.Add(RandomWord(writer)).Add(" ");
    writer.Add("\\(" + name() + "\\) and (this)) def\n");
    writer.Add("/" + name() + " {newpath moveto {lineto " + name() +
               "} if gsave 0.5 setgray fill " + "grestore " + name() +
               " exch dup mul add} bind def\n");
    const std::string dictionary = name();
    writer.Add("/" + dictionary + "D 12 dict def " + dictionary + "D begin");
    for (int i = 0; i < 5; ++i) writer.Add(" /" + name() + " ").Integer(i).Add("def");
    writer.Add(" end\n/" + name() + "A [/" + name() + " (x) 1 [2 3] true null] def\n");
    writer.Add("<< /" + name() + " (text) /" + name() + " 7 >> pop (" + name() + ") length pop\n");
  }
  return writer.Finish();
}

// One encrypted section, of comments that end in closing the file, so that the price is reading it.
std::string EncryptedSection(std::size_t plainBytes) {
  std::string plain = "\xa1xyz";
  while (plain.size() < plainBytes) {
    plain += "% abcdefghijklmnopqrstuvwxyz 0123456789 abcdefghijklmnopqrstuvwxyz 0123456789\n";
  }
  return EncryptForEexec(plain + "mark currentfile closefile\n");
}

void AddEncrypted(DocumentWriter& writer, std::string_view section) {
  writer.Add("currentfile eexec\n").Add(section);
  for (int i = 0; i < 8; ++i) writer.Add(std::string(64, '0')).Add("\n");
  writer.Add("cleartomark\nN 10 10 M 20 20 L S\n");
}

std::string OneEncrypted(std::size_t bytes) {
  DocumentWriter writer(bytes);
  AddEncrypted(writer, EncodeHexadecimal(EncryptedSection(writer.BytesWanted() * 36 / 74)));
  return writer.Finish();
}

std::string OneEncryptedInBinary(std::size_t bytes) {
  DocumentWriter writer(bytes);
  AddEncrypted(writer, EncryptedSection(writer.BytesWanted()) + "\n");
  return writer.Finish();
}

std::string ManyEncrypted(std::size_t bytes) {
  DocumentWriter writer(bytes);
  const std::string section = EncodeHexadecimal(EncryptedSection(15000));
  while (writer.IsWanted()) AddEncrypted(writer, section);
  return writer.Finish();
}

// What a technical drawing consists of.
std::string Mixed(std::size_t bytes) {
  DocumentWriter writer(bytes);
  static constexpr std::array<std::string_view, 4> kPaints = {"S\n", "S\n", "H S\n", "H F\n"};
  for (std::size_t i = 0; writer.IsWanted(); ++i) {
    writer.Add("Gs ").Decimal(writer.Random(10, 90), 2).Add("W ");
    for (int component = 0; component < 3; ++component) writer.Decimal(writer.Random(0, 100), 2);
    writer.Add("Rgb N\n");
    Walk walk(writer);
    walk.Step(0).Add("M\n");
    for (int step = writer.Random(2, 30); step > 0; --step) {
      if (step % 5 == 0) {
        walk.Step(1500).Step(1500).Step(1500).Add("C\n");
      } else {
        walk.Step(2000).Add("L\n");
      }
    }
    writer.Add(kPaints[i % kPaints.size()]);
    if (i % 5 == 0) {
      writer.Add("N ").PointOnPage().Decimal(writer.Random(100, 900), 2).Add("0 360 arc S\n");
    }
    writer.Add("Gr\n");
  }
  return writer.Finish();
}

constexpr std::array<Kind, 18> kKinds = {{
    {"lines", "polylines through short names", Unit::Token, Lines},
    {"rlines", "relative lines by the operators' own names", Unit::Token, RelativeLines},
    {"curves", "curves through short names", Unit::Point, Curves},
    {"arcs", "arcs both ways, and discs", Unit::Point, Arcs},
    {"fills", "small fills, each under a matrix of its own", Unit::Token, Fills},
    {"fillstroke", "outlines filled and stroked", Unit::Token, FillsAndStrokes},
    {"compute", "arithmetic, stacks, dictionaries, recursion", Unit::Token, Computing},
    {"numbers", "numbers in ten spellings", Unit::Token, Numbers},
    {"comments", "comments and almost nothing else", Unit::Byte, Comments},
    {"prolog", "strings, procedures and dictionaries defined", Unit::Token, Definitions},
    {"grey", "grey images in base-85", Unit::Pixel, GreyImages},
    {"greyrle", "grey images in run-length data", Unit::Pixel, RunLengthImages},
    {"color3", "colour images of three sources", Unit::Pixel, ColourImages},
    {"g4", "scanned pages in fax data", Unit::Pixel, FaxImages},
    {"eexec", "one encrypted section in hexadecimal", Unit::Byte, OneEncrypted},
    {"eexecbin", "one encrypted section in binary", Unit::Byte, OneEncryptedInBinary},
    {"eexecmany", "many encrypted sections", Unit::Byte, ManyEncrypted},
    {"mixed", "a technical drawing", Unit::Token, Mixed},
}};

}  // namespace

std::span<const Kind> Kinds() noexcept { return kKinds; }

std::size_t CountTokens(std::string_view document) noexcept {
  std::size_t tokens = 0;
  bool isInComment = false;
  bool isInWord = false;
  for (const char byte : document) {
    if (byte == '%') isInComment = true;
    if (byte == '\n') isInComment = false;
    const bool isBracket = byte == '{' || byte == '}' || byte == '[' || byte == ']';
    const bool isWord = !isInComment && !isBracket && byte != ' ' && byte != '\n';
    if ((isBracket && !isInComment) || (isWord && !isInWord)) ++tokens;
    isInWord = isWord;
  }
  return tokens;
}

}  // namespace orxbench
