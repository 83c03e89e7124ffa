// The page for browsers with documents inside, while it is being written.
//
// It is made of a page as it is installed, with the interpreter or without, and borrows the output.
// Everything goes into it as letters in elements that nothing runs, so that no document becomes
// markup.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "orxprint/DrawnDocument.h"
#include "orxprint/OutputFile.h"

namespace orxprint {

struct ViewTemplate {
  std::string front;
  std::string rest;             // documents stand in front of this
  bool hasInterpreter = false;  // without it, the page carries drawings
};
// As it is installed, or as it is built beside this program: with the interpreter if there is one.
// Throws Failure.
[[nodiscard]] ViewTemplate ReadViewTemplate();

// Gives bytes from a place on: fewer than asked for only at the end.
using BytesAt = std::function<std::size_t(std::uint64_t place, char* buffer, std::size_t count)>;

void WriteDocument(OutputFile& output, std::string_view shownName, const BytesAt& read);
// Behind its document.
void WriteDrawing(OutputFile& output, const DrawnDocument& drawn);

}  // namespace orxprint
