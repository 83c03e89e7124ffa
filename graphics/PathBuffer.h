// The points of the current path and of all saved ones, in one growing sequence.
//
// It lives by the stack discipline of saving and restoring: the points of the current path are
// always the last ones. A state saved now shares its points with the current path, which goes on
// behind them; restoring cuts the sequence back to where the saved path ended. So neither costs
// anything per point.
#pragma once

#include <cstddef>
#include <memory>
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
    const std::size_t block = count / kBlockPoints;
    if (block == blocks.size()) {
      blocks.push_back(std::make_unique_for_overwrite<PathPoint[]>(kBlockPoints));
    }
    blocks[block][count % kBlockPoints] = point;
    ++count;
  }
  // Forgets the points behind the first `newCount`. REQUIRES: newCount <= Count().
  void Truncate(std::size_t newCount) noexcept {
    count = newCount;
    const std::size_t needed = count / kBlockPoints + 1;
    if (blocks.size() > needed + 1) blocks.resize(needed + 1);
  }

private:
  static constexpr std::size_t kBlockPoints = 1024;

  std::vector<std::unique_ptr<PathPoint[]>> blocks;
  std::size_t count = 0;
};

}  // namespace orxeps
