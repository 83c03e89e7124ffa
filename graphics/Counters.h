// What a counting pass counts: places in the list of counters that a machine raises.
//
// The interpreter makes a record at the start of CollectStatistics, lends it to the machine for
// that pass and turns it into report lines; without a record nothing is counted. An operator's row
// names the counter that it raises.
#pragma once

#include <array>
#include <cstdint>

namespace orxeps {

enum Counter : int { kImages, kArcs, kLines, kClosedPaths, kCurves, kCounterCount };

using StatisticsRecord = std::array<std::int32_t, kCounterCount>;

}  // namespace orxeps
