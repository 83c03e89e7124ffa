// The foundation library's list of untyped pointers. Positions count from 1; the list never looks
// at what its pointers point to, and owns none of it.
//
// A list is one pointer wide and allocates nothing while it is empty. Appending costs constant
// time on average; inserting at the front moves everything behind it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <utility>

class ORXRawCollPV {
public:
  ORXRawCollPV() noexcept = default;
  ORXRawCollPV(const ORXRawCollPV& other) { Assign(other); }
  ORXRawCollPV(ORXRawCollPV&& other) noexcept : block(std::exchange(other.block, nullptr)) {}
  ~ORXRawCollPV() { RemoveAll(); }

  ORXRawCollPV& operator=(const ORXRawCollPV& other) {
    if (this != &other) {
      ORXRawCollPV copy(other);
      std::swap(block, copy.block);
    }
    return *this;
  }
  ORXRawCollPV& operator=(ORXRawCollPV&& other) noexcept {
    if (this != &other) {
      RemoveAll();
      block = std::exchange(other.block, nullptr);
    }
    return *this;
  }

  [[nodiscard]] std::int32_t Count() const noexcept {
    return block ? static_cast<std::int32_t>(block->count) : 0;
  }
  // REQUIRES: 1 <= position <= Count().
  [[nodiscard]] void* At(std::int32_t position) const noexcept {
    return block->Items()[position - 1];
  }
  void SetAt(std::int32_t position, void* pointer) noexcept {
    block->Items()[position - 1] = pointer;
  }
  [[nodiscard]] std::span<void* const> Items() const noexcept {
    return block ? std::span<void* const>(block->Items(), block->count) : std::span<void* const>();
  }

  // Makes room for `count` more pointers, and then some where the list has grown before; appending
  // them cannot fail.
  void Reserve(std::size_t count) {
    const std::size_t needed = static_cast<std::size_t>(Count()) + count;
    if (!block) return Grow(needed);
    if (needed > block->capacity) Grow(std::max(needed, std::size_t{block->capacity} * 2));
  }
  void Append(void* pointer) {
    if (!block || block->count == block->capacity) {
      Grow(block ? std::size_t{block->capacity} * 2 : kFirstCapacity);
    }
    block->Items()[block->count++] = pointer;
  }
  void InsertFirst(void* pointer) {
    Append(pointer);
    std::memmove(block->Items() + 1, block->Items(), (block->count - 1) * sizeof(void*));
    block->Items()[0] = pointer;
  }
  // REQUIRES: Count() > 0, here and below.
  void RemoveLast() noexcept { --block->count; }
  void RemoveFirst() noexcept {
    std::memmove(block->Items(), block->Items() + 1, --block->count * sizeof(void*));
  }
  void RemoveAll() noexcept {
    ::operator delete(block);
    block = nullptr;
  }

private:
  static constexpr std::size_t kFirstCapacity = 6;

  struct Block {
    std::uint32_t count;
    std::uint32_t capacity;
    void** Items() noexcept { return reinterpret_cast<void**>(this + 1); }
  };

  static Block* MakeBlock(std::size_t capacity) {
    if (capacity > INT32_MAX) throw std::bad_alloc();
    void* memory = ::operator new(sizeof(Block) + capacity * sizeof(void*));
    return new (memory) Block{0, static_cast<std::uint32_t>(capacity)};
  }
  void Assign(const ORXRawCollPV& other) {
    if (other.Count() == 0) return;
    block = MakeBlock(other.block->count);
    block->count = other.block->count;
    std::memcpy(block->Items(), other.block->Items(), block->count * sizeof(void*));
  }
  void Grow(std::size_t capacity) {
    Block* larger = MakeBlock(capacity);
    if (block) {
      larger->count = block->count;
      std::memcpy(larger->Items(), block->Items(), block->count * sizeof(void*));
      ::operator delete(block);
    }
    block = larger;
  }

  Block* block = nullptr;
};
