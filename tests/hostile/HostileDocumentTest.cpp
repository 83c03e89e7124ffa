// Documents written to harm the process that reads them. Each must end, within the memory and the
// stack that it is given, with the error that its ceiling raises, and let the rest of the document
// run; afterwards no object is left.
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "plugin/SystemOperators.h"
#include "ps/MemoryPoisoning.h"
#include "tests/hostile/HostileRunner.h"
#include "tests/support/Base85.h"

namespace orxtests {
namespace {

constexpr std::size_t kMillion = 1'000'000;
constexpr const char* kAnyError = nullptr;

enum class Rest { Runs, IsSwallowed };
enum class Circles { None, Made };

struct Hostile {
  const char* name;
  std::string (*document)();
  const char* error = kAnyError;  // the one raised last
  Rest rest = Rest::Runs;
  Circles circles = Circles::None;
  std::size_t megabytes = 64;  // by which the process may grow

  friend void PrintTo(const Hostile& row, std::ostream* out) { *out << row.name; }
};

// The bytes of a random sequence that is always the same.
std::string Noise(std::size_t count) {
  std::string bytes;
  for (std::uint32_t state = 1; bytes.size() < count; state = state * 1664525U + 1013904223U) {
    bytes += static_cast<char>(state >> 24);
  }
  return bytes;
}

std::string ImageOf(std::string_view width, std::string_view height, std::string_view bits,
                    std::string_view filters, std::string_view encoded) {
  std::string image = "<< /Width ";
  image.append(width).append(" /Height ").append(height).append(" /BitsPerComponent ").append(bits);
  image.append(" /DataSource currentfile /ASCII85Decode filter ").append(filters);
  return image.append(" >> image\n").append(encoded);
}

std::string FaxFilter(std::string_view columns, std::string_view rows) {
  std::string filter = "<< /K -1 /Columns ";
  return filter.append(columns).append(" /Rows ").append(rows).append(" >> /CCITTFaxDecode filter");
}

// Infinities, not-a-numbers and numbers of every size, as operands.
constexpr std::string_view kOddNumbers[] = {"1E99",  "-1E99",      "1E99 1E99 sub", "3E38", "-3E38",
                                            "1E-45", "2147483647", "-2147483648",   "0",    "-7"};

std::string OddOperands(std::string_view operation, int operands) {
  std::string document;
  for (const std::string_view odd : kOddNumbers) {
    for (int place = 0; place < operands; ++place) {
      for (int i = 0; i < operands; ++i) document.append(i == place ? odd : "2").append(" ");
      document.append(operation).append("\n");
    }
    for (int i = 0; i < operands; ++i) document.append(odd).append(" ");
    document.append(operation).append("\n");
  }
  return document;
}

std::string OddPathsAndMatrices() {
  std::string document = "1 1 moveto ";
  for (const std::string_view two : {"moveto", "lineto", "rmoveto", "rlineto", "scale", "translate",
                                     "transform", "itransform"}) {
    document += OddOperands(two, 2) + "stroke 5 5 lineto closepath fill ";
  }
  document += OddOperands("curveto", 6) + OddOperands("rotate", 1) + OddOperands("setlinewidth", 1);
  document += OddOperands("setgray", 1) + OddOperands("setlinecap", 1) + "stroke ";
  document += OddOperands("setrgbcolor", 3) + OddOperands("rectclip", 4);
  document += OddOperands("matrix scale setmatrix", 2) + OddOperands("matrix transform", 2);
  document += OddOperands("matrix itransform", 2) + OddOperands("6 array astore concat", 6);
  document += OddOperands("6 array astore setmatrix 1 1 itransform", 6) + "stroke eofill ";
  return document + ImageOf("2", "2", "8", "", Base85("abcd"));
}

std::string OddArithmetic() {
  std::string document;
  for (const std::string_view one :
       {"round", "abs", "neg", "ceiling", "floor", "array", "copy", "index", "dict"}) {
    document += OddOperands(one, 1);
  }
  for (const std::string_view two : {"add", "sub", "mul", "div", "mod", "idiv", "eq", "lt"}) {
    document += OddOperands(two, 2);
  }
  return document + "cleartomark";
}

// Every operator over every pair of operand kinds, a type that it does not expect included.
std::string EveryOperatorOnEveryType() {
  constexpr std::string_view kOperands[] = {
      "1",         "-2",         "1.5",  "(text)", "/x",          "[1 2 3]",
      "{1 2 add}", "mark",       "null", "true",   "/add load",   "0e5",
      "matrix",    "<< /x 1 >>", "0",    "() ",    "currentfile", "4096 array"};
  std::string document;
  for (const orxeps::OperatorRow& row : orxeps::SystemOperators().Rows()) {
    // These two read on in the document.
    if (row.name == "eexec" || row.name == "image") continue;
    for (const std::string_view first : kOperands) {
      document.append(row.name).append(" 3 ");
      for (const std::string_view second : kOperands) {
        document.append(first).append(" ").append(second).append(" ").append(row.name).append(" ");
      }
      document += "cleartomark cleartomark\n";
    }
  }
  return document;
}

std::string EveryImageSize() {
  constexpr std::string_view kSizes[] = {"-2147483648", "-1", "0", "1", "3", "65536", "2147483647"};
  std::string document;
  for (const std::string_view width : kSizes) {
    for (const std::string_view height : kSizes) {
      const std::string fax = FaxFilter(width, height);
      for (const std::string_view bits : {"1", "8", "12"}) {
        document += ImageOf(width, height, bits, "", Base85("abcd"));
      }
      document += ImageOf("8", "1", "1", fax, Base85(std::string("\0\x10\x01", 3)));
    }
  }
  return document;
}

// Rows are read for as long as there is data, so the tallest images come last.
std::string EveryColorImageSize() {
  constexpr std::string_view kSource = "{x /ASCII85Decode x /RunLengthDecode} ";
  std::string document;
  for (const std::string_view height : {"-1", "0", "1", "3", "65536", "2147483647"}) {
    for (const std::string_view width : {"-1", "0", "1", "65536", "2147483647"}) {
      for (const std::size_t sources : {1U, 3U, 4U}) {
        document.append(width).append(" ").append(height).append(" 8 matrix ");
        document += Repeated(sources, kSource) + (sources == 1 ? "false " : "true ");
        document += std::to_string(sources) + " colorimage\n";
        document += Repeated(3 * sources, Base85("\x02wxy"));
      }
    }
  }
  return document;
}

std::string FaxDamage() {
  std::string document;
  for (std::size_t length = 1; length < 64; ++length) {
    const std::string columns = std::to_string(length * length);
    document += ImageOf(columns, "9", "1", FaxFilter(columns, "9"), Base85(Noise(length)));
  }
  for (const char byte : {'\0', '\x01', '\x55', '\x80', '\xFF'}) {
    const std::string data(4096, byte);
    document += ImageOf("99", "999", "1", FaxFilter("99", "999"), Base85(data));
  }
  return document;
}

std::string Base85Damage() {
  std::string document;
  for (const std::string_view damaged :
       {"~>", "!~>", "z!z~>", "!z~>", "uuuuu~>", "s8W-\"~>", "!!z!!~>", "vwxy~>", "!!!!!~ >",
        "\x80\xFF!!~>", "~~>", "!!~", "~>~>", "uu~>", "uuu~>", "uuuu~>"}) {
    document += ImageOf("2", "2", "8", "", std::string(damaged) + "\n");
  }
  return document + ImageOf("2", "2", "8", "", Repeated(100'000, "z"));
}

std::string RunLengthDamage() {
  std::string document;
  for (const std::string_view damaged : {"\x7F", "\x7Fxyz", "\x81", "\x01x", "\xFFx\xFF", "\x80"}) {
    const std::string encoded = Base85(damaged);
    document += ImageOf("9", "9", "8", "/RunLengthDecode filter", encoded);
    document += "9 1 8 matrix {x /ASCII85Decode x /RunLengthDecode} false 1 colorimage\n" + encoded;
  }
  return document;
}

// Runs of bytes that are runs of bytes themselves: every filter makes the data 64 times as long.
std::string MultiplyingFilters(int filters) {
  return ImageOf("9", "9", "8",
                 Repeated(static_cast<std::size_t>(filters), "/RunLengthDecode filter "),
                 Base85(std::string(4096, '\x81')));
}

std::string EveryByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return Repeated(2000, bytes);
}

const Hostile kRows[] = {
    // Running without end.
    {"RecursionByName", [] { return std::string("/f {f} def f"); }, "execstackoverflow"},
    {"RecursionInTheMiddle", [] { return std::string("/f {f 1 pop} def f f"); },
     "execstackoverflow"},
    {"RecursionByExec", [] { return std::string("{dup exec 1 pop} dup exec"); },
     "execstackoverflow"},
    {"RecursionByIf", [] { return std::string("/f {true {f 1} if 2} def f"); },
     "execstackoverflow"},
    {"RecursionByIfElse", [] { return std::string("/f {false {1} {f 1} ifelse 2} def f"); },
     "execstackoverflow"},
    {"RecursionAMillionDeep",
     [] { return std::string("/f {dup 0 eq {pop} {1 sub f null pop} ifelse} def 1000000 f"); },
     "execstackoverflow", Rest::Runs, Circles::None, 128},
    {"ExecOfOperatorObjects", [] { return Repeated(kMillion, "/exec load ") + "exec"; },
     "stackunderflow", Rest::Runs, Circles::None, 192},
    {"ExecOfItself", [] { return std::string("/exec load dup exec /load load exec 1 exec"); }},
    {"NamesForEachOther",
     [] {
       return std::string(
           "/a (b) def /b /c def /c {b} 0 get def "
           "/x 1 array def x 0 /y put /z {z} def z");
     }},
    // Stacks without end.
    {"DoublingByCopy", [] { return std::string("/f {counttomark copy f} def mark 1 f"); },
     "stackoverflow"},
    {"PushingWithoutEnd", [] { return std::string("/f {1 f} def f"); }, kAnyError, Rest::Runs,
     Circles::None, 256},
    {"MillionBegins",
     [] { return Repeated(kMillion / 10, "1 dict begin x ") + Repeated(kMillion, "end "); },
     "dictstackunderflow"},
    {"MillionGSaves",
     [] { return Repeated(kMillion, "gsave ") + "1 1 moveto " + Repeated(kMillion, "grestore "); },
     "limitcheck"},
    {"SavedPaths", [] { return std::string("/f {1 1 lineto gsave 9 9 3 0 360 arc f} def f"); },
     kAnyError, Rest::Runs, Circles::None, 320},
    // Sizes without measure.
    {"ArrayOfTwoThousandMillion",
     [] { return std::string("2000000000 array -1 array 1E9 array"); }},
    {"ManyLargeArrays", [] { return Repeated(12, "1048576 array "); }, "VMerror", Rest::Runs,
     Circles::None, 768},
    {"RollByTwoThousandMillion",
     [] { return std::string("1 2 3 3 2000000000 roll 3 -2147483648 roll 2147483647 1 roll"); },
     "stackunderflow"},
    {"IndexFarBelow",
     [] { return std::string("1 2147483647 index -2147483648 index 2 copy -1 copy"); }},
    {"SharedTexts",
     [] {
       return "/s (" + std::string(kMillion, 'x') +
              ") def "
              "/f {s 1 array astore s 0 65 put f} def f";
     },
     kAnyError, Rest::Runs, Circles::None, 768},
    {"SmallDictionaries", [] { return std::string("/f {<< /k 1 >> 1 array astore f} def f f"); },
     kAnyError, Rest::Runs, Circles::None, 768},
    {"EmptiedDictionaries",
     [] {
       std::string document;
       for (const std::string_view use : {" 0 /C defineresource pop ", " /C undefineresource "}) {
         for (int i = 0; i < 100'000; ++i)
           document.append("/").append(std::to_string(i)).append(use);
       }
       return document + "/z 1 /C defineresource pop " + Repeated(2000, "/C load 1 array astore ");
     },
     kAnyError, Rest::Runs, Circles::None, 768},
    // Structures that contain themselves.
    {"ArrayInItself",
     [] {
       return std::string(
           "/a 2 array def a 0 a put a 1 a put a 2 array copy pop a 1 array astore pop "
           "a aload a eq a a copy pop a bind pop a length {a} bind exec a concat");
     },
     kAnyError, Rest::Runs, Circles::Made, 320},
    {"ArrayStoredIntoItself",
     [] { return std::string("/a 3 array def a 0 a put a a a a astore 1 2 a astore a aload a"); },
     kAnyError, Rest::Runs, Circles::Made, 320},
    {"DictionariesInACircle",
     [] {
       return std::string(
           "/d 1 dict def /e 1 dict def d /e e put e /d d put d /d d put d e copy e d "
           "copy [d e] 2 array copy d begin e begin x end end << /d d /d e >> "
           "userdict /u userdict put userdict 1 dict copy systemdict 1 dict copy");
     },
     kAnyError, Rest::Runs, Circles::Made},
    {"ArraysAMillionDeep",
     [] {
       return std::string(
           "/f {1 array dup 0 4 -1 roll put f} def null f 1 array copy 1 array astore");
     },
     kAnyError, Rest::Runs, Circles::None, 512},
    {"BracketsAMillionDeep", [] { return Repeated(kMillion, "[") + Repeated(kMillion, "]"); },
     kAnyError, Rest::Runs, Circles::None, 512},
    {"ProceduresAMillionDeep",
     [] {
       return Repeated(kMillion, "{") + Repeated(kMillion, "}") + "bind dup exec 1 array astore";
     },
     kAnyError, Rest::Runs, Circles::None, 768},
    // Tokens without end.
    {"OpenBraces", [] { return Repeated(kMillion, "{"); }, kAnyError, Rest::IsSwallowed,
     Circles::None, 448},
    {"OpenParentheses", [] { return Repeated(kMillion, "("); }, kAnyError, Rest::IsSwallowed},
    {"OpenBrackets", [] { return Repeated(kMillion / 3 + 40'000, "[<<["); }, "stackoverflow",
     Rest::Runs, Circles::None, 256},
    {"MarksSearchedInADeepStack",
     [] {
       return Repeated(kMillion / 2, "1 ") + Repeated(kMillion / 4, "] counttomark pop exch ") +
              "/f {mark exch counttomark ] f} def f";
     },
     "execstackoverflow", Rest::Runs, Circles::None, 640},
    {"PushingOntoAFullStack", [] { return Repeated(kMillion * 6 / 10, "1 mark "); },
     "stackoverflow", Rest::Runs, Circles::None, 320},
    {"MemoryUsedUpEarly",
     [] {
       return "/f {1 array dup 0 4 -1 roll put f} def null f " + Repeated(2400, "4096 array ") +
              Repeated(kMillion / 4, "[(text) {1 2} /x] ");
     },
     "VMerror", Rest::IsSwallowed, Circles::None, 640},
    {"ClosingDelimiters", [] { return Repeated(kMillion, "]}>>"); }},
    {"ClosingParentheses", [] { return Repeated(kMillion, ")"); }, kAnyError, Rest::IsSwallowed},
    {"NumbersOfAMegabyte",
     [] {
       const std::string digits(kMillion, '9');
       return digits + " -" + digits + " 0." + digits + " 1E" + digits + " 1E-" + digits + " 16#" +
              digits + " 0x" + digits + " " + std::string(kMillion, '-') + " " +
              std::string(kMillion, '.') + " " + std::string(kMillion, 'E');
     }},
    {"NamesOfAMegabyte",
     [] {
       const std::string name(kMillion, 'n');
       return "/" + name + " 1 def " + name + " /" + name + " where (" + name +
              ") dup length pop %" + name + "\n";
     }},
    {"TextsBeyondMeasure", [] { return "/" + std::string(17 * kMillion, 't') + " length pop"; },
     "limitcheck", Rest::Runs, Circles::None, 96},
    {"ManyNames",
     [] {
       std::string document;
       for (int i = 0; i < 200'000; ++i) document += "/n" + std::to_string(i) + " 1 def ";
       return document;
     },
     "", Rest::Runs, Circles::None, 128},
    {"Zeros", [] { return std::string(kMillion, '\0'); }},
    {"EveryByteValue", EveryByte, kAnyError, Rest::IsSwallowed},
    {"EExecWithoutEnd", [] { return "currentfile eexec " + Noise(kMillion); }, kAnyError,
     Rest::IsSwallowed},
    {"NoiseBetweenTokens", [] { return Noise(kMillion); }, kAnyError, Rest::IsSwallowed},
    // Numbers beyond measure.
    {"OddArcs",
     [] {
       return "1 1 moveto " + OddOperands("arc", 5) + OddOperands("arcn", 5) + "stroke fill ";
     }},
    {"OddPathsAndMatrices", OddPathsAndMatrices},
    {"OddArithmetic", OddArithmetic},
    {"EveryOperatorOnEveryType", EveryOperatorOnEveryType, kAnyError, Rest::Runs, Circles::None,
     256},
    // Images.
    {"EveryImageSize", EveryImageSize, kAnyError, Rest::Runs, Circles::None, 768},
    {"EveryColorImageSize", EveryColorImageSize, kAnyError, Rest::IsSwallowed, Circles::None, 768},
    {"LargeImageOverFourBytes",
     [] {
       return ImageOf("30000", "30000", "8", "", Base85("abcd")) +
              ImageOf("30000", "30000", "1", "", Base85("abcd"));
     },
     "limitcheck", Rest::Runs, Circles::None, 192},
    {"FaxDamage", FaxDamage},
    {"Base85Damage", Base85Damage, kAnyError, Rest::IsSwallowed},
    {"RunLengthDamage", RunLengthDamage},
    {"MultiplyingFilters", [] { return MultiplyingFilters(3) + MultiplyingFilters(32); }, kAnyError,
     Rest::Runs, Circles::None, 640},
    {"TooManyFilters", [] { return MultiplyingFilters(40); }, "limitcheck", Rest::IsSwallowed,
     Circles::None, 640},
    {"RowsWithoutData",
     [] {
       return std::string(
           "1 2147483647 8 matrix {x /RunLengthDecode x /RunLengthDecode} false 1 "
           "colorimage");
     }},
    {"SharedFilters",
     [] {
       return "/a currentfile /ASCII85Decode filter " + FaxFilter("8", "1") +
              " def /b currentfile "
              "/ASCII85Decode filter << /K 0 /Columns -5 /Rows 2147483647 >> /CCITTFaxDecode "
              "filter "
              "def a b copy pop << /Width 8 /Height 1 /BitsPerComponent 1 /DataSource a >> "
              "image\n" +
              Base85("\x80\x10\x01") + "a b b a astore";
     }},
    // Code that takes away what is running.
    {"BindOfWhatRuns",
     [] {
       return std::string("/f {/f load bind pop 1 add {2 add} f2} bind def /f2 {exec} def 4 f f");
     }},
    {"RedefinitionWhileRunning",
     [] {
       return std::string(
           "/f {/f {2} def 3 4} def f f /g {/g 1 def g g} def g "
           "/h {userdict /h 0 put systemdict /put 0 put 5} def h h");
     }},
    {"UndefinitionWhileRunning",
     [] { return std::string("/p {/p /C undefineresource 1 2} /C defineresource exec"); }},
    {"OverwritingWhatRuns",
     [] {
       return std::string(
           "/f {[/f load] 5 exch astore pop 6 7} def f f "
           "/g {/g load {8 9} exch copy pop 9} def g g g "
           "/h {[/h load] {h} 1 array astore pop [/h load] (x) exch astore 1} def h h "
           "{dup [exch] null exch astore pop 1 2} dup exec");
     },
     kAnyError, Rest::Runs, Circles::Made, 128},
    {"OperatorOverwritesItself",
     [] {
       return std::string(
           "[/astore load] 5 exch astore 1 2 /copy load /copy load copy "
           "/load load /x 1 array astore pop [ /exec load ] (e) exch astore pop "
           "systemdict /put 0 put systemdict /def {1} put /def 1 def");
     }},
    {"OperatorReleasesItself",
     [] {
       return std::string(
           "systemdict /pop 0 put 1 pop systemdict begin /begin 0 def /end 0 def "
           "/def 0 def /x 1 def 2 systemdict systemdict /systemdict systemdict put");
     }},
    {"DictionaryStackOverwritten",
     [] {
       return std::string(
           "[1 dict dup begin] 5 exch astore pop /a 1 def a currentdict [userdict] "
           "(s) exch astore pop /b 2 def b /k 1 /C defineresource");
     }},
    {"RestoreInsideAPath",
     [] {
       return std::string(
           "1 1 moveto gsave 2 2 lineto newpath 3 3 lineto grestore closepath gsave "
           "newpath grestore 4 4 rlineto grestore grestore closepath fill closepath "
           "gsave 5 5 lineto fill grestore 1 2 3 4 5 6 curveto stroke");
     }},
};

class HostileDocument : public testing::TestWithParam<Hostile> {};

TEST_P(HostileDocument, LeavesTheHostAsItWas) {
  const Hostile& row = GetParam();
  const HostileRun run = RunHostile(row.document());
  EXPECT_EQ(run.violation, "");
  if (row.error != kAnyError) {
    EXPECT_EQ(run.error, row.error);
  }
  if (row.rest == Rest::Runs) {
    EXPECT_TRUE(run.wentOn) << "the rest of the document did not run";
  }
  if (row.circles == Circles::None) {
    EXPECT_EQ(run.objectsLeft, 0U);
  }
#if !defined(ORXEPS_HAS_ASAN)
  EXPECT_LE(run.megabytesGrown, row.megabytes);
#endif
}

INSTANTIATE_TEST_SUITE_P(All, HostileDocument, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace orxtests
