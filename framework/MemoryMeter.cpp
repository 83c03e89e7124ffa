// When to ask the platform, and what to make of the answer.
#include "framework/MemoryMeter.h"

#include <algorithm>
#include <chrono>

namespace orxframework {

namespace {

constexpr std::int64_t kSampleInterval = 1'000'000;  // nanoseconds, here and below
constexpr unsigned kCallsPerLook = 64;
// Trimming walks over the whole heap. While memory stays low, it takes no more than a small part of
// the time.
constexpr std::int64_t kShortestTrimInterval = 20'000'000;
constexpr std::int64_t kTrimsPerInterval = 20;

// Of each thread, so that threads do not fight for them.
struct Pace {
  unsigned callsUntilLook = 0;
  std::int64_t lastLook = 0;  // nanoseconds of the steady clock
};
#if defined(__GLIBC__)
[[gnu::tls_model("initial-exec")]]  // found without a call
#endif
constinit thread_local Pace paceOfThread;

std::int64_t Now() noexcept {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

constinit MemoryMeter processMeter;

}  // namespace

MemoryMeter& MemoryMeter::Process() noexcept { return processMeter; }

bool MemoryMeter::IsAbove(float share) noexcept {
  // Between two looks at the clock memory is as little low as it was.
  if (paceOfThread.callsUntilLook > 0) {
    --paceOfThread.callsUntilLook;
    return false;
  }
  LookAtClock();
  if (!Exceeds(share) || !IsAboveNow(share)) return false;
  paceOfThread.callsUntilLook = 0;
  return true;
}

bool MemoryMeter::Exceeds(float share) const noexcept {
  // Signed numbers become floating-point ones faster.
  const auto limit = static_cast<std::int64_t>(limitBytes.load(std::memory_order_relaxed));
  const auto resident = static_cast<std::int64_t>(residentBytes.load(std::memory_order_relaxed));
  return limit != 0 &&
         static_cast<double>(resident) > static_cast<double>(share) * static_cast<double>(limit);
}

void MemoryMeter::SetLimit(std::uint64_t bytes) noexcept {
  limitBytes.store(std::min<std::uint64_t>(bytes != 0 ? bytes : AvailableMemory(), INT64_MAX),
                   std::memory_order_relaxed);
  lastSample.store(0, std::memory_order_relaxed);
  ExpectChange();
  paceOfThread.callsUntilLook = 0;
}

void MemoryMeter::LookAtClock() noexcept {
  if (limitBytes.load(std::memory_order_relaxed) == 0) {
    limitBytes.store(AvailableMemory(), std::memory_order_relaxed);
  }
  const std::int64_t now = Now();
  Pace& pace = paceOfThread;
  const bool callsAreSlow = now - pace.lastLook >= kSampleInterval;
  pace.lastLook = now;
  pace.callsUntilLook = callsAreSlow ? 0 : kCallsPerLook - 1;
  const std::int64_t sampled = lastSample.load(std::memory_order_relaxed);
  if (sampled == 0 || now - sampled >= kSampleInterval) Sample(now);
}

void MemoryMeter::Sample(std::int64_t now) noexcept {
  lastSample.store(now, std::memory_order_relaxed);
  residentBytes.store(ResidentMemory(), std::memory_order_relaxed);
}

bool MemoryMeter::IsAboveNow(float share) noexcept {
  const std::int64_t now = Now();
  Sample(now);
  if (!Exceeds(share)) return false;
  const bool mayTrim = changeExpected.exchange(false, std::memory_order_relaxed) ||
                       now >= nextTrim.load(std::memory_order_relaxed);
  const std::int64_t self = ProcessNumber();
  std::int64_t trimming = trimmingProcess.load();
  if (trimming == self) {
    // What another thread is giving back may be enough. A number inherited from a parent is of
    // nobody here.
    trimmingProcess.wait(self);
  } else if (!mayTrim) {
    return true;
  } else if (trimmingProcess.compare_exchange_strong(trimming, self)) {
    TrimAllocator();
    trimmingProcess.store(0);
    trimmingProcess.notify_all();
  }
  Sample(now);
  return Exceeds(share);
}

void MemoryMeter::TrimAllocator() noexcept {
  const std::int64_t start = Now();
  ReleaseFreeMemory();
  const std::int64_t end = Now();
  nextTrim.store(end + std::max(kShortestTrimInterval, kTrimsPerInterval * (end - start)),
                 std::memory_order_relaxed);
}

}  // namespace orxframework
