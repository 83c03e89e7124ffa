// A program run to its end as a child of this one, for work that may crash or hang.
//
// The caller waits. What the child writes to standard output is collected, a crash or a hang
// becomes part of the answer, and nothing of the child is left behind.
#pragma once

#include <string>
#include <vector>

#include "orxprint/Descriptor.h"

namespace orxprint {

struct ChildEnd {
  enum class How { Exited, Killed, TimedOut, NotStarted };
  How how = How::NotStarted;
  int value = 0;       // the exit status, or the signal or exception that ended it
  std::string output;  // what it wrote to standard output, the first 64 KiB
};

// Runs the program with these arguments, its standard input empty, its standard error this
// program's. A child that is not back by `end` is killed; none is left when this returns.
[[nodiscard]] ChildEnd RunChild(const std::string& program,
                                const std::vector<std::string>& arguments, const Deadline& end);

// What ended a child in words: "exit status 3", "signal 11 (Segmentation fault)".
[[nodiscard]] std::string Describe(const ChildEnd& end);

}  // namespace orxprint
