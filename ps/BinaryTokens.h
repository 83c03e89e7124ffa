// Tokens of the PostScript language's binary encoding.
#pragma once

#include "plugin/ORXPrintEPSInterpreter.h"

namespace orxeps {

// Reads one binary token if the next byte begins one. Nothing when it does not (the byte then waits
// to be read again), when the kind of token is not supported (only its first byte is taken) and
// when a read fails.
[[nodiscard]] PSRef ReadBinaryToken(ORXPrintEPSInterpreter& interpreter);

}  // namespace orxeps
