// What the program tells the person: messages about files, and progress while work takes long.
// Everything goes to standard error, escaped; standard output carries only answers.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "orxprint/Failure.h"

namespace orxprint {

// "orxprint: FILE: TEXT".
void Tell(std::string_view file, std::string_view text);
// "orxprint: TEXT", for what concerns no file.
void Tell(std::string_view text);
// "orxprint: FILE: warning: TEXT".
void Warn(std::string_view file, std::string_view text);

// How the work on one file ended, and why it failed if it did.
struct Outcome {
  Status status = Status::Done;
  std::string problem;
};
// Does the work on one file. A Failure, a Stopped or a lack of memory that it throws is told and
// becomes the outcome.
[[nodiscard]] Outcome Attempt(std::string_view file, const std::function<Status()>& work);

// A line at the terminal that shows that work goes on. It appears after a second, is renewed twice
// a second and is wiped away by the destructor. Shows nothing unless standard error is a terminal.
class Progress {
public:
  explicit Progress(std::string_view file);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // To be called often.
  void Show(std::uint64_t drawingCalls);

private:
  using Clock = std::chrono::steady_clock;

  std::string name;
  bool wanted;
  bool visible = false;
  Clock::time_point start = Clock::now();
  Clock::time_point next = start + std::chrono::seconds(1);
};

}  // namespace orxprint
