// One PostScript value: a number, a name, a procedure, a dictionary, ...
//
// Objects are shared by pointer and kept alive by a plain reference count. They are made by the
// interpreter's ObjectHeap and never outlive it. Every pointer on the operand stack, in an element
// list, in a dictionary or on the dictionary stack owns one reference; so does every PSRef. Code
// that holds an object for a while holds a PSRef; a raw PSObject* is borrowed.
//
// Only the fields that belong to an object's type carry meaning, but all of them exist all the
// time and some operators read a field without looking at the type: a new Integer has the
// realValue 0.0 and a new Real the intValue 0.
//
// A dictionary that holds itself as a value holds no reference for that entry, so it does not keep
// itself alive.
#pragma once

#include <cstdint>
#include <utility>

#include "host/ORXHashDico.h"
#include "host/ORXRawCollPV.h"
#include "host/ORXString.h"
#include "ps/ObjectList.h"

class PrintInputStream;

namespace orxeps {

class ObjectHeap;
struct OperatorRow;

enum class PSObjectType : std::uint32_t {
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

class PSRef;

class PSObject {
public:
  std::uint8_t literal = 1;  // 1: executing it pushes it; 0: executable
  PSObjectType type = PSObjectType::None;
  std::uint8_t boolValue = 0;
  std::int32_t intValue = 0;
  float realValue = 0.0F;
  ORXString nameText;    // of a Name; of an Operator, its name
  ORXString stringText;  // of a String
  ObjectList procElements;
  PrintInputStream* fileSource = nullptr;  // of a File, borrowed
  ORXRawCollPV fileFilters;                // of a File: DecodeFilter pointers, borrowed
  ORXHashDico dictEntries{10};
  ObjectList arrayElements;
  std::uint32_t refCount = 1;
  const OperatorRow* operatorRow = nullptr;  // of an Operator: what it runs

  PSObject(const PSObject&) = delete;
  PSObject& operator=(const PSObject&) = delete;

  [[nodiscard]] bool Is(PSObjectType wanted) const noexcept { return type == wanted; }
  [[nodiscard]] bool IsNumber() const noexcept {
    return type == PSObjectType::Integer || type == PSObjectType::Real;
  }

  // A mark that ends what the operators collect above it.
  [[nodiscard]] bool IsMark() const noexcept { return type == PSObjectType::Mark && literal == 1; }

  void AddRef() noexcept { ++refCount; }
  // Gives up a reference; the last one destroys the object and what only it kept alive. However
  // deep the objects are nested, this uses a bounded amount of the machine stack.
  void Release() noexcept {
    if (--refCount == 0) Destroy();
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
  explicit PSObject(ObjectHeap& owner) noexcept : heap(owner) {}
  ~PSObject() = default;

  void Destroy() noexcept;
  void CopyValuesFrom(const PSObject& source) noexcept;
  void ShareEntriesOf(const PSObject& source);

  ObjectHeap& heap;
  PSObject* nextInHeap = nullptr;  // while the object is waiting for destruction or reuse
  std::size_t chargedBytes = 0;    // what the heap's budget counts beyond the record
};

// An owned reference to an object, or nothing. Move-only: a second owner is made with Retain.
class [[nodiscard]] PSRef {
public:
  PSRef() noexcept = default;
  PSRef(PSRef&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
  PSRef& operator=(PSRef&& other) noexcept {
    std::swap(object, other.object);
    return *this;
  }
  ~PSRef() {
    if (object) object->Release();
  }

  // Takes over a reference that the caller owns.
  static PSRef Adopt(PSObject* owned) noexcept { return PSRef(owned); }
  // Adds a reference to a borrowed object.
  static PSRef Retain(PSObject* borrowed) noexcept {
    if (borrowed) borrowed->AddRef();
    return PSRef(borrowed);
  }
  // Hands the reference to a container.
  [[nodiscard]] PSObject* Leak() noexcept { return std::exchange(object, nullptr); }

  [[nodiscard]] PSObject* Get() const noexcept { return object; }
  PSObject* operator->() const noexcept { return object; }
  PSObject& operator*() const noexcept { return *object; }
  explicit operator bool() const noexcept { return object != nullptr; }

private:
  explicit PSRef(PSObject* owned) noexcept : object(owned) {}

  PSObject* object = nullptr;
};

}  // namespace orxeps
