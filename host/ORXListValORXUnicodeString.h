// The framework's list of report lines. Positions count from 1; lines are kept by value.
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
  void Append(ORXUnicodeString line) { lines.push_back(std::move(line)); }

private:
  std::vector<ORXUnicodeString> lines;
};
