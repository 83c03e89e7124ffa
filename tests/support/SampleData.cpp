#include "tests/support/SampleData.h"

#include <regex>

namespace orxtests {

std::string ImagesOf(std::string_view program) {
  static const std::regex kCall(
      R"(DrawImage\(([^,]*), ([^,]*), 0, \{width: (\d+), height: (\d+), format: (\d), )"
      R"(xPixelSize: ([^,]*), yPixelSize: ([^,]*), bytes: \d+, crc32: \w+, )"
      R"(samples: (\w*)(?:, rows: up)?\}\)\n)");
  return std::regex_replace(CallsOf(program), kCall, "$3x$4 format $5 at $1 $2 pixels $6 $7: $8");
}

}  // namespace orxtests
