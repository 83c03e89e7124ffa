#include "drawing/LineIndex.h"

#include <algorithm>

namespace orxdrawing {

void LineIndex::Load(std::size_t block) {
  if (block == loaded) return;
  size = read(std::uint64_t{block} * kBlockBytes, bytes.data(), bytes.size());
  loaded = block;
  nearPlace = 0;
}

// A newline behind a return ends no line of its own.
void LineIndex::Step(Count& count, std::size_t from, std::size_t to) const {
  for (std::size_t i = from; i < to; ++i) {
    const char byte = bytes[i];
    if (byte == '\r' || (byte == '\n' && !count.isAfterReturn)) ++count.line;
    count.isAfterReturn = byte == '\r';
  }
}

std::uint64_t LineIndex::LineOf(std::uint64_t place) {
  const auto wanted = static_cast<std::size_t>(place / kBlockBytes);
  while (starts.size() <= wanted) {
    Load(starts.size() - 1);
    Count count = starts.back();
    Step(count, 0, size);
    if (size < kBlockBytes) return count.line;
    starts.push_back(count);
  }
  Load(wanted);
  const std::size_t end = std::min(static_cast<std::size_t>(place % kBlockBytes), size);
  if (nearPlace == 0 || end < nearPlace) {
    near = starts[wanted];
    nearPlace = 0;
  }
  Step(near, nearPlace, end);
  nearPlace = end;
  return near.line;
}

}  // namespace orxdrawing
