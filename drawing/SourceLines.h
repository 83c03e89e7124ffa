// Bytes of a text as lines and columns, both from 1. A line ends with a newline, a carriage return,
// or both.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace orxdrawing {

struct SourceLine {
  std::uint64_t line = 0;
  std::uint64_t column = 0;
};

// Finds the lines of places while it is fed the text, piece by piece.
class LineFinder {
public:
  explicit LineFinder(std::vector<std::uint64_t> places);

  // Whether there are places behind what was fed.
  [[nodiscard]] bool WantsMore() const noexcept { return next < wanted.size(); }
  void Feed(std::string_view text);
  // Those that were met.
  [[nodiscard]] const std::map<std::uint64_t, SourceLine>& Lines() const noexcept { return lines; }

private:
  std::vector<std::uint64_t> wanted;  // in order
  std::size_t next = 0;
  std::uint64_t position = 0;
  SourceLine now{1, 1};
  bool isAfterReturn = false;
  std::map<std::uint64_t, SourceLine> lines;
};

}  // namespace orxdrawing
