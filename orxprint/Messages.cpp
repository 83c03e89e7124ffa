#include "orxprint/Messages.h"

#include <cstdio>
#include <new>

#include "drawing/Text.h"
#include "orxprint/Platform.h"
#include "orxprint/RunControl.h"

namespace orxprint {

namespace {

using orxdrawing::EscapeForTerminal;

constexpr std::string_view kWipeLine = "\r\x1b[K";

void WriteLine(std::string line) {
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
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
  } catch (const Stopped& stopped) {
    outcome = {Status::LimitReached, Describe(stopped.reason)};
  } catch (const std::bad_alloc&) {
    outcome = {Status::LimitReached, Describe(Stop::OutOfMemory)};
  }
  Tell(file, outcome.problem);
  return outcome;
}

Progress::Progress(std::string_view file)
    : name(EscapeForTerminal(file)), wanted(IsTerminal(stderr)) {}

Progress::~Progress() {
  if (visible) std::fwrite(kWipeLine.data(), 1, kWipeLine.size(), stderr);
}

void Progress::Show(std::uint64_t drawingCalls) {
  const Clock::time_point now = Clock::now();
  if (!wanted || now < next) return;
  next = now + std::chrono::milliseconds(500);
  visible = true;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - start).count();
  std::string line(kWipeLine);
  line += "orxprint: " + name + ": " + std::to_string(seconds) + " s, " +
          std::to_string(drawingCalls) + " drawing calls";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace orxprint
