// One run of an interpreter on a thread of its own, with limits on time and memory.
//
// A document can keep the interpreter inside a single token for ever, so nothing but the platform's
// thread boundary is between a run and the person's time. The thread that waits asks a run to stop
// in two steps. First the input seems to end, which brings every ordinary run back within moments.
// A run that does not come back is left behind: its thread gives way to all others and never
// returns from its next call to the host. It is not frozen where it is, for it may hold the
// allocator's lock. Nothing that such a thread can reach may be taken down, so the work that it
// runs owns all of that, and the program must end without unwinding.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <thread>

#include "host/ORXUnicodeString.h"

namespace orxprint {

using Clock = std::chrono::steady_clock;

// The interpreter asks for memory at nine tenths of the limit. Whoever fills the rest without
// asking is stopped by the host.
inline constexpr float kMemoryShare = 0.97F;

// Why a run was stopped before its end.
enum class Stop {
  TimeLimit,
  MemoryLimit,   // the framework's gauge, or the host's look at it, found memory low
  OutOfMemory,   // an allocation of the host failed
  OutputFailed,  // what the run writes to takes no more
  GaveUp,        // the interpreter says that it could not go on
};

// What one document may use, from the moment this is made.
struct Limits {
  std::optional<Clock::time_point> deadline;

  static Limits StartingNow(std::optional<double> seconds);
};

// Thrown where a run that was stopped leaves nothing to go on with.
struct Stopped {
  Stop reason;
};

// What the running and the waiting thread share. Everything drawn or reported during the run is
// changed only inside Enter, so that the waiting thread may use it once the run is over or left.
class RunControl {
public:
  // Receives the lines of the framework's report, inside Enter.
  std::function<void(const ORXUnicodeString& line)> onReport;

  // Does a piece of the run's visible work. Returns 0, or -1 when nothing was done because the run
  // is being stopped. Does not return to a run that was left.
  template <typename Work>
  int Enter(Work&& work) noexcept {
    std::unique_lock lock(door);
    if (state == State::Left) Park(lock);
    if (state != State::Running) return -1;
    ++calls;
    try {
      work();
    } catch (const std::bad_alloc&) {
      StopNow(Stop::OutOfMemory);
    }
    return 0;
  }

  // Whether the input may still be read. Does not return to a run that was left.
  [[nodiscard]] bool MayRead() noexcept {
    if (state.load(std::memory_order_relaxed) == State::Running) return true;
    return Enter([] {}) == 0;
  }

  // Takes a line of the framework's report, which says that memory is low.
  void TakeReport(const ORXUnicodeString& line) noexcept;
  // Ends the run at its next step. May be called inside Enter.
  void StopNow(Stop reason) noexcept;

  [[nodiscard]] std::optional<Stop> Reason() const noexcept;
  // Whether the run's thread never came back.
  [[nodiscard]] bool WasLeft() const noexcept { return state == State::Left; }
  [[nodiscard]] std::uint64_t Calls() const noexcept { return calls; }

private:
  friend void Run(std::shared_ptr<RunControl> control, std::function<void()> work,
                  const Limits& limits, const std::function<void(std::uint64_t calls)>& onWait);

  enum class State { Running, Stopping, Left };
  static constexpr int kNoReason = -1;

  void Finish();
  void Leave(std::thread& thread) noexcept;
  void Park(std::unique_lock<std::mutex>& lock) noexcept;

  std::mutex door;
  std::atomic<State> state = State::Running;
  std::atomic<int> reason = kNoReason;
  std::atomic<std::uint64_t> calls = 0;
  std::mutex finishDoor;
  std::condition_variable finishSignal;
  std::condition_variable parkingPlace;  // nobody is ever called from there
  bool finished = false;
};

// Runs `work` on a thread of its own and returns when it is over, or when it had to be left behind.
// `onWait` is called about twenty times a second meanwhile. Throws Failure when no thread can be
// had.
void Run(std::shared_ptr<RunControl> control, std::function<void()> work, const Limits& limits,
         const std::function<void(std::uint64_t calls)>& onWait);

// Whether any run has been left behind: the program must then end by std::_Exit.
[[nodiscard]] bool AnyRunWasLeft() noexcept;

// Makes the framework's report lines reach the control of the run whose thread they come from, and
// passes stop when memory runs low. To be called once, before the first run.
void ConnectFrameworkReport(std::uint64_t memoryLimit);

// The reason in the person's words.
[[nodiscard]] std::string Describe(Stop reason);

}  // namespace orxprint
