// How much of its memory this process uses.
//
// An interpreter asks for nearly every token of a document, so an answer costs a few nanoseconds:
// the clock is read only every few calls, and the operating system is asked only when the last
// sample is a millisecond old. Documents whose tokens are slow, as those that allocate much are,
// have the clock read at every call.
//
// That memory is not low may be a sample old. That it is low is never taken from an old sample: it
// is measured when it is said, after the allocator has given back what it keeps for later, because
// the answer ends drawings.
#pragma once

#include <atomic>
#include <cstdint>

namespace orxframework {

// Its functions may be called from several threads at once.
class MemoryMeter {
public:
  // The meter of this process.
  static MemoryMeter& Process() noexcept;

  // Whether the resident memory exceeds `share` of the limit. Where the platform does not tell
  // either of them, memory is never low.
  [[nodiscard]] bool IsAbove(float share) noexcept;
  // The limit in bytes; 0 stands for what the platform offers.
  void SetLimit(std::uint64_t bytes) noexcept;
  // Something ends or begins that may have let go of much memory: the allocator is asked to give
  // back before memory is called low, however short ago it was asked before.
  void ExpectChange() noexcept { changeExpected.store(true, std::memory_order_relaxed); }

private:
  void LookAtClock() noexcept;
  void Sample(std::int64_t now) noexcept;
  [[nodiscard]] bool Exceeds(float share) const noexcept;
  [[nodiscard]] bool IsAboveNow(float share) noexcept;
  void TrimAllocator() noexcept;

  // Threads share these without locks: a sample taken twice does no harm.
  std::atomic<std::int64_t> lastSample = 0;  // nanoseconds of the steady clock
  std::atomic<std::uint64_t> residentBytes = 0;
  std::atomic<std::uint64_t> limitBytes = 0;
  std::atomic<bool> changeExpected = true;
  std::atomic<std::int64_t> nextTrim = 0;         // nanoseconds of the steady clock
  std::atomic<std::int64_t> trimmingProcess = 0;  // the one with a thread at it, or 0
};

// What the platform says, in PlatformMemory.cpp; 0 when it says nothing.

// The bytes of this process that are in main memory now.
std::uint64_t ResidentMemory() noexcept;
// The bytes of main memory that this process may use: the machine's, or its container's if less.
std::uint64_t AvailableMemory() noexcept;
// Gives memory that the allocator keeps free back to the platform.
void ReleaseFreeMemory() noexcept;
// A number that no other process has, a forked child included; never 0.
std::int64_t ProcessNumber() noexcept;

}  // namespace orxframework
