// All operators of the system in one table: the lists of the rooms, put in the system's order.
#pragma once

#include "ps/OperatorRow.h"

namespace orxeps {

// REQUIRES: the machines that run these rows are ORXPrintEPSInterpreters.
[[nodiscard]] const OperatorTable& SystemOperators() noexcept;

}  // namespace orxeps
