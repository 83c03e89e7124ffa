// Whether the run may go on: what asks the host's watcher, and keeps its refusal until the pass
// ends.
//
// One for each interpreter, which tells it where passes begin and end; reader and execution ask it.
// It owns nothing, and without a watcher it costs a counter.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/ORXInterpreterWatcher.h"

namespace orxeps {

class RunWatch {
public:
  // The watcher is borrowed; null for none.
  void SetWatcher(ORXInterpreterWatcher* newWatcher) noexcept { watcher = newWatcher; }
  void SetListener(ORXNoteListener* newListener) noexcept { listener = newListener; }
  void BeginPass() noexcept {
    stopped = false;
    end = {};
  }
  // Asks the watcher unless it has refused already.
  [[nodiscard]] bool MayGoOn() noexcept {
    if (watcher && !stopped) stopped = !watcher->MayGoOn();
    return !stopped;
  }
  // Asks now and then: called once for each of many small steps.
  [[nodiscard]] bool MayTakeStep() noexcept {
    if (--stepsLeft > 0) return true;
    stepsLeft = kStepsBetweenQuestions;
    return MayGoOn();
  }
  // Counts what an operator does to many objects, or points, as steps, and asks as soon as after as
  // much work in small steps. A refusal takes effect behind the operator.
  void CountWork(std::int64_t objects) noexcept {
    constexpr std::int64_t kObjectsPerStep = 16;
    const std::int64_t steps = objects / kObjectsPerStep;
    if (steps < stepsLeft) {
      stepsLeft -= static_cast<std::int32_t>(steps);
    } else {
      stepsLeft = MayGoOn() ? kStepsBetweenQuestions : 0;
    }
  }
  void CountBytes(std::size_t bytes) noexcept {
    constexpr std::size_t kBytesPerObject = 16;
    CountWork(static_cast<std::int64_t>(bytes / kBytesPerObject));
  }
  [[nodiscard]] bool IsStopped() const noexcept { return stopped; }

  // Whether notes go anywhere: for those that take work to make.
  [[nodiscard]] bool HasListener() const noexcept { return listener != nullptr; }
  void Note(const ORXNote& note) const noexcept {
    if (listener) listener->Noted(note);
  }

  // Notes what will be told of the pass, and where in the document it happened. The first that is
  // not a mere completion stays, unless the watcher itself stopped the pass.
  void NoteEnd(ORXPassResult result, const char* error, std::uint64_t position) noexcept {
    if (stopped) end = {ORXPassResult::Stopped, "", position};
    if (end.result == ORXPassResult::Complete) end = {result, error, position};
  }
  // Tells the watcher.
  void EndPass() noexcept {
    if (watcher) watcher->PassEnded(end);
  }

private:
  static constexpr std::int32_t kStepsBetweenQuestions = 4096;

  ORXInterpreterWatcher* watcher = nullptr;
  ORXNoteListener* listener = nullptr;
  bool stopped = false;
  std::int32_t stepsLeft = kStepsBetweenQuestions;
  ORXPassEnd end;
};

}  // namespace orxeps
