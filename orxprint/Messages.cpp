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

constexpr std::string_view kWipeLine = "\r\x1b[K";
constexpr auto kBetweenLooks = std::chrono::milliseconds(500);

void WriteLine(std::string line) {
  line += '\n';
  WriteToStandardError(line);
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

Progress::Progress(std::string_view file, std::string_view itsActivity)
    : name(EscapeForTerminal(file)), activity(itsActivity), wanted(IsTerminal(stderr)) {}

Progress::~Progress() {
  if (visible) WriteToStandardError(kWipeLine);
}

void Progress::Show(std::optional<unsigned> percent) {
  const Clock::time_point now = Clock::now();
  if (!wanted || now < next) return;
  next = now + kBetweenLooks;
  visible = true;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - start).count();
  std::string line(kWipeLine);
  line += "orxprint: " + name + ": " + activity + ", " + std::to_string(seconds) + " s";
  if (percent) line += ", " + std::to_string(*percent) + " % read";
  WriteToStandardError(line);
}

// A sign that cannot be given is no reason to stop.
SignOfLife::SignOfLife(std::string_view file, std::string_view activity)
    : progress(file, activity) {
  if (!IsTerminal(stderr)) return;
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
