// The operand stack. Every entry owns one reference and is never null.
//
// Pushing takes a reference over from the caller and taking hands it back; neither counts. The
// entries lie side by side, the bottom first, so that operators that look below the top ("index",
// "roll", "copy", "]") reach them directly.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "ps/Limits.h"
#include "ps/ObjectHeap.h"
#include "ps/PSObject.h"

namespace orxeps {

class OperandStack {
public:
  OperandStack() noexcept = default;
  OperandStack(const OperandStack&) = delete;
  OperandStack& operator=(const OperandStack&) = delete;
  ~OperandStack() { Clear(); }

  [[nodiscard]] std::int32_t Count() const noexcept {
    return static_cast<std::int32_t>(entries.size());
  }
  [[nodiscard]] bool IsEmpty() const noexcept { return entries.empty(); }

  // Throws LimitReached (stackoverflow) when the stack is full; the reference is then released.
  void Push(PSRef object) {
    if (Count() >= kMaxOperands) throw LimitReached{"stackoverflow"};
    entries.push_back(object.Get());
    static_cast<void>(object.Leak());
  }
  // The top entry, borrowed; null when the stack is empty.
  [[nodiscard]] PSObject* Top() const noexcept {
    return entries.empty() ? nullptr : entries.back();
  }
  // The entry `depth` below the top. REQUIRES: 0 <= depth < Count().
  [[nodiscard]] PSObject* Below(std::int32_t depth) const noexcept {
    return entries[entries.size() - 1 - static_cast<std::size_t>(depth)];
  }
  // Takes the top entry off with its reference; nothing when the stack is empty.
  [[nodiscard]] PSRef Take() noexcept {
    if (entries.empty()) return {};
    PSObject* top = entries.back();
    entries.pop_back();
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
    return std::span(entries).last(static_cast<std::size_t>(count));
  }
  // Forgets the top `count` entries; their references are the caller's now.
  void Forget(std::int32_t count) noexcept {
    entries.resize(entries.size() - static_cast<std::size_t>(count));
  }

private:
  std::vector<PSObject*> entries;
};

}  // namespace orxeps
