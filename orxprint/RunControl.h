// One run of an interpreter on a thread of its own, with limits on time and memory.
//
// The interpreter asks its watcher every few thousand steps whether to go on, so a run is back
// moments after it is told to stop, with everything that it drew. Code that does not ask - a module
// of somebody else's that hangs - finds its input at an end instead, and is at last left behind:
// its thread gives way to all others and never returns from its next call to the host. It is not
// frozen where it is, for it may hold the allocator's lock. Nothing that such a thread can reach
// may be taken down, so the work that it runs owns all of that, and the program must end without
// unwinding.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <thread>

#include "drawing/LossJudge.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXUnicodeString.h"
#include "orxprint/Descriptor.h"

namespace orxprint {

// The interpreter asks for memory at nine tenths of the limit. Whoever fills the rest without
// asking is stopped by the host.
inline constexpr float kMemoryShare = 0.97F;

// Why a run was stopped before its end.
enum class Stop {
  TimeLimit,
  MemoryLimit,   // the framework's gauge, or the host's look at it, found memory low
  OutOfMemory,   // an allocation of the host failed
  InputLimit,    // what can be read only once is too much to be kept
  OutputFailed,  // what the run writes to takes no more
  GaveUp,        // the interpreter says that it could not go on
  ReadFailed,    // so it says of a read, although the document had more
  HostFailed,    // it caught what the host's own code threw
};

// Thrown where work that was stopped leaves nothing to go on with.
struct Stopped {
  Stop reason;
};

// `seconds` from now; none for none.
[[nodiscard]] Deadline DeadlineIn(std::optional<double> seconds);

// What the running and the waiting thread share. The flags are looked at on every call of a run, so
// nothing here locks.
class RunControl final : public ORXInterpreterWatcher, public ORXNoteListener {
public:
  explicit RunControl(Deadline runDeadline = {}) noexcept : deadline(runDeadline) {}

  // What judges the run, if anything does; used in the run only, as what follows.
  std::shared_ptr<orxdrawing::LossJudge> judge;
  // Whom the run may ask about itself, if its module has such a one.
  ORXWatchable* watched = nullptr;

  // Receives the lines of the framework's report.
  std::function<void(const ORXUnicodeString& line)> onReport;

  // Looks at the limits. Does not return to a run that was left.
  bool MayGoOn() noexcept override;
  // Takes what keeps a pass from being complete: a cause to stop the run, or a limit met on the
  // way.
  void PassEnded(const ORXPassEnd& end) noexcept override;
  [[nodiscard]] bool WantsNotes() const noexcept { return judge && watched; }
  void Noted(const ORXNote& note) noexcept override;
  // Throws Stopped when the run may not go on.
  void Require();

  // Does a piece of the run's visible work. Returns 0, or -1 when nothing was done because the run
  // is being stopped. Does not return to a run that was left.
  template <typename Work>
  int Enter(Work&& work) noexcept {
    // The thread that waits reads `inside` long after it has changed the state.
    inside.store(true, std::memory_order_relaxed);
    std::atomic_signal_fence(std::memory_order_seq_cst);
    if (state.load(std::memory_order_relaxed) != State::Running) return Refuse();
    try {
      work();
    } catch (const std::bad_alloc&) {
      StopNow(Stop::OutOfMemory);
    }
    inside.store(false, std::memory_order_release);
    return 0;
  }

  // Waits for somebody else in the middle of a run, which has that much more time then.
  template <typename Wait>
  void WaitUncounted(Wait&& wait) {
    const Clock::time_point begin = Clock::now();
    isWaiting = true;
    wait();
    waited = waited.load() + (Clock::now() - begin);
    isWaiting = false;
  }

  // Takes a line of the framework's report, which says that memory is low.
  void TakeReport(const ORXUnicodeString& line) noexcept;
  // Ends the run at its next step.
  void StopNow(Stop reason) noexcept;
  // Why the run is being stopped, if it is.
  [[nodiscard]] std::optional<Stop> Reason() const noexcept;
  // The first limit of the interpreter that took effect, if one did. It does not stop a run.
  [[nodiscard]] std::optional<ORXPassEnd> LimitMet();

private:
  friend void Run(std::shared_ptr<RunControl> control, std::function<void()> work,
                  const std::function<void()>& onWait);

  enum class State { Running, Stopping, Left };
  static constexpr int kNoReason = -1;

  int Refuse() noexcept;
  void Park() noexcept;
  void Finish();
  [[nodiscard]] bool HasEnded(std::chrono::milliseconds patience);
  void Leave(std::thread& thread);

  [[nodiscard]] bool IsOverdue() const noexcept;

  const Deadline deadline;
  std::atomic<bool> isWaiting = false;
  std::atomic<Clock::duration> waited{};
  std::atomic<State> state = State::Running;
  std::atomic<int> reason = kNoReason;
  std::atomic<bool> inside = false;  // a piece of work is being done
  std::mutex door;
  std::optional<ORXPassEnd> limitMet;
  std::condition_variable finishSignal;
  std::condition_variable parkingPlace;  // nobody is ever called from there
  bool finished = false;
};

// Runs `work` on a thread of its own and returns when it is over, or when it had to be left behind.
// `onWait` is called about twenty times a second meanwhile. Throws Failure when no thread can be
// had, and Stopped when a run that was left is in the middle of its visible work.
void Run(std::shared_ptr<RunControl> control, std::function<void()> work,
         const std::function<void()>& onWait);

// Whether any run has been left behind: the program must then end by std::_Exit.
[[nodiscard]] bool AnyRunWasLeft() noexcept;

// Makes the framework's report lines reach the control of the run whose thread they come from, and
// passes stop when memory runs low. To be called once, before the first run.
void ConnectFrameworkReport(std::uint64_t memoryLimit);

// The reason in the person's words.
[[nodiscard]] std::string Describe(Stop reason);
[[nodiscard]] std::string Describe(const ORXPassEnd& limitMet);

}  // namespace orxprint
