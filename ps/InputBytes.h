// Reading bytes from the document's input, with an eye on whether it moves on at all: an input that
// fails for ever must not keep a loop going.
#pragma once

#include "plugin/ORXPrintEPSInterpreter.h"

namespace orxeps {

// Reads a byte; false, and `byte` as it was, when there is none.
inline bool ReadInputByte(ORXPrintEPSInterpreter& interpreter, char& byte) {
  if ((interpreter.scanner.bytesRead & 0xFFF) == 0 && !interpreter.MayGoOn()) return false;
  if (interpreter.stopped || interpreter.inputStream->ReadByte(&byte) < 0) return false;
  ++interpreter.scanner.bytesRead;
  return true;
}

[[nodiscard]] inline bool InputIsReadable(const ORXPrintEPSInterpreter& interpreter) {
  return !interpreter.stopped && interpreter.inputStream->IsReadable() == 1;
}

}  // namespace orxeps
