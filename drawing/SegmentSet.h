// The segments that a stroke has drawn so far, so that none is drawn twice: what is drawn over
// itself would have harder edges.
//
// Remembers a bounded number and, of each, 64 bits that stand for its ends in either order; what
// comes when it is full counts as new.
#pragma once

#include <cstdint>
#include <vector>

#include "drawing/Geometry.h"

namespace orxdrawing {

class SegmentSet {
public:
  // Whether the segment is new. Throws std::bad_alloc.
  bool Insert(const Point& a, const Point& b);
  void Clear();

private:
  static constexpr std::size_t kSlots = 64 << 10;
  static constexpr std::size_t kMostSegments = kSlots / 2;

  std::vector<std::uint64_t> slots;  // 0 is free
  std::vector<std::uint32_t> taken;
};

}  // namespace orxdrawing
