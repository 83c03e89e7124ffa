// The options of the command line as a table for programs: what the manual page and the shells'
// completions are made of.
//
// The parser's own objects are read, so an option that is added there is in the table, and nothing
// is written down twice.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace orxprint {

// A JSON object {program, version, description, notes, options, commands}; each command has name,
// description, notes and options, each option names, value (empty for a flag), isRequired, repeats
// and description. Hidden options are left out.
[[nodiscard]] std::string OptionTable(const CLI::App& app);

}  // namespace orxprint
