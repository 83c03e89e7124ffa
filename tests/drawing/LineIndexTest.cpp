// Lines of places, asked about in any order.
#include "drawing/LineIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace orxdrawing {
namespace {

LineIndex IndexOf(const std::string& document) {
  return LineIndex([&document](std::uint64_t place, char* buffer, std::size_t count) {
    const std::size_t start = std::min<std::size_t>(place, document.size());
    count = std::min(count, document.size() - start);
    if (count > 0) std::memcpy(buffer, document.data() + start, count);
    return count;
  });
}

// The line of every byte, counted one after the other.
std::vector<std::uint64_t> LinesOf(const std::string& document) {
  std::vector<std::uint64_t> lines;
  std::uint64_t line = 1;
  for (std::size_t i = 0; i < document.size(); ++i) {
    lines.push_back(line);
    const bool isPair = document[i] == '\r' && i + 1 < document.size() && document[i + 1] == '\n';
    if (document[i] == '\n' || (document[i] == '\r' && !isPair)) ++line;
  }
  lines.push_back(line);
  return lines;
}

// Line ends of all kinds lie across the ends of the blocks that are read.
TEST(LineIndex, CountsEveryKindOfLineEndWhereverBlocksEnd) {
  for (const char* piece : {"a\n", "ab\r", "abc\r\n", "a\r\r\n\n", "abcde"}) {
    std::string document;
    while (document.size() < 3 * 4096 + 7) document += piece;
    const std::vector<std::uint64_t> lines = LinesOf(document);
    LineIndex index = IndexOf(document);
    EXPECT_EQ(index.LineOf(document.size()), lines.back());
    EXPECT_EQ(index.LineOf(document.size() + 100'000), lines.back());
    for (std::size_t step = 0; step <= document.size(); ++step) {
      const std::size_t place = step * 5003 % (document.size() + 1);
      if (document[place] == '\n' && place > 0 && document[place - 1] == '\r') continue;
      ASSERT_EQ(index.LineOf(place), lines[place]) << place << piece;
    }
  }
  const std::string nothing;
  LineIndex empty = IndexOf(nothing);
  EXPECT_EQ(empty.LineOf(7), 1U);
}

}  // namespace
}  // namespace orxdrawing
