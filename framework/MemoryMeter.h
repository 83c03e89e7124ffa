// How much of its memory this process uses.
//
// An interpreter asks for nearly every token of a document, so an answer costs a few nanoseconds:
// the clock is read only every few calls, and the operating system is asked only when the last
// sample is a millisecond old. Documents whose tokens are slow, as those that allocate much are,
// have the clock read at every call.
#pragma once

#include <atomic>
#include <cstdint>

namespace orxframework {

class MemoryMeter {
public:
  // The meter of this process.
  static MemoryMeter& Process() noexcept;

  // Whether the resident memory exceeds `share` of the limit. Where the platform does not tell
  // either of them, memory is never low. May be called from several threads at once.
  [[nodiscard]] bool IsAbove(float share) noexcept;
  // The limit in bytes; 0 stands for what the platform offers.
  void SetLimit(std::uint64_t bytes) noexcept;

private:
  void LookAtClock() noexcept;

  // Threads share these without locks: a lost count or a sample taken twice does no harm.
  std::atomic<unsigned> callsUntilLook = 0;
  std::atomic<std::int64_t> lastLook = 0;    // nanoseconds of the steady clock
  std::atomic<std::int64_t> lastSample = 0;  // likewise
  std::atomic<std::uint64_t> residentBytes = 0;
  std::atomic<std::uint64_t> limitBytes = 0;
};

// What the platform says, in PlatformMemory.cpp; 0 when it says nothing.

// The bytes of this process that are in main memory now.
std::uint64_t ResidentMemory() noexcept;
// The bytes of main memory that this process may use: the machine's, or its container's if less.
std::uint64_t AvailableMemory() noexcept;

}  // namespace orxframework
