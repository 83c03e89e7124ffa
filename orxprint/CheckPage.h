// What check found, as one page for browsers: a table of all files that needs no network, and no
// script to be read; scripts only sort and filter it. Everything that comes from documents is
// escaped.
#pragma once

#include <cstddef>
#include <string>

#include "orxprint/CheckReport.h"

namespace orxprint {

// One file's row of the table.
[[nodiscard]] std::string CheckPageRow(const CheckReport& report, Units units);
// The page around the rows, of which so many tell losses or differences.
[[nodiscard]] std::string CheckPage(const std::string& rows, std::size_t files, std::size_t lossy);

}  // namespace orxprint
