// Standard output as the place of answers: what it does not take is remembered and told once.
//
// Make one for a command, write to it, and ask at the end; it owns nothing, and what was written is
// with the reader at once.
#pragma once

#include <string_view>

#include "orxprint/Descriptor.h"

namespace orxprint {

class StandardOutput {
public:
  // Whoever reads may take until the deadline.
  explicit StandardOutput(const Deadline& readersDeadline) : deadline(readersDeadline) {}

  // Returns whether everything was taken. After a failure nothing is written any more.
  bool Write(std::string_view text) noexcept;
  // 0, or the errno value; ETIMEDOUT when the reader took too long.
  [[nodiscard]] int Error() const noexcept { return error; }
  // Throws Failure, or Stopped for a reader that took too long.
  void RequireSuccess() const;

private:
  Deadline deadline;
  int error = 0;
};

}  // namespace orxprint
