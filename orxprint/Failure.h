// What ends the work on one file, and with which status the program then ends.
//
// Code that cannot go on with a file throws Failure; Attempt (orxprint/Messages.h) tells the person
// and makes it a status, so that the other files are done all the same.
#pragma once

#include <algorithm>
#include <stdexcept>

namespace orxprint {

// The statuses that the program ends with. Of several files the gravest counts.
enum class Status : int {
  Done = 0,
  FileFailed = 1,  // a file could not be read or drawn
  WrongUsage = 2,
  ContentLost = 3,   // content is missing or wrong, where that was asked for
  LimitReached = 4,  // a limit stopped the work
  NoPlugin = 5,
};

inline Status Gravest(Status a, Status b) {
  // A file that failed outweighs one that a limit stopped, and that one where content is lost.
  const auto weight = [](Status status) {
    return status == Status::FileFailed ? 10 : static_cast<int>(status);
  };
  return std::max(a, b, [&](Status x, Status y) { return weight(x) < weight(y); });
}

// A file cannot be read, drawn or written; the text says why and is shown behind the file's name.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace orxprint
