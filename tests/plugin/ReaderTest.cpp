// Reading ahead is nobody's business: whatever the blocks and whatever the stream's habits, calls,
// stacks and answers are those of reading byte by byte, and so is the place where a pass leaves the
// stream.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "framework/InputStreams.h"
#include "tests/support/OddStream.h"
#include "tests/support/SampleData.h"

namespace orxtests {
namespace {

using namespace std::string_literals;

constexpr std::size_t kByteByByte = 1;
constexpr std::size_t kBlockSizes[] = {2, 3, 4, 5, 6, 7, 4096, std::size_t{64} << 10};

// Everything that questions and passes over a document show.
std::string Observe(PrintInputStream& bytes, const Habit& habit, std::size_t largestBlock) {
  std::string seen;
  OddStream input(bytes, habit);
  orxdrawing::TraceGenerator tracer(orxdrawing::TraceGenerator::Samples::Written,
                                    [&seen](std::string_view text) { seen += text; });
  orxeps::ORXPrintEPSInterpreter interpreter(&input);
  interpreter.scanner.input.SetLargestBlock(largestBlock);
  const auto note = [&](int result) {
    tracer.Flush();
    seen += "= " + std::to_string(result) + " " + ShowOutcome(interpreter) + "\n";
  };
  unsigned count = 0;
  float size[2] = {};
  ORXUnicodeString label;
  ORXListValORXUnicodeString lines;
  interpreter.SetCurrentPage(2);
  note(interpreter.GetPageCount(&count));
  note(interpreter.GetPageSize(&size[0], &size[1]));
  note(interpreter.GetPageLabel(label));
  note(interpreter.CollectStatistics(lines));
  note(interpreter.Generate(&tracer));
  interpreter.SetAllPages(0);
  note(interpreter.Generate(&tracer));
  for (const float side : size) seen += std::to_string(side) + " ";
  seen += std::to_string(count) + " " + label.ToUtf8() + "\n";
  for (std::size_t i = 1; i <= lines.Count(); ++i) seen += lines.At(i).ToUtf8() + "\n";
  return seen + input.endings;
}

std::string ObserveBytes(const std::string& document, const Habit& habit, std::size_t block) {
  orxframework::MemoryInputStream bytes{std::string_view(document)};
  return Observe(bytes, habit, block);
}

constexpr Habit kHarmlessHabits[] = {
    {},
    {.name = "LeavesTheCountAlone", .writesCount = false},
    {.name = "TellsNoPosition", .tellsPosition = false},
    {.name = "TellsNothing", .writesCount = false, .tellsPosition = false},
    {.name = "GivesOneByte", .mostAtOnce = 1},
    {.name = "GivesTwoBytes", .mostAtOnce = 2, .shortRead = -1},
    {.name = "GivesThreeBytes", .mostAtOnce = 3},
    {.name = "GivesFiveBytes", .mostAtOnce = 5, .shortRead = -1},
    {.name = "GivesSevenBytes", .mostAtOnce = 7},
    {.name = "GivesThreeBytesAndSaysNothing", .mostAtOnce = 3, .writesCount = false},
    {.name = "FailsAfterSevenBytesAndSaysNothing",
     .mostAtOnce = 7,
     .shortRead = -1,
     .writesCount = false},
};

std::vector<std::string> Programs() {
  const std::string image =
      "<< /Width 4 /Height 2 /BitsPerComponent 8 /DataSource currentfile /ASCII85Decode filter ";
  const std::string rows =
      " 2 2 8 matrix {currentfile /ASCII85Decode filter /RunLengthDecode "
      "filter} false 1 colorimage\n" +
      Base85(RunLength("ab")) + Base85(RunLength("cd"));
  return {
      "%%Pages: 2\n%%BoundingBox: 0 0 30 40\n%%Page: i 1\n1 1 moveto 2 2 lineto stroke showpage 1\n"
      "%%Page: ii 2\n%%PageBoundingBox: 0 0 5 6\n3 3 lineto fill showpage 2\n%%EOF\n3 stroke",
      "%%Pages: (atend)\r%%BoundingBox: (atend)\r\n%%Page:\tx\t2\r7 %%Page: y 3\n8\n%%Pages: 3\n",
      "1 12",
      "1 2",
      "1 (ab",
      "{1 {2 34",
      "/",
      "<",
      "<<",
      "x %%Page",
      "(\\",
      "1 2 % EOF",
      "",
      "(a (b\\) c) \\( d\n e) length ( f ) (\ttab\t) (x%y) (it's \x85 \xff!) {(g) {h} /i}",
      ") 5 %x\n (a b) (c%d) 6",
      "/"s + std::string(5000, 'n') + " length % " + std::string(5000, 'c') + "\n" +
          std::string(300, '1') + " .5e1 16#ff -7" + std::string(100, ' ') + "+1",
      "\x84\0\0\1\0 \x86\1\0 {\x88\5\x8a\x3f\x80\0\0\x8d\1}\x8e\5a)\n%\x84 a\x90"
      "8\x92\1"s,
      "\x8e\x09 abc",
      "\x84\0\0"s,
      "7\x8e",
      "\x92",
      image + ">> image\n" + Base85("abcdefgh") + "7 8",
      image + ">> image\n@:E _ W\n~ > 7 8",
      image + ">> image\n@:E_W\xff~>7 %EOF\n8",
      image + ">> image @:E_",
      image + ">> image",
      "9" + rows + "7" + rows.substr(0, rows.size() - 3),
      rows + "\x88\5~>",
      "currentfile eexec\n01ab\0clear\r\ntomark 1\n7\n8"s,
      "eexec x\rcleartomark 1\r7",
      "1 eexec clear",
  };
}

// The oracle is the same stream read byte by byte; that one the habits must not touch either.
TEST(Reader, GivesProgramsWhatByteByByteReadingGives) {
  for (const std::string& program : Programs()) {
    const std::string expected = ObserveBytes(program, {}, kByteByByte);
    for (const Habit& habit : kHarmlessHabits) {
      EXPECT_EQ(ObserveBytes(program, habit, kByteByByte), expected) << habit.name << program;
      for (const std::size_t block : kBlockSizes) {
        ASSERT_EQ(ObserveBytes(program, habit, block), expected)
            << habit.name << ", blocks of " << block << " over:\n"
            << program;
      }
    }
  }
}

TEST(Reader, StopsWhereAStreamFailsForEver) {
  for (const std::string& program : Programs()) {
    const auto length = static_cast<unsigned>(program.size());
    for (unsigned from = 0; from < length; from += 1 + length / 40) {
      for (const int most : {INT_MAX, 4}) {
        const Habit habit = {.name = "Fails", .failsFrom = from, .mostAtOnce = most};
        const std::string expected = ObserveBytes(program, habit, kByteByByte);
        for (const std::size_t block : kBlockSizes) {
          ASSERT_EQ(ObserveBytes(program, habit, block), expected)
              << "from byte " << from << ", blocks of " << block << " over:\n"
              << program;
        }
      }
    }
  }
}

TEST(Reader, GivesSamplesWhatByteByByteReadingGives) {
  for (const auto& entry : std::filesystem::directory_iterator(ORX_SAMPLES)) {
    if (entry.path().extension() != ".eps") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    const std::string expected = ObserveBytes(document, {}, kByteByByte);
    for (const std::size_t block : {std::size_t{3}, std::size_t{4096}, std::size_t{64} << 10}) {
      EXPECT_EQ(ObserveBytes(document, {}, block), expected) << entry.path() << ' ' << block;
      orxframework::FileInputStream stream(entry.path());
      EXPECT_EQ(Observe(stream, {}, block), expected) << entry.path() << ' ' << block;
    }
    EXPECT_EQ(ObserveBytes(document, {.mostAtOnce = 1000, .shortRead = -1}, 4096), expected);
  }
}

// Whoever shares the stream finds it cleared and closed, and rewound after the two questions that
// say so.
TEST(Reader, EndsPassesAndQuestionsAsTheHostExpects) {
  using Interpreter = orxeps::ORXPrintEPSInterpreter;
  const struct {
    const char* name;
    std::function<void(Interpreter&)> use;
    std::string ending;
  } kUses[] = {
      {"GetPageCount",
       [](Interpreter& interpreter) {
         unsigned count = 0;
         interpreter.GetPageCount(&count);
       },
       "0 ClearEndOfFile Rewind Close\n"},
      {"GetPageLabel",
       [](Interpreter& interpreter) {
         ORXUnicodeString label;
         interpreter.GetPageLabel(label);
       },
       "0 ClearEndOfFile Rewind Close\n"},
      {"GetPageSize",
       [](Interpreter& interpreter) {
         float size[2] = {};
         interpreter.GetPageSize(&size[0], &size[1]);
       },
       " ClearEndOfFile Close\n"},
      {"CollectStatistics",
       [](Interpreter& interpreter) {
         ORXListValORXUnicodeString lines;
         interpreter.CollectStatistics(lines);
       },
       " ClearEndOfFile Close\n"},
      {"Generate",
       [](Interpreter& interpreter) {
         orxdrawing::TraceGenerator tracer(orxdrawing::TraceGenerator::Samples::Summary,
                                           [](std::string_view) {});
         interpreter.Generate(&tracer);
       },
       " ClearEndOfFile Close\n"},
  };
  for (const std::string document :
       {"", "x\ny", "%%Pages: 1\n%%Page: a 1\n1 stroke\n", "1\n%%EOF\n2"}) {
    for (const auto& [name, use, ending] : kUses) {
      orxframework::MemoryInputStream bytes{std::string_view(document)};
      OddStream input(bytes, {});
      Interpreter interpreter(&input);
      interpreter.SetCurrentPage(1);
      use(interpreter);
      EXPECT_TRUE(input.endings.ends_with(ending)) << name << ": " << input.endings;
    }
  }
}

}  // namespace
}  // namespace orxtests
