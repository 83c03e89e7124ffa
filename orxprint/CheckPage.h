// What check found, as one page for browsers: a table of all files that needs no network, and no
// script to be read; scripts only sort and filter it.
#pragma once

#include <span>
#include <string>

#include "orxprint/CheckReport.h"

namespace orxprint {

// Everything that comes from documents is escaped.
[[nodiscard]] std::string CheckPage(std::span<const CheckReport> reports, Units units);

}  // namespace orxprint
