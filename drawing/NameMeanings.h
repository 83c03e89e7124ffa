// What the names of the PostScript language that the interpreter does not have would have done.
//
// A table and nothing else: the judge of losses asks it about each name that means nothing here.
#pragma once

#include <string_view>

namespace orxdrawing {

enum class NameMeaning {
  Unknown,      // no name of the language
  Bookkeeping,  // nothing that could be seen
  Text,
  Paint,
  Image,
  Path,
  Clip,
  InitClip,
  Color,
  Dash,
  Matrix,  // sets the matrix to another than it is
  Save,
  Restore,
  Loop,    // runs a procedure that lies on the stack
  Value,   // leaves a result
  Number,  // leaves a number computed from one or two
  Rounding,
  Device,  // maps a vector between user and device space
};

[[nodiscard]] NameMeaning MeaningOf(std::string_view name) noexcept;

}  // namespace orxdrawing
