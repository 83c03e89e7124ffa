// What one interpreter may hold for its document, in bytes: objects, names, texts, paths, saved
// states and samples count in one account, at costs that are the same on every platform.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

#include "ps/Limits.h"

namespace orxeps {

// Thrown when a ceiling is met in the middle of a run: the run is abandoned back to the main loop,
// which raises the error.
struct LimitReached {
  const char* error;
};

struct MemoryBudget {
  std::size_t used = 0;
  std::size_t most = kMaxBytes;

  [[nodiscard]] bool HasRoomFor(std::size_t bytes) const noexcept {
    return bytes <= most - std::min(most, used);
  }
  // Counts, or counts no longer, what somebody holds. Throws LimitReached (VMerror) when there is
  // no room, and then counts nothing.
  void Take(std::size_t bytes) {
    if (!HasRoomFor(bytes)) throw LimitReached{"VMerror"};
    used += bytes;
  }
  void Give(std::size_t bytes) noexcept { used -= bytes; }
};

// A part of a budget, given back in the end.
class MemoryShare {
public:
  MemoryShare() noexcept = default;
  // The budget is borrowed.
  explicit MemoryShare(MemoryBudget& itsBudget) noexcept : budget(&itsBudget) {}
  MemoryShare(MemoryShare&& other) noexcept
      : budget(other.budget), bytes(std::exchange(other.bytes, 0)) {}
  MemoryShare& operator=(MemoryShare&& other) noexcept {
    if (this == &other) return *this;
    static_cast<void>(Resize(0));
    budget = other.budget;
    bytes = std::exchange(other.bytes, 0);
    return *this;
  }
  ~MemoryShare() { static_cast<void>(Resize(0)); }

  // Makes the share as large as said. False, and the share as it was, when there is no room.
  // Without a budget there always is.
  [[nodiscard]] bool Resize(std::size_t newBytes) noexcept {
    if (!budget) return true;
    if (newBytes > bytes && !budget->HasRoomFor(newBytes - bytes)) return false;
    budget->used = budget->used - bytes + newBytes;
    bytes = newBytes;
    return true;
  }

private:
  MemoryBudget* budget = nullptr;
  std::size_t bytes = 0;
};

}  // namespace orxeps
