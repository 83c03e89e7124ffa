// The operand stack. Every entry owns one reference and is never null.
//
// Pushing takes a reference over from the caller and taking hands it back; neither counts. The
// entries lie side by side, the bottom first, so that operators that look below the top ("index",
// "roll", "copy", "]") reach them directly.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

#include "ps/Limits.h"
#include "ps/ObjectHeap.h"
#include "ps/ObjectList.h"
#include "ps/PSObject.h"

namespace orxeps {

class OperandStack {
public:
  static constexpr std::int32_t kNoMark = -1;

  OperandStack() noexcept = default;
  OperandStack(const OperandStack&) = delete;
  OperandStack& operator=(const OperandStack&) = delete;
  ~OperandStack() { Clear(); }

  [[nodiscard]] std::int32_t Count() const noexcept { return static_cast<std::int32_t>(Size()); }
  [[nodiscard]] bool IsEmpty() const noexcept { return end == begin.get(); }

  [[nodiscard]] bool IsFull() const noexcept { return Count() >= kMaxOperands; }

  // Throws LimitReached (stackoverflow) when the stack is full; the reference is then released.
  void Push(PSRef object) {
    if (end == limit) Grow();
    *end++ = object.Leak();
  }
  // The top entry, borrowed; null when the stack is empty.
  [[nodiscard]] PSObject* Top() const noexcept { return IsEmpty() ? nullptr : end[-1]; }
  // The entry `depth` below the top. REQUIRES: 0 <= depth < Count().
  [[nodiscard]] PSObject* Below(std::int32_t depth) const noexcept { return end[-1 - depth]; }
  // Takes the top entry off with its reference; nothing when the stack is empty.
  [[nodiscard]] PSRef Take() noexcept {
    if (IsEmpty()) return {};
    PSObject* top = *--end;
    unmarkedEnd = std::min(unmarkedEnd, Size());
    return PSRef::Adopt(top);
  }
  // Releases the top `count` entries, the top first. REQUIRES: 0 <= count <= Count().
  void Drop(std::int32_t count) noexcept {
    for (; count > 0; --count) static_cast<void>(Take());
  }
  void Clear() noexcept { Drop(Count()); }

  // The top `count` entries, deepest first; rearranging them keeps every reference.
  // REQUIRES: 0 <= count <= Count().
  [[nodiscard]] std::span<PSObject*> TopEntries(std::int32_t count) noexcept {
    const auto size = static_cast<std::size_t>(count);
    unmarkedEnd = std::min(unmarkedEnd, Size() - size);
    return {end - size, size};
  }
  // Moves the top `count` entries, the deepest first, to the end of a list. Throws std::bad_alloc
  // and moves nothing. REQUIRES: 0 <= count <= Count().
  void MoveTop(std::int32_t count, ObjectList& list) {
    list.Reserve(count);
    for (PSObject* entry : TopEntries(count)) list.Append(PSRef::Adopt(entry));
    end -= count;
  }

  // The entries above the topmost mark, or kNoMark. `marksWritten` is the heap's count: when it has
  // changed, what was searched before may hold a mark now.
  [[nodiscard]] std::int32_t CountAboveMark(std::uint64_t marksWritten) noexcept {
    if (marksSeen != marksWritten) unmarkedEnd = 0;
    marksSeen = marksWritten;
    std::size_t unmarked = Size();
    while (unmarked > 0 && !begin[unmarked - 1]->IsMark()) {
      const bool wasSearched = unmarked == unmarkedEnd && unmarkedBegin < unmarkedEnd;
      unmarked = wasSearched ? unmarkedBegin : unmarked - 1;
    }
    unmarkedBegin = unmarked;
    unmarkedEnd = Size();
    return unmarked == 0 ? kNoMark : static_cast<std::int32_t>(unmarkedEnd - unmarkedBegin);
  }

private:
  static constexpr std::size_t kFirstEntries = 256;

  [[nodiscard]] std::size_t Size() const noexcept {
    return static_cast<std::size_t>(end - begin.get());
  }
  void Grow() {
    if (IsFull()) throw LimitReached{"stackoverflow"};
    const std::size_t size = Size();
    const std::size_t capacity =
        std::min(std::max(size * 2, kFirstEntries), static_cast<std::size_t>(kMaxOperands));
    auto larger = std::make_unique_for_overwrite<PSObject*[]>(capacity);
    std::copy_n(begin.get(), size, larger.get());
    begin = std::move(larger);
    end = begin.get() + size;
    limit = begin.get() + capacity;
  }

  std::unique_ptr<PSObject*[]> begin;
  PSObject** end = nullptr;    // where the next entry goes
  PSObject** limit = nullptr;  // where the memory ends
  // Where the search for a mark has found none, so that a program which searches again and again
  // does not scan a deep stack each time: from the first of these to before the second. It ends
  // where entries leave the stack or are rearranged, and wholly when any object anywhere has been
  // overwritten by a mark ("copy", "astore"): the heap counts those.
  std::size_t unmarkedBegin = 0;
  std::size_t unmarkedEnd = 0;
  std::uint64_t marksSeen = 0;
};

}  // namespace orxeps
