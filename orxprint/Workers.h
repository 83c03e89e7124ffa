// Work on many documents shared out among processes: copies of this one, which know all that it
// knows, and take what a document does to them - a crash, the last memory - with them.
//
// The answers come back in the order of the items, whoever works on what, and an item whose process
// ends without an answer is said to have no answer; the items behind it go to a new process.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orxprint/ChildProcess.h"

namespace orxprint {

// Items, by number, that one process does one after another: what they do may depend on it.
using Chain = std::vector<std::size_t>;

struct SharedWork {
  // Each item from 0 on is in one chain, and a chain's items rise.
  std::vector<Chain> chains;
  unsigned workers = 1;  // processes at most

  // Done in a process of its own, whose end takes down nothing else. What it writes to the answer
  // is all that comes back. Must not throw.
  std::function<std::string(std::size_t item)> work;
  // Called here for each item in turn: with the answer, or with how the process ended that should
  // have given it. Returns whether to go on; otherwise what is still at work is stopped.
  std::function<bool(std::size_t item, const std::optional<std::string>& answer,
                     const ChildEnd& end)>
      take;
  // Called here several times a second meanwhile.
  std::function<void()> onWait;
};

// Whether this system has processes that are copies of another.
[[nodiscard]] bool MayShareOut() noexcept;

// Returns when all is taken. Throws Failure when no process can be had.
// REQUIRES: MayShareOut(), and no other thread runs in this process.
void ShareOut(const SharedWork& shared);

}  // namespace orxprint
