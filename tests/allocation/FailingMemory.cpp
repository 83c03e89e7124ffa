#include "tests/allocation/FailingMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
}

namespace {

struct {
  bool isOn = false;
  orxtests::Shortage shortage = orxtests::Shortage::Once;
  int failing = 0;
  int attempts = 0;
} state;

long blocks = 0;

bool Refuses() noexcept {
  if (!state.isOn) return false;
  ++state.attempts;
  return state.shortage == orxtests::Shortage::Once ? state.attempts == state.failing
                                                    : state.attempts >= state.failing;
}

}  // namespace

extern "C" {
void* __wrap_malloc(std::size_t size) { return Refuses() ? nullptr : __real_malloc(size); }
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return Refuses() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* block, std::size_t size) {
  return Refuses() ? nullptr : __real_realloc(block, size);
}
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* block = Refuses() ? nullptr : __real_malloc(size != 0 ? size : 1);
  if (block) ++blocks;
  return block;
}
void* operator new(std::size_t size) {
  void* block = operator new(size, std::nothrow);
  if (!block) throw std::bad_alloc();
  return block;
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return operator new(size, std::nothrow);
}
void operator delete(void* block) noexcept {
  if (block) --blocks;
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept { operator delete(block); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t) noexcept { operator delete(block); }

namespace orxtests {

MemoryShortage::MemoryShortage(Shortage shortage, int failing) noexcept {
  state = {true, shortage, failing, 0};
}

MemoryShortage::~MemoryShortage() { state.isOn = false; }

int AllocationsSoFar() noexcept { return state.attempts; }

long BlocksInUse() noexcept { return blocks; }

}  // namespace orxtests
