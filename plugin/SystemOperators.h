// All operators of the system in one table: the lists of the rooms, put in the system's order.
//
// The table is made by the compiler, which also checks that names, places and indices are unique;
// it is never destroyed and safe on all threads. An operator is added in the list of its room, not
// here.
#pragma once

#include "ps/OperatorRow.h"

namespace orxeps {

// REQUIRES: the machines that run these rows are ORXPrintEPSInterpreters.
[[nodiscard]] const OperatorTable& SystemOperators() noexcept;

}  // namespace orxeps
