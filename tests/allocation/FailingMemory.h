// Memory that runs out when a test wants it to. The program that contains this has its global
// operator new replaced, and its linker sends calls of malloc, calloc and realloc here.
#pragma once

namespace orxtests {

enum class Shortage {
  Once,     // one allocation fails
  Lasting,  // it fails, and every one after it
};

// While it lives, allocations are counted, and the one with this number, counted from 1, fails.
class MemoryShortage {
public:
  MemoryShortage(Shortage shortage, int failing) noexcept;
  MemoryShortage(const MemoryShortage&) = delete;
  MemoryShortage& operator=(const MemoryShortage&) = delete;
  ~MemoryShortage();
};

// The allocations attempted under the shortage that is on or was on last.
[[nodiscard]] int AllocationsSoFar() noexcept;

// Blocks from operator new that have not been given back.
[[nodiscard]] long BlocksInUse() noexcept;

}  // namespace orxtests
