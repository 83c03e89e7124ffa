#include "orxprint/StandardOutput.h"

#include <cerrno>

#include "orxprint/Failure.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

constexpr int kStandardOutput = 1;

}  // namespace

bool StandardOutput::Write(std::string_view text) noexcept {
  if (error == 0) error = WriteAll(kStandardOutput, text, deadline);
  return error == 0;
}

void StandardOutput::RequireSuccess() const {
  if (error == ETIMEDOUT) throw Stopped{Stop::TimeLimit};
  if (error != 0) throw Failure("cannot write standard output: " + ErrorText(error));
}

}  // namespace orxprint
