// Where the objects of one interpreter come from and go back to.
//
// Records are cut from slabs and reused through a free list, so making and releasing an object
// costs a few instructions. The heap counts the live ones, keeps them within a budget of bytes, and
// when it is destroyed it takes back whatever is still alive, objects that keep each other alive in
// a circle included.
//
// One heap belongs to one interpreter and so to one thread.
#pragma once

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ps/Limits.h"
#include "ps/PSObject.h"

namespace orxeps {

class ObjectHeap : private RecordPool {
public:
  ObjectHeap() noexcept = default;
  ObjectHeap(const ObjectHeap&) = delete;
  ObjectHeap& operator=(const ObjectHeap&) = delete;
  ~ObjectHeap();

  // A literal object of no type, everything else as a new record has it, with one reference. Throws
  // LimitReached (VMerror) when the budget is used up and std::bad_alloc when memory is.
  [[nodiscard]] PSRef Make() {
    if (!freeList) AddSlab();
    if (IsFull()) throw LimitReached{"VMerror"};
    return PSRef::Adopt(PSObject::TakeFrom(*this));
  }
  [[nodiscard]] PSRef Make(PSObjectType type) {
    PSRef object = Make();
    object->type = type;
    return object;
  }

  // Brings what the budget counts for an object up to date after its elements, entries or text have
  // changed. Throws LimitReached (VMerror) when the budget does not allow them.
  void UpdateCharge(PSObject& object);

  // What the budget is made of; others of the same interpreter count in it, too.
  [[nodiscard]] MemoryBudget& Budget() noexcept { return budget; }
  // Whether the budget allows no further object.
  [[nodiscard]] bool IsFull() const noexcept { return !budget.HasRoomFor(kObjectCost); }
  // Gives a pass room to begin, whatever earlier passes left alive.
  void BeginPass() noexcept { budget.most = std::max(kMaxBytes, budget.used + kMinPassBytes); }

  // Objects can be overwritten where they lie ("copy", "astore", "scale"), and whoever remembers
  // something about objects must notice. A mark written over an operand ends what the operand
  // stack remembers of where no mark is; a dictionary written over, or with other entries, ends
  // what names remember of where they were found.
  void NoteMarkWritten() noexcept { ++marksWritten; }
  [[nodiscard]] std::uint64_t MarksWritten() const noexcept { return marksWritten; }
  void ForgetLookups() noexcept { ++generation; }
  [[nodiscard]] std::uint64_t Generation() const noexcept { return generation; }

  // Whether one dictionary has lost entries, or may have, since it was named here.
  void WatchForLosses(const PSObject& dictionary) noexcept {
    watched = &dictionary;
    hasLostEntries = false;
  }
  void NoteLoss(const PSObject& dictionary) noexcept {
    if (&dictionary == watched) hasLostEntries = true;
  }
  [[nodiscard]] bool HasLostEntries() const noexcept { return hasLostEntries; }

  // False for texts that have never been a key of any dictionary: most names that mean nothing need
  // not be looked for, however many dictionaries there are.
  void NoteKey(const ORXString& text) noexcept { keyHashes.set(text.Hash() % kKeyHashes); }
  [[nodiscard]] bool MayBeKey(const ORXString& text) const noexcept {
    return keyHashes.test(text.Hash() % kKeyHashes);
  }

  // Objects made and not yet destroyed.
  [[nodiscard]] std::size_t LiveCount() const noexcept { return liveCount; }

private:
  friend class PSObject;

  static constexpr std::size_t kKeyHashes = std::size_t{1} << 16;

  void AddSlab();
  PSParts* MakeParts();
  void Destroy(PSObject* object) noexcept;
  void Condemn(PSObject* object) noexcept;
  void ReleaseLater(PSObject* object) noexcept;
  void ReleaseParts(PSObject& object) noexcept;

  void* slabs = nullptr;
  PSObject* condemned = nullptr;  // objects without holders whose parts are still to be released
  std::uint64_t marksWritten = 0;
  std::uint64_t generation = 1;
  const PSObject* watched = nullptr;
  bool hasLostEntries = false;
  std::bitset<kKeyHashes> keyHashes;
};

inline ObjectHeap& PSObject::Heap() const noexcept { return static_cast<ObjectHeap&>(Pool()); }

}  // namespace orxeps
