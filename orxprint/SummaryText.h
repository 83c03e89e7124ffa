// The summaries of pages as text: what `trace --summary` prints.
//
// The summary is complete by then; both forms tell the same.
#pragma once

#include <string>

#include "drawing/PageSummary.h"

namespace orxprint {

// Some lines about the page.
[[nodiscard]] std::string SummaryForPeople(const orxdrawing::PageSummary& page);
// One line of JSON.
[[nodiscard]] std::string SummaryForPrograms(const orxdrawing::PageSummary& page);

}  // namespace orxprint
