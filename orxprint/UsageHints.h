// What is said of a mistaken command line beside the mistake itself: what was probably meant.
//
// Nothing is kept; the words are UTF-8, the program's name first, as for ParseCommandLine.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace orxprint {

// Tells when the first word, which is to be a command, is none, with what may have been meant.
// Returns whether it did.
bool TellOfUnknownCommand(const CLI::App& app, const std::vector<std::string>& arguments);

// Tells of each word taken for options that is the name of a file.
void HintAtNamesWithDash(const std::vector<std::string>& arguments);

}  // namespace orxprint
