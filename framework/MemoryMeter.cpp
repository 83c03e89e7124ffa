// When to ask the platform, and what to make of the answer.
#include "framework/MemoryMeter.h"

#include <chrono>

namespace orxframework {

namespace {

constexpr std::int64_t kSampleInterval = 1'000'000;  // nanoseconds
constexpr unsigned kCallsPerLook = 16;

std::int64_t Now() noexcept {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

}  // namespace

MemoryMeter& MemoryMeter::Process() noexcept {
  static MemoryMeter meter;
  return meter;
}

bool MemoryMeter::IsAbove(float share) noexcept {
  const unsigned calls = callsUntilLook.load(std::memory_order_relaxed);
  if (calls == 0) {
    LookAtClock();
  } else {
    callsUntilLook.store(calls - 1, std::memory_order_relaxed);
  }
  const std::uint64_t limit = limitBytes.load(std::memory_order_relaxed);
  if (limit == 0) return false;
  return static_cast<double>(residentBytes.load(std::memory_order_relaxed)) >
         static_cast<double>(share) * static_cast<double>(limit);
}

void MemoryMeter::SetLimit(std::uint64_t bytes) noexcept {
  limitBytes.store(bytes, std::memory_order_relaxed);
  lastSample.store(0, std::memory_order_relaxed);
  callsUntilLook.store(0, std::memory_order_relaxed);
}

void MemoryMeter::LookAtClock() noexcept {
  if (limitBytes.load(std::memory_order_relaxed) == 0) {
    limitBytes.store(AvailableMemory(), std::memory_order_relaxed);
  }
  const std::int64_t now = Now();
  const bool callsAreSlow = now - lastLook.load(std::memory_order_relaxed) >= kSampleInterval;
  lastLook.store(now, std::memory_order_relaxed);
  callsUntilLook.store(callsAreSlow ? 0 : kCallsPerLook - 1, std::memory_order_relaxed);
  const std::int64_t sampled = lastSample.load(std::memory_order_relaxed);
  if (sampled != 0 && now - sampled < kSampleInterval) return;
  lastSample.store(now, std::memory_order_relaxed);
  residentBytes.store(ResidentMemory(), std::memory_order_relaxed);
}

}  // namespace orxframework
