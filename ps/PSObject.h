// One PostScript value: a number, a name, a procedure, a dictionary, ...
//
// Objects are shared by pointer and kept alive by a plain reference count. They are made by the
// interpreter's ObjectHeap and never outlive it. Every pointer on the operand stack, in an element
// list, in a dictionary or on the dictionary stack owns one reference; so does every PSRef.
//
// Only what belongs to an object's type carries meaning, but everything is there all the time and
// some operators read a field without looking at the type: a new Integer has the realValue 0.0 and
// a new Real the intValue 0. What most objects never have (text, elements, entries, a file) hangs
// on the record as PSParts once something is put there, so that a number fits in 32 bytes.
//
// A dictionary that holds itself as a value holds no reference for that entry, so it does not keep
// itself alive.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "host/ORXHashDico.h"
#include "host/ORXRawCollPV.h"
#include "host/ORXString.h"
#include "ps/Limits.h"
#include "ps/MemoryBudget.h"
#include "ps/MemoryPoisoning.h"
#include "ps/NameText.h"
#include "ps/ObjectList.h"
#include "ps/PSRef.h"

namespace orxeps {

class InputReader;
class ObjectHeap;

enum class PSObjectType : std::uint8_t {
  None = 0,  // a malformed number, for instance
  Integer = 1,
  Real = 2,
  String = 3,
  Name = 4,
  Array = 5,
  Procedure = 6,
  File = 7,
  Dictionary = 8,
  Boolean = 9,
  Mark = 10,
  Null = 11,
  Operator = 12,
};

inline constexpr std::uint64_t kNoPlace = ~std::uint64_t{0};

// What an object has beyond its record.
struct PSParts {
  ORXString stringText;  // of a String
  ObjectList procElements;
  ObjectList arrayElements;
  ORXHashDico dictEntries;            // values are PSObject pointers, each with its reference
  InputReader* fileSource = nullptr;  // of a File: what reads the document, borrowed
  ORXRawCollPV fileFilters;           // of a File: DecodeFilter pointers, borrowed
  std::size_t chargedBytes = 0;       // what the heap's budget counts of all this
  // Of a Procedure: the place of its "{" in the document.
  std::uint64_t definedAt = kNoPlace;
};

// The parts of an object that has none. Never destroyed: whoever still runs at the end of the
// process may look at it.
union NoParts {
  PSParts parts;
  constexpr NoParts() noexcept : parts{} {}
  ~NoParts() {}  // NOLINT(modernize-use-equals-default): of a union it would be deleted
};
extern const NoParts kNoParts;

// The records that wait for use, and the account of those in use: the part of a heap that making
// and releasing a number touches.
struct RecordPool {
  PSObject* freeList = nullptr;
  std::size_t liveCount = 0;  // records
  MemoryBudget budget;
};

class PSObject {
public:
  std::uint32_t refCount = 0;
  std::uint8_t literal = 1;  // 1: executing it pushes it; 0: executable
  PSObjectType type = PSObjectType::None;
  std::uint8_t boolValue = 0;
  std::int32_t intValue = 0;
  float realValue = 0.0F;
  union {
    NameText nameText;     // of a Name; of an Operator, its name
    PSObject* nextInHeap;  // of a record that is not in use or about to be destroyed
  };

  PSObject(const PSObject&) = delete;
  PSObject& operator=(const PSObject&) = delete;

  [[nodiscard]] bool Is(PSObjectType wanted) const noexcept { return type == wanted; }
  [[nodiscard]] bool IsNumber() const noexcept {
    return type == PSObjectType::Integer || type == PSObjectType::Real;
  }
  // A mark that ends what the operators collect above it.
  [[nodiscard]] bool IsMark() const noexcept { return type == PSObjectType::Mark && literal == 1; }

