#include "orxprint/Messages.h"

#include <cstdio>
#include <exception>
#include <new>
#include <system_error>

#include "drawing/Picture.h"
#include "drawing/Text.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

using orxdrawing::EscapeForTerminal;
using orxdrawing::WithCommas;

constexpr std::string_view kWipeLine = "\r\x1b[K";
constexpr auto kBetweenLooks = std::chrono::milliseconds(500);

// Where messages go while they are captured.
std::mutex captureDoor;
std::optional<std::string> captured;

void WriteLine(std::string line) {
  line += '\n';
  const std::lock_guard lock(captureDoor);
  if (captured) {
    *captured += line;
  } else {
    WriteToStandardError(line);
  }
}

bool ShowsProgress() {
  const std::lock_guard lock(captureDoor);
  return !captured && IsTerminal(stderr);
}

}  // namespace

void Tell(std::string_view file, std::string_view text) {
  WriteLine("orxprint: " + EscapeForTerminal(file) + ": " + EscapeForTerminal(text));
}

void Tell(std::string_view text) { WriteLine("orxprint: " + EscapeForTerminal(text)); }

void Warn(std::string_view file, std::string_view text) {
  Tell(file, "warning: " + std::string(text));
}

Outcome Attempt(std::string_view file, const std::function<Status()>& work) {
  Outcome outcome;
  try {
    return {work(), {}};
  } catch (const Failure& failure) {
    outcome = {Status::FileFailed, failure.what()};
  } catch (const orxdrawing::PictureTooLarge& tooLarge) {
    outcome = {Status::LimitReached, tooLarge.what()};
  } catch (const Stopped& stopped) {
    outcome = {Status::LimitReached, Describe(stopped.reason)};
  } catch (const std::bad_alloc&) {
    outcome = {Status::LimitReached, Describe(Stop::OutOfMemory)};
  } catch (const std::exception& problem) {
    outcome = {Status::FileFailed, problem.what()};
  }
  Tell(file, outcome.problem);
  return outcome;
}

void WriteMessages(std::string_view lines) { WriteToStandardError(lines); }

MessageCapture::MessageCapture() {
  const std::lock_guard lock(captureDoor);
  captured.emplace();
}

MessageCapture::~MessageCapture() {
  const std::lock_guard lock(captureDoor);
  captured.reset();
}

std::string MessageCapture::Text() const {
  const std::lock_guard lock(captureDoor);
  return *captured;
}

ProgressLine::ProgressLine() : wanted(ShowsProgress()) {}

bool ProgressLine::IsDue() const { return wanted && Clock::now() >= next; }

void ProgressLine::Show(const std::string& text, const std::string& detail) {
  const Clock::time_point now = Clock::now();
  next = now + kBetweenLooks;
  visible = true;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - start).count();
  WriteToStandardError(std::string(kWipeLine) + "orxprint: " + text + ", " +
                       std::to_string(seconds) + " s" + detail);
}

void ProgressLine::Wipe() {
  if (visible) WriteToStandardError(kWipeLine);
  visible = false;
}

Progress::Progress(std::string_view file, std::string_view activity)
    : text(EscapeForTerminal(file) + ": " + std::string(activity)) {}

void Progress::Show(std::optional<unsigned> percent) {
  if (!line.IsDue()) return;
  line.Show(text, percent ? ", " + std::to_string(*percent) + " % read" : "");
}

void BatchProgress::Show(std::size_t done, std::size_t failed) {
  if (!line.IsDue()) return;
  line.Show(WithCommas(done) + " of " + WithCommas(files) + " files" +
            (failed > 0 ? ", " + WithCommas(failed) + " failed" : ""));
}

// A sign that cannot be given is no reason to stop.
SignOfLife::SignOfLife(std::string_view file, std::string_view activity)
    : progress(file, activity) {
  if (!ShowsProgress()) return;
  try {
    thread = std::thread([this] {
      std::unique_lock lock(door);
      while (!endSignal.wait_for(lock, kBetweenLooks, [this] { return ended; })) progress.Show();
    });
  } catch (const std::system_error&) {
    return;
  }
}

SignOfLife::~SignOfLife() {
  if (!thread.joinable()) return;
  {
    const std::lock_guard lock(door);
    ended = true;
  }
  endSignal.notify_all();
  thread.join();
}

}  // namespace orxprint
