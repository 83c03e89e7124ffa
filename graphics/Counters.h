// What a counting pass counts: places in the list of counters that a machine raises.
#pragma once

#include <array>
#include <cstdint>

namespace orxeps {

enum Counter : int { kImages, kArcs, kLines, kClosedPaths, kCurves, kCounterCount };

using StatisticsRecord = std::array<std::int32_t, kCounterCount>;

}  // namespace orxeps
