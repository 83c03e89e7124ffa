#include "orxprint/RunControl.h"

#include <algorithm>
#include <system_error>

#include "framework/PropertiesControl.h"
#include "host/ORXPrintPropertiesManager.h"
#include "orxprint/Failure.h"
#include "orxprint/Platform.h"

namespace orxprint {

namespace {

// How long a run may take to notice that it is to stop.
constexpr auto kGrace = std::chrono::milliseconds(200);
constexpr auto kLook = std::chrono::milliseconds(50);
constexpr double kLongestSeconds = 1e9;

std::atomic<bool> anyRunWasLeft = false;
thread_local RunControl* controlOfThread = nullptr;

}  // namespace

Limits Limits::StartingNow(std::optional<double> seconds) {
  if (!seconds) return {};
  const std::chrono::duration<double> time(std::min(*seconds, kLongestSeconds));
  return {Clock::now() + std::chrono::duration_cast<Clock::duration>(time)};
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
  const std::lock_guard lock(finishDoor);
  finished = true;
  finishSignal.notify_all();
}

void RunControl::Leave(std::thread& thread) noexcept {
  // Holding the door, no piece of work is half done.
  const std::lock_guard lock(door);
  state = State::Left;
  anyRunWasLeft = true;
  LowerPriority(thread);
  thread.detach();
}

void RunControl::Park(std::unique_lock<std::mutex>& lock) noexcept {
  while (true) parkingPlace.wait(lock);
}

void Run(std::shared_ptr<RunControl> control, std::function<void()> work, const Limits& limits,
         const std::function<void(std::uint64_t calls)>& onWait) {
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

  std::optional<Clock::time_point> patienceEnds;
  std::unique_lock lock(control->finishDoor);
  while (!control->finishSignal.wait_for(lock, kLook, [&] { return control->finished; })) {
    onWait(control->Calls());
    if (limits.deadline && Clock::now() >= *limits.deadline) control->StopNow(Stop::TimeLimit);
    if (ORXPrintPropertiesManager::IsLowMemory(kMemoryShare)) control->StopNow(Stop::MemoryLimit);
    if (!control->Reason()) continue;
    if (!patienceEnds) patienceEnds = Clock::now() + kGrace;
    if (Clock::now() < *patienceEnds) continue;
    control->Leave(thread);
    return;
  }
  lock.unlock();
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
    case Stop::OutputFailed:
      return "stopped: the output takes no more";
    case Stop::GaveUp:
      return "stopped: the interpreter could not go on";
  }
  return "stopped";
}

}  // namespace orxprint
