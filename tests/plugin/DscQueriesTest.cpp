// The answers to the framework's questions about pages, under every kind of line end.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/Interpretation.h"
#include "tests/support/ScopedUnits.h"

namespace orxtests {
namespace {

using namespace std::string_view_literals;

constexpr const char* kLineEnds[] = {"\n", "\r\n", "\r"};

std::string WithLineEnds(std::string_view document, const std::string& lineEnd) {
  std::string text;
  for (const char c : std::string(document) + "\n") text += c == '\n' ? lineEnd : std::string(1, c);
  return text;
}

// Result and count; the count starts as 77.
TEST(DscQueries, PageCountIsTheFirstUsablePagesComment) {
  const Outcome kTable[] = {
      {"%!PS\n%%Pages: 2\n%%Pages: 9", "1 2"},
      {"%%Pages: (atend)\n%%EOF\n%%Pages: 5", "1 5"},
      {"%%Pages:2", "0 77"},
      {"", "0 77"},
      {"%%Pages:\t2", "1 2"},
      {"%%Pages: 3 1", "1 3"},
      {"%%Pages: 3 ", "1 3"},
      {"%%Pages: 3 1 ", "0 1"},
      {"%%Pages: 3 1 \n%%Pages: 6", "1 6"},
      {"%%Pages:  3", "1 0"},  // the first space is a field that the second one ends
      {"%%Pages: x", "1 0"},
      {"%%Pages: -1", "1 4294967295"},
      {"%%Pages: 99999999999", "1 2147483647"},
      {"a: b %%Pages: 4", "0 0"},
  };
  for (const auto& [document, expected] : kTable) {
    for (const char* lineEnd : kLineEnds) {
      Interpretation interpretation = Interpretation::OfExactly(WithLineEnds(document, lineEnd));
      unsigned count = 77;
      const int result = interpretation.Get().GetPageCount(&count);
      EXPECT_EQ(std::to_string(result) + " " + std::to_string(count), expected) << document;
    }
  }
}

// Fails to read the byte at one position so many times, and stays readable.
class StumblingStream final : public PrintInputStream {
public:
  StumblingStream(PrintInputStream& borrowed, unsigned place, int times)
      : stream(borrowed), stumblingBlock(place), failuresLeft(times) {}

