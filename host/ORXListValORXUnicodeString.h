// The framework's list of report lines, as CollectStatistics fills it.
//
// The host makes it, empty or not, and owns it; lines are appended and kept by value. Positions
// count from 1. The texts count their holders without locks, so a list stays on the thread of the
// interpreter that filled it; another thread gets the bytes (ORXUnicodeString::ToUtf8).
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "host/ORXUnicodeString.h"

class ORXListValORXUnicodeString {
public:
  [[nodiscard]] std::size_t Count() const noexcept { return lines.size(); }
  // REQUIRES: 1 <= position <= Count().
  [[nodiscard]] const ORXUnicodeString& At(std::size_t position) const noexcept {
    return lines[position - 1];
  }
  // Throws std::bad_alloc and changes nothing when memory runs out.
  void Append(ORXUnicodeString line) { lines.push_back(std::move(line)); }

private:
  std::vector<ORXUnicodeString> lines;
};
