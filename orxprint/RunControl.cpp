#include "orxprint/RunControl.h"

#include <algorithm>
#include <system_error>

#include "framework/PropertiesControl.h"
#include "host/ORXPrintPropertiesManager.h"
#include "orxprint/Failure.h"
#include "orxprint/Platform.h"

namespace orxprint {

namespace {

// How long a run may take to come back after it was told to stop.
constexpr auto kGrace = std::chrono::milliseconds(500);
constexpr auto kLook = std::chrono::milliseconds(50);
constexpr double kLongestSeconds = 1e9;

std::atomic<bool> anyRunWasLeft = false;
thread_local RunControl* controlOfThread = nullptr;

}  // namespace

Deadline DeadlineIn(std::optional<double> seconds) {
  if (!seconds) return {};
  const std::chrono::duration<double> time(std::min(*seconds, kLongestSeconds));
  return Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
}

bool RunControl::MayGoOn() noexcept {
  if (state.load(std::memory_order_relaxed) == State::Left) Park();
  if (IsOverdue()) StopNow(Stop::TimeLimit);
  if (ORXPrintPropertiesManager::IsLowMemory(kMemoryShare)) StopNow(Stop::MemoryLimit);
  return state.load(std::memory_order_relaxed) == State::Running;
}

// The end of a wait is added before the wait is over, so no look sees neither.
bool RunControl::IsOverdue() const noexcept {
  return deadline && !isWaiting && Clock::now() >= *deadline + waited.load();
}

void RunControl::PassEnded(const ORXPassEnd& end) noexcept {
  switch (end.result) {
    case ORXPassResult::LowMemory:
      return StopNow(Stop::MemoryLimit);
    case ORXPassResult::ReadFailed:
      return StopNow(Stop::ReadFailed);
    case ORXPassResult::OutOfMemory:
      return StopNow(Stop::OutOfMemory);
    case ORXPassResult::HostThrew:
      return StopNow(Stop::HostFailed);
    case ORXPassResult::LimitMet:
      break;
    case ORXPassResult::Complete:
    case ORXPassResult::Stopped:
      return;
  }
  const std::lock_guard lock(door);
  if (!limitMet) limitMet = end;
}

void RunControl::Noted(const ORXNote& note) noexcept {
  Enter([&] { judge->TakeNote(note, *watched); });
}

std::optional<ORXPassEnd> RunControl::LimitMet() {
  const std::lock_guard lock(door);
  return limitMet;
}

void RunControl::Require() {
  if (!MayGoOn()) throw Stopped{*Reason()};
}

int RunControl::Refuse() noexcept {
  inside.store(false, std::memory_order_release);
  if (state.load(std::memory_order_relaxed) == State::Left) Park();
  return -1;
}

void RunControl::TakeReport(const ORXUnicodeString& line) noexcept {
  Enter([&] {
    if (onReport) onReport(line);
  });
  StopNow(Stop::MemoryLimit);
}

void RunControl::StopNow(Stop newReason) noexcept {
  int none = kNoReason;
  reason.compare_exchange_strong(none, static_cast<int>(newReason));
  State running = State::Running;
  state.compare_exchange_strong(running, State::Stopping);
}

std::optional<Stop> RunControl::Reason() const noexcept {
  if (reason == kNoReason) return std::nullopt;
  return static_cast<Stop>(reason.load());
}

void RunControl::Finish() {
  const std::lock_guard lock(door);
  finished = true;
  finishSignal.notify_all();
}

bool RunControl::HasEnded(std::chrono::milliseconds patience) {
  std::unique_lock lock(door);
  return finishSignal.wait_for(lock, patience, [this] { return finished; });
}

// The thread has had time to see the state and to leave a piece of work that it had begun before;
// what it has drawn is whole unless it still has not.
void RunControl::Leave(std::thread& thread) {
  state = State::Left;
  anyRunWasLeft = true;
  LowerPriority(thread);
  thread.detach();
  std::this_thread::sleep_for(kGrace);
  if (inside.load(std::memory_order_acquire)) throw Stopped{*Reason()};
}

void RunControl::Park() noexcept {
  std::unique_lock lock(door);
  while (true) parkingPlace.wait(lock);
}

void Run(std::shared_ptr<RunControl> control, std::function<void()> work,
         const std::function<void()>& onWait) {
  std::thread thread;
  try {
    thread = std::thread([control, work = std::move(work)] {
      controlOfThread = control.get();
      try {
        work();
      } catch (const std::bad_alloc&) {
        control->StopNow(Stop::OutOfMemory);
      }
      control->Finish();
    });
  } catch (const std::system_error& error) {
    throw Failure(std::string("no thread to work on: ") + error.what());
  }

  Deadline patienceEnds;
  while (!control->HasEnded(kLook)) {
    onWait();
    if (control->MayGoOn()) continue;
    if (!patienceEnds) patienceEnds = Clock::now() + kGrace;
    if (Clock::now() < *patienceEnds) continue;
    return control->Leave(thread);
  }
  thread.join();
}

bool AnyRunWasLeft() noexcept { return anyRunWasLeft; }

void ConnectFrameworkReport(std::uint64_t memoryLimit) {
  using orxframework::PropertiesControl;
  PropertiesControl::SetOnErrorAction(OnErrorAction::Stop);
  PropertiesControl::SetMemoryLimit(memoryLimit);
  PropertiesControl::SetReportSink([](PrintInfoType, const ORXUnicodeString& line) {
    if (controlOfThread) controlOfThread->TakeReport(line);
  });
}

std::string Describe(Stop reason) {
  switch (reason) {
    case Stop::TimeLimit:
      return "stopped by the time limit";
    case Stop::MemoryLimit:
      return "stopped: memory runs low";
    case Stop::OutOfMemory:
      return "stopped: out of memory";
    case Stop::InputLimit:
      return "stopped: more came than can be kept (4 GiB)";
    case Stop::OutputFailed:
      return "stopped: the output takes no more";
    case Stop::GaveUp:
      return "stopped: the interpreter could not go on";
    case Stop::ReadFailed:
      return "cannot be read to its end";
    case Stop::HostFailed:
      return "stopped: the drawing device failed";
  }
  return "stopped";
}

std::string Describe(const ORXPassEnd& limitMet) {
  const std::string error = limitMet.error;
  return "a limit of the interpreter was met" + (error.empty() ? "" : " (" + error + ")") +
         " at byte " + std::to_string(limitMet.position) + ": what ran there is missing";
}

}  // namespace orxprint
