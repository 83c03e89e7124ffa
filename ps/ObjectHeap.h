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
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ps/Limits.h"
#include "ps/PSObject.h"

namespace orxeps {

// Thrown when a ceiling is met in the middle of a run: the run is abandoned back to the main loop,
// which raises the error.
struct LimitReached {
  const char* error;
};

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

  // Counts, or counts no longer, what others keep for the document: names, paths, samples. Throws
  // LimitReached (VMerror) when the budget does not allow it, and then counts nothing.
  void Charge(std::size_t bytes) {
    if (!HasRoomFor(bytes)) throw LimitReached{"VMerror"};
    liveBytes += bytes;
  }
  void Discharge(std::size_t bytes) noexcept { liveBytes -= bytes; }

  [[nodiscard]] bool HasRoomFor(std::size_t bytes) const noexcept {
    return bytes <= budget - std::min(budget, liveBytes);
  }
  // Whether the budget allows no further object.
  [[nodiscard]] bool IsFull() const noexcept { return liveBytes + kObjectCost > budget; }
  // Gives a pass room to begin, whatever earlier passes left alive.
  void BeginPass() noexcept { budget = std::max(kMaxBytes, liveBytes + kMinPassBytes); }

  // Objects can be overwritten where they lie ("copy", "astore", "scale"), and whoever remembers
  // something about objects must notice. A mark written over an operand ends what the operand
  // stack remembers of where no mark is; a dictionary written over, or with other entries, ends
  // what names remember of where they were found.
  void NoteMarkWritten() noexcept { ++marksWritten; }
  [[nodiscard]] std::uint64_t MarksWritten() const noexcept { return marksWritten; }
  void ForgetLookups() noexcept { ++generation; }
  [[nodiscard]] std::uint64_t Generation() const noexcept { return generation; }

  // Objects made and not yet destroyed.
  [[nodiscard]] std::size_t LiveCount() const noexcept { return liveCount; }
  [[nodiscard]] std::size_t LiveBytes() const noexcept { return liveBytes; }

private:
  friend class PSObject;

  void AddSlab();
  PSParts* MakeParts();
  void Destroy(PSObject* object) noexcept;
  void Condemn(PSObject* object) noexcept;
  void ReleaseLater(PSObject* object) noexcept;
  void ReleaseParts(PSObject& object) noexcept;

  void* slabs = nullptr;
  PSObject* condemned = nullptr;  // objects without holders whose parts are still to be released
  std::size_t budget = kMaxBytes;
  std::uint64_t marksWritten = 0;
  std::uint64_t generation = 1;
};

inline ObjectHeap& PSObject::Heap() const noexcept { return static_cast<ObjectHeap&>(Pool()); }

}  // namespace orxeps
