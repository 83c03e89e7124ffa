// What the program tells the person: messages about files, and progress while work takes long.
// Everything goes to standard error, escaped; standard output carries only answers.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "orxprint/Descriptor.h"
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
// Does the work on one file. Whatever it throws is told and becomes the outcome, so that the next
// file is done all the same.
[[nodiscard]] Outcome Attempt(std::string_view file, const std::function<Status()>& work);

// Shows lines of messages that were captured.
void WriteMessages(std::string_view lines);

// While it lives, messages are kept instead of being shown, and no progress is. Only one at a time.
class MessageCapture {
public:
  MessageCapture();
  MessageCapture(const MessageCapture&) = delete;
  MessageCapture& operator=(const MessageCapture&) = delete;
  ~MessageCapture();

  [[nodiscard]] std::string Text() const;
};

// A line at the terminal that shows that work goes on. It appears after a second, is renewed twice
// a second and is wiped away by the destructor. Shows nothing unless standard error is a terminal.
class ProgressLine {
public:
  ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine() { Wipe(); }

  // Whether it is time to show how far the work is.
  [[nodiscard]] bool IsDue() const;
  // Shows the text, the seconds that the work has taken, and the detail.
  void Show(const std::string& text, const std::string& detail = {});
  void Wipe();

private:
  bool wanted;
  bool visible = false;
  Clock::time_point start = Clock::now();
  Clock::time_point next = start + std::chrono::seconds(1);
};

class Progress {
public:
  Progress(std::string_view file, std::string_view activity);

  // To be called often; `percent` is how much of the document is done, where that is known.
  void Show(std::optional<unsigned> percent = {});

private:
  std::string text;
  ProgressLine line;
};

// The same for work on many files: "orxprint: 1,234 of 2,958 files, 3 failed, 41 s".
class BatchProgress {
public:
  explicit BatchProgress(std::size_t filesInAll) : files(filesInAll) {}

  void Show(std::size_t done, std::size_t failed);
  // To be called before anything else is shown.
  void Wipe() { line.Wipe(); }

private:
  std::size_t files;
  ProgressLine line;
};

// Shows progress from a thread of its own, for work that cannot say how far it is.
class SignOfLife {
public:
  SignOfLife(std::string_view file, std::string_view activity);
  SignOfLife(const SignOfLife&) = delete;
  SignOfLife& operator=(const SignOfLife&) = delete;
  ~SignOfLife();

private:
  Progress progress;
  std::mutex door;
  std::condition_variable endSignal;
  bool ended = false;
  std::thread thread;
};

}  // namespace orxprint
