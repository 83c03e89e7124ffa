// Where the objects of one interpreter come from and go back to.
//
// Records are cut from slabs and reused through a free list, so making and releasing an object
// costs a few instructions. The heap knows every record: it counts the live ones, keeps them within
// a budget of bytes, and when it is destroyed it takes back whatever is still alive, objects that
// keep each other alive in a circle included.
//
// One heap belongs to one interpreter and so to one thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "ps/Limits.h"
#include "ps/MemoryPoisoning.h"
#include "ps/PSObject.h"

namespace orxeps {

// Thrown when a ceiling is met in the middle of a run: the run is abandoned back to the main loop,
// which raises the error.
struct LimitReached {
  const char* error;
};

class ObjectHeap {
public:
  ObjectHeap() noexcept;
  ObjectHeap(const ObjectHeap&) = delete;
  ObjectHeap& operator=(const ObjectHeap&) = delete;
  ~ObjectHeap();

  // A literal object of no type, everything else as a new record has it, with one reference. Throws
  // LimitReached (VMerror) when the budget is used up and std::bad_alloc when memory is.
  [[nodiscard]] PSRef Make() {
    if (!freeList) AddSlab();
    if (IsFull()) throw LimitReached{"VMerror"};
    liveBytes += sizeof(PSObject);
    ++liveCount;
    return PSRef::Adopt(TakeFree());
  }
  [[nodiscard]] PSRef Make(PSObjectType type) {
    PSRef object = Make();
    object->type = type;
    return object;
  }

  // Brings what the budget counts for an object up to date after its elements, entries or text have
  // changed. Throws LimitReached (VMerror) when the budget does not allow them.
  void UpdateCharge(PSObject& object) {
    const std::size_t bytes = BytesBeyondRecord(object);
    liveBytes -= object.chargedBytes;
    object.chargedBytes = bytes;
    liveBytes += bytes;
    if (liveBytes > budget) throw LimitReached{"VMerror"};
  }

  // Whether the budget allows no further object.
  [[nodiscard]] bool IsFull() const noexcept { return liveBytes + sizeof(PSObject) > budget; }
  // Gives a pass room to begin, whatever earlier passes left alive.
  void BeginPass() noexcept { budget = std::max(kMaxObjectBytes, liveBytes + kMinPassObjectBytes); }

  // Counts the marks that were written over objects which may lie anywhere already.
  void NoteMarkWritten() noexcept { ++marksWritten; }
  [[nodiscard]] std::uint64_t MarksWritten() const noexcept { return marksWritten; }

  // Objects made and not yet destroyed.
  [[nodiscard]] std::size_t LiveCount() const noexcept { return liveCount; }

private:
  friend class PSObject;

  struct Slab;

  static std::size_t BytesBeyondRecord(const PSObject& object) noexcept;
  void AddSlab();
  PSObject* TakeFree() noexcept {
    PSObject* object = freeList;
    UnpoisonMemory(object, sizeof(PSObject));
    freeList = object->nextInHeap;
    object->refCount = 1;
    return object;
  }
  void Destroy(PSObject* object) noexcept;
  void ReleaseContents(PSObject& object) noexcept;
  void ReleaseLater(PSObject* object) noexcept;
  void ReturnToFreeList(PSObject* object) noexcept;

  std::vector<std::unique_ptr<Slab>> slabs;
  PSObject* freeList = nullptr;
  PSObject* condemned = nullptr;  // objects without holders whose contents are still to be released
  std::size_t liveCount = 0;
  std::size_t liveBytes = 0;
  std::size_t budget = kMaxObjectBytes;
  std::uint64_t marksWritten = 0;
};

}  // namespace orxeps
