// A list of objects with positions from 1: the elements of arrays and procedures, and the
// dictionary stack. Every entry owns one reference.
//
// A list does not release what it still holds when it is destroyed: objects that hold each other
// must not be destroyed inside each other, so the heap drains the lists of an object that dies, and
// the machine those of its stacks.
#pragma once

#include <cstdint>

#include "host/ORXRawCollPV.h"
#include "ps/PSRef.h"

namespace orxeps {

class ObjectList {
public:
  [[nodiscard]] std::int32_t Count() const noexcept { return pointers.Count(); }
  [[nodiscard]] bool IsEmpty() const noexcept { return Count() == 0; }
  // Borrowed. REQUIRES: 1 <= position <= Count().
  [[nodiscard]] PSObject* At(std::int32_t position) const noexcept {
    return static_cast<PSObject*>(pointers.At(position));
  }
  // Borrowed; null when the list is empty.
  [[nodiscard]] PSObject* Last() const noexcept { return IsEmpty() ? nullptr : At(Count()); }

  // Throws std::bad_alloc, and the object is then released.
  void Append(PSRef object) {
    pointers.Append(object.Get());
    static_cast<void>(object.Leak());
  }
  // Puts an object in the place of another, which is handed back. REQUIRES: as At.
  PSRef Replace(std::int32_t position, PSRef object) noexcept {
    PSRef replaced = PSRef::Adopt(At(position));
    pointers.SetAt(position, object.Leak());
    return replaced;
  }
  // REQUIRES: the list is not empty.
  [[nodiscard]] PSRef TakeLast() noexcept {
    PSRef last = PSRef::Adopt(Last());
    pointers.RemoveLast();
    return last;
  }
  // Hands every reference to `take`, the first first, and leaves the list empty.
  template <typename Taker>
  void Drain(Taker take) noexcept {
    for (std::int32_t i = 1; i <= Count(); ++i) take(At(i));
    pointers.RemoveAll();
  }
  // Makes room for `count` more objects; appending them then cannot fail.
  void Reserve(std::int32_t count) { pointers.Reserve(static_cast<std::size_t>(count)); }

private:
  ORXRawCollPV pointers;
};

}  // namespace orxeps