  // Text, lists, entries and file, empty ones where the object has none.
  [[nodiscard]] const PSParts& Parts() const noexcept { return parts ? *parts : kNoParts.parts; }
  // The same to be changed. Throws LimitReached (VMerror) and std::bad_alloc; cannot fail once the
  // object has parts.
  [[nodiscard]] PSParts& OwnParts() {
    if (!parts) MakeParts();
    return *parts;
  }

  void AddRef() noexcept { ++refCount; }
  // Gives up a reference; the last one destroys the object and what only it kept alive. However
  // deep the objects are nested, this uses a bounded amount of the machine stack.
  void Release() noexcept {
    if (--refCount > 0) return;
    if (parts || !nameText.IsEmpty()) return Destroy();
    ReturnTo(Pool());
  }

  // A copy with one reference. Arrays and procedures are copied with all that is nested in them;
  // the values of a dictionary are shared. Throws LimitReached when the copy would exceed a
  // ceiling, and then leaves nothing behind.
  [[nodiscard]] PSRef Clone() const;

  // Takes over the content of another object and keeps identity and references: values and texts
  // are overwritten, copies of the other's elements are appended to the own ones, the dictionary is
  // replaced. From itself it appends copies of the elements it has. Throws LimitReached as Clone
  // does; what was taken over until then stays.
  void AssignFrom(const PSObject& source);

private:
  friend class ObjectHeap;

  // Records lie in slabs of this size and alignment, so that a record finds its heap.
  static constexpr std::size_t kSlabBytes = std::size_t{32} << 10;

  struct SlabHeader {
    RecordPool* pool;
    void* nextSlab;
  };
  // The place of a slab's first record; they end where the slab does.
  static constexpr std::size_t FirstRecord() noexcept {
    return kSlabBytes - (kSlabBytes - sizeof(SlabHeader)) / sizeof(PSObject) * sizeof(PSObject);
  }

  PSObject() noexcept : nextInHeap(nullptr) {}
  ~PSObject() {}  // NOLINT(modernize-use-equals-default): of a union's class it would be deleted

  [[nodiscard]] RecordPool& Pool() const noexcept {
    const auto offset = reinterpret_cast<std::uintptr_t>(this) & (kSlabBytes - 1);
    const auto* const slab = reinterpret_cast<const std::byte*>(this) - offset;
    return *reinterpret_cast<const SlabHeader*>(slab)->pool;
  }
  [[nodiscard]] ObjectHeap& Heap() const noexcept;

  // A record of the free list as a new object. REQUIRES: it is not in use.
  static PSObject* TakeFrom(RecordPool& pool) noexcept {
    PSObject* record = pool.freeList;
    UnpoisonMemory(record, sizeof(PSObject));
    pool.freeList = record->nextInHeap;
    record->refCount = 1;
    record->literal = 1;
    record->type = PSObjectType::None;
    record->boolValue = 0;
    record->intValue = 0;
    record->realValue = 0.0F;
    new (&record->nameText) NameText();
    ++pool.liveCount;
    pool.budget.used += kObjectCost;
    return record;
  }
  // REQUIRES: no holders, no name and no parts.
  void ReturnTo(RecordPool& pool) noexcept {
    nextInHeap = pool.freeList;
    pool.freeList = this;
    --pool.liveCount;
    pool.budget.used -= kObjectCost;
    PoisonMemory(this, sizeof(PSObject));
  }

  void MakeParts();
  void Destroy() noexcept;
  void CopyValuesFrom(const PSObject& source);
  void ShareEntriesOf(const PSObject& source);

  PSParts* parts = nullptr;
};

inline PSRef& PSRef::operator=(PSRef&& other) noexcept {
  PSObject* const old = object;
  object = std::exchange(other.object, nullptr);
  if (old && old != object) old->Release();
  return *this;
}
inline PSRef::~PSRef() {
  if (object) object->Release();
}
inline PSRef PSRef::Retain(PSObject* borrowed) noexcept {
  if (borrowed) borrowed->AddRef();
  return PSRef(borrowed);
}

}  // namespace orxeps
