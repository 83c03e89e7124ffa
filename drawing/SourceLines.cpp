#include "drawing/SourceLines.h"

#include <algorithm>
#include <utility>

namespace orxdrawing {

LineFinder::LineFinder(std::vector<std::uint64_t> places) : wanted(std::move(places)) {
  std::ranges::sort(wanted);
}

void LineFinder::Feed(std::string_view text) {
  for (const char byte : text) {
    if (isAfterReturn && byte != '\n') now = {now.line + 1, 1};
    isAfterReturn = byte == '\r';
    for (; WantsMore() && wanted[next] == position; ++next) lines[position] = now;
    if (!WantsMore()) return;
    ++position;
    if (byte == '\n') {
      now = {now.line + 1, 1};
    } else {
      ++now.column;
    }
  }
}

}  // namespace orxdrawing
