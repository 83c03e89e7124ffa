// The points of the current path and of all saved ones, in one growing sequence.
//
// It lives by the stack discipline of saving and restoring: the points of the current path are
// always the last ones. A state saved now shares its points with the current path, which goes on
// behind them; restoring cuts the sequence back to where the saved path ended. So neither costs
// anything per point.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "graphics/GraphicsState.h"

namespace orxeps {

class PathBuffer {
public:
  [[nodiscard]] std::size_t Count() const noexcept { return count; }
  // REQUIRES: index < Count().
  [[nodiscard]] const PathPoint& At(std::size_t index) const noexcept {
    return blocks[index / kBlockPoints][index % kBlockPoints];
  }
  void Append(const PathPoint& point) {
    if (next == blockEnd) BeginBlock();
    *next++ = point;
    ++count;
  }
  // Adds lines to points whose coordinates lie side by side.
  void AppendLines(std::span<const float> xs, std::span<const float> ys) {
    for (std::size_t i = 0; i < xs.size();) {
      if (next == blockEnd) BeginBlock();
      const auto room = static_cast<std::size_t>(blockEnd - next);
      const std::size_t stop = i + std::min(room, xs.size() - i);
      count += stop - i;
      for (; i < stop; ++i) *next++ = {xs[i], ys[i], PathPointKind::Line};
    }
  }
  // Forgets the points behind the first `newCount`. REQUIRES: newCount <= Count().
  void Truncate(std::size_t newCount) noexcept {
    count = newCount;
    const std::size_t used = count / kBlockPoints;
    if (blocks.size() > used + 2) blocks.resize(used + 2);
    if (used == blocks.size()) {
      next = blockEnd = nullptr;
    } else {
      next = blocks[used].get() + count % kBlockPoints;
      blockEnd = blocks[used].get() + kBlockPoints;
    }
  }
  // Calls visit(std::span<const PathPoint>) for the points of a path, piece by piece.
  template <typename Visitor>
  void VisitPieces(PathSpan path, Visitor visit) const {
    while (path.count > 0) {
      const std::size_t offset = path.begin % kBlockPoints;
      const std::size_t length = std::min(path.count, kBlockPoints - offset);
      visit(std::span<const PathPoint>(blocks[path.begin / kBlockPoints].get() + offset, length));
      path.begin += length;
      path.count -= length;
    }
  }

private:
  static constexpr std::size_t kBlockPoints = 1024;

  void BeginBlock() {
    const std::size_t block = count / kBlockPoints;
    if (block == blocks.size()) {
      blocks.push_back(std::make_unique_for_overwrite<PathPoint[]>(kBlockPoints));
    }
    next = blocks[block].get();
    blockEnd = next + kBlockPoints;
  }

  std::vector<std::unique_ptr<PathPoint[]>> blocks;
  std::size_t count = 0;
  PathPoint* next = nullptr;  // where the next point goes; at the block's end when there is none
  PathPoint* blockEnd = nullptr;
};

}  // namespace orxeps