  int Open(const char* mode) override { return stream.Open(mode); }
  int Read(void* /*buffer*/, int /*count*/, int* /*countRead*/) override { return -1; }
  int ReadByte(char* byte) override {
    unsigned position = 0;
    stream.GetPosition(&position);
    if (position == stumblingBlock && failuresLeft-- > 0) return -1;
    return stream.ReadByte(byte);
  }
  int SetPosition(unsigned position) override { return stream.SetPosition(position); }
  int Seek(int offset, int origin) override { return stream.Seek(offset, origin); }
  int UnreadByte(char byte) override { return stream.UnreadByte(byte); }
  int GetPosition(unsigned* position) override { return stream.GetPosition(position); }
  int IsReadable() override { return stream.IsReadable(); }
  int Close() override { return stream.Close(); }
  int HasMoreData() override { return stream.HasMoreData(); }
  int GetState() override { return stream.GetState(); }
  int ClearEndOfFile() override { return stream.ClearEndOfFile(); }

private:
  PrintInputStream& stream;
  const unsigned stumblingBlock;
  int failuresLeft;
};

TEST(DscQueries, GoOnBehindALineThatCannotBeReadAtFirst) {
  for (const int failures : {1, 2}) {
    orxframework::MemoryInputStream bytes("%!PS\n%%Pages: 4\n");
    StumblingStream stumbling(bytes, 5, failures);
    orxeps::ORXPrintEPSInterpreter interpreter(&stumbling);
    unsigned count = 77;
    EXPECT_EQ(interpreter.GetPageCount(&count), failures == 1 ? 1 : 0);
    EXPECT_EQ(count, failures == 1 ? 4U : 77U);
  }
}

TEST(DscQueries, PageSizeIsTheLargestBoxOrTheSelectedPages) {
  const ScopedPoints points;
  const char* twoPages =
      "%%Pages: 2\n%%BoundingBox: 0 0 612 792\n%%Page: a 1\n%%Page: b 2\n"
      "%%PageBoundingBox: 0 0 300 400\n%%BoundingBox: 1 1 999 9";
  const char* boxesOfPages =
      "%%Pages: 2\n%%BoundingBox: (atend)\n%%Page: a 1\n%%PageBoundingBox: 0 0 300 900\n"
      "%%Page: b 2\n%%PageBoundingBox: 0 0 400 100\n%%Page: c 3\n%%PageBoundingBox: 0 0 999 999\n";
  const struct {
    std::string_view document;
    unsigned char allPages;
    unsigned page;
    float start;
    int result;
    float width;
    float height;
  } kTable[] = {
      {"%%BoundingBox: 10 20 110 220", 1, 0, 0, 1, 110, 220},
      {"%%BoundingBox: 10 20 110 220", 0, 0, 0, 1, 110, 220},
      {"%%BoundingBox:\t10\t20 \v110   220", 0, 0, 0, 1, 110, 220},
      {"%%BoundingBox: 1.5 2.5 612.7 792.9 x", 1, 0, 0, 1, 612, 792},
      {"%%BoundingBox: 10 20 110", 1, 0, 0, 0, 110, 0},
      {"%%BoundingBox:10 20 110 220", 1, 0, 0, 0, 0, 0},
      {"%%BoundingBox: (atend)\n%%EOFX\n%%BoundingBox: 0 0 1 1", 0, 0, 0, 0, 0, 0},
      {"%%BoundingBox: (atend)\nx\n%%BoundingBox: 0 0 5 6", 0, 1, 0, 1, 5, 6},
      {"%%BoundingBox: (atend)\nx\n%%BoundingBox: 0 0 5 6", 1, 1, 0, 1, 5, 6},
      {"", 1, 0, 3, 1, 3, 3},
      {"%%BoundingBox: 0 0 2 8", 1, 0, 3, 1, 3, 8},
      {"%%BoundingBox: 0 0 2 8", 0, 0, 3, 1, 2, 8},
      {"%%BoundingBox: 0 0 -2 8", 0, 0, 3, 1, -2, 8},
      {"%%BoundingBox: 0 0 2 8", 2, 0, 3, 1, 3, 3},
      {twoPages, 0, 1, 0, 1, 999, 9},
      {twoPages, 0, 2, 0, 1, 300, 400},
      {twoPages, 1, 2, 0, 1, 612, 792},
      {boxesOfPages, 0, 2, 0, 1, 400, 100},
      {boxesOfPages, 0, 7, 0, 0, 0, 0},
      {boxesOfPages, 1, 0, 0, 1, 400, 900},
      {"%%Page: a 1\n%%PageBoundingBox: 0 0 5 6", 1, 0, 0, 0, 0, 0},  // no page count
  };
  for (const auto& row : kTable) {
    for (const char* lineEnd : kLineEnds) {
      Interpretation interpretation =
          Interpretation::OfExactly(WithLineEnds(row.document, lineEnd));
      interpretation.Get().SetAllPages(row.allPages);
      interpretation.Get().SetCurrentPage(row.page);
      float width = row.start;
      float height = row.start;
      EXPECT_EQ(interpretation.Get().GetPageSize(&width, &height), row.result) << row.document;
      EXPECT_EQ(width, row.width) << row.document;
      EXPECT_EQ(height, row.height) << row.document;
    }
  }
}

TEST(DscQueries, PageSizeIsInMillimetres) {
  Interpretation interpretation("%%BoundingBox: 0 0 612 792");
  float size[2] = {};
  EXPECT_EQ(interpretation.Get().GetPageSize(&size[0], &size[1]), 1);
  EXPECT_FLOAT_EQ(size[0], 215.9F);
  EXPECT_FLOAT_EQ(size[1], 279.4F);
}

TEST(DscQueries, PageLabelIsTheSelectedPages) {
  const Outcome kTable[] = {
      {"%%Page: i 1\n%%Page: ii 2\n%%Page: iii 2", "1 ii"},
      {"%%Page: (ii) 2", "1 (ii)"},
      {"%%Page:ii 2", "1 ii"},
      {"%%Page:   ii   2", "1 ii"},
      {"%%Page:\tii\t2", "1 ii"},
      {"%%Page: ii 2 ", "1 ii"},
      {"%%Page: ii 2 x", "1 ii"},
      {"%%Page: ii 2.5", "1 ii"},
      {"%%Page: ii 2 x ", "0 kept"},
      {"%%Page: 2", "0 kept"},
      {"%%Page: 2 ", "0 kept"},
      {"%%Page: (i i) 2", "0 kept"},
      {"%%Page: ii 3", "0 kept"},
      {"", "0 kept"},
  };
  for (const auto& [document, expected] : kTable) {
    for (const char* lineEnd : kLineEnds) {
      Interpretation interpretation = Interpretation::OfExactly(WithLineEnds(document, lineEnd));
      interpretation.Get().SetCurrentPage(2);
      ORXUnicodeString label("kept");
      const int result = interpretation.Get().GetPageLabel(label);
      EXPECT_EQ(std::to_string(result) + " " + label.ToUtf8(), expected) << document;
    }
  }
}

TEST(DscQueries, AreAnsweredBetweenPassesAndChangeNothing) {
  Interpretation interpretation("%%Pages: 3\n%%Page: a 1\n1 (");
  for (int i = 0; i < 2; ++i) {
    unsigned count = 0;
    EXPECT_EQ(interpretation.Get().GetPageCount(&count), 1);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(interpretation.Get().scanner.stringDepth, i);
    if (i == 0) static_cast<void>(interpretation.Draw());
  }
  // A zero byte at the start ends a line, anywhere else it is part of it.
  Interpretation zeros = Interpretation::OfExactly("a\0%%Pages: 4\n\0x\n"sv);
  unsigned count = 0;
  EXPECT_EQ(zeros.Get().GetPageCount(&count), 1);
  EXPECT_EQ(count, 4U);
}

}  // namespace
}  // namespace orxtests
