// The scanner: turns the bytes of the document into tokens, and tokens into objects.
//
// A token is a run of regular bytes or a single delimiter. White space separates tokens, comments
// are skipped; two comments take effect on the way: "%%EOF" ends the pass, and a comment that
// contains "Page:" begins a page. Inside a string (the parenthesis depth is above 0) white space
// and bytes of no class belong to the token instead.
#pragma once

#include <string_view>

#include "plugin/ORXPrintEPSInterpreter.h"

namespace orxeps {

// The next token; empty at the end of the data, at a line end with nothing collected, before a
// binary token and without input. Valid until the next token is read.
std::string_view ReadToken(ORXPrintEPSInterpreter& interpreter);

// The object of a token that is no delimiter: a number, or an executable name.
[[nodiscard]] PSRef MakeObject(ORXPrintEPSInterpreter& interpreter, std::string_view token);

// The object of a token that looks like a number: an Integer, a Real, or an object of no type.
[[nodiscard]] PSRef ParseNumber(ORXPrintEPSInterpreter& interpreter, std::string_view token);

// A literal name.
[[nodiscard]] PSRef MakeLiteralName(ORXPrintEPSInterpreter& interpreter, std::string_view text);

// The rest of a string, after its "(".
[[nodiscard]] PSRef ReadString(ORXPrintEPSInterpreter& interpreter);

// The rest of a procedure, after its "{". However deep procedures are nested, this uses a bounded
// amount of the machine stack.
[[nodiscard]] PSRef ReadProcedure(ORXPrintEPSInterpreter& interpreter);

// The object that a token begins, a procedure excepted; nothing when there is none. For an empty
// token, a binary token.
[[nodiscard]] PSRef ReadObject(ORXPrintEPSInterpreter& interpreter, std::string_view token);

}  // namespace orxeps
