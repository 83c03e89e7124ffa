// Whether a picture is still wanted, for many threads to look at while only one of them asks.
//
// One lasts for the painting of a batch; the threads borrow it. Asking may be the caller's code, so
// only one thread does.
#pragma once

#include <atomic>
#include <thread>
#include <utility>

#include "drawing/Picture.h"

namespace orxdrawing {

class StopSignal {
public:
  // `question` may be empty: then nothing ever stops. It does not throw.
  explicit StopSignal(MayGoOn question) : mayGoOn(std::move(question)) {}

  // Whoever calls this is the one that asks from now on.
  void BecomeAsker() { asker = std::this_thread::get_id(); }
  // Whether to go on. Once it says no it always does.
  [[nodiscard]] bool GoesOn() {
    if (stopped.load(std::memory_order_relaxed)) return false;
    if (!mayGoOn || std::this_thread::get_id() != asker || mayGoOn()) return true;
    stopped.store(true, std::memory_order_relaxed);
    return false;
  }
  [[nodiscard]] bool HasStopped() const { return stopped.load(std::memory_order_relaxed); }

private:
  MayGoOn mayGoOn;
  std::thread::id asker = std::this_thread::get_id();
  std::atomic<bool> stopped = false;
};

}  // namespace orxdrawing
