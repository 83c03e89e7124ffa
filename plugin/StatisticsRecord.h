// What a counting pass counts.
#pragma once

#include <cstdint>

namespace orxeps {

struct StatisticsRecord {
  std::int32_t images = 0;
  std::int32_t arcs = 0;
  std::int32_t lines = 0;
  std::int32_t closedPaths = 0;
  std::int32_t curves = 0;
};

}  // namespace orxeps
