// A list of object pointers with positions from 1: the elements of arrays and procedures, and the
// dictionary stack. The list neither adds nor releases references; its owner does.
#pragma once

#include <cstdint>

#include "host/ORXRawCollPV.h"

namespace orxeps {

class PSObject;

class ObjectList {
public:
  [[nodiscard]] std::int32_t Count() const noexcept { return pointers.Count(); }
  [[nodiscard]] bool IsEmpty() const noexcept { return Count() == 0; }
  // REQUIRES: 1 <= position <= Count().
  [[nodiscard]] PSObject* At(std::int32_t position) const noexcept {
    return static_cast<PSObject*>(pointers.At(position));
  }
  void SetAt(std::int32_t position, PSObject* object) noexcept { pointers.SetAt(position, object); }
  // Null when the list is empty.
  [[nodiscard]] PSObject* First() const noexcept { return IsEmpty() ? nullptr : At(1); }
  [[nodiscard]] PSObject* Last() const noexcept { return IsEmpty() ? nullptr : At(Count()); }

  void Append(PSObject* object) { pointers.Append(object); }
  void InsertFirst(PSObject* object) { pointers.InsertFirst(object); }
  // REQUIRES: the list is not empty, here and below.
  void RemoveFirst() noexcept { pointers.RemoveFirst(); }
  void RemoveLast() noexcept { pointers.RemoveLast(); }
  void RemoveAll() noexcept { pointers.RemoveAll(); }
  // Makes room for `count` more objects; appending them then cannot fail.
  void Reserve(std::int32_t count) { pointers.Reserve(static_cast<std::size_t>(count)); }

private:
  ORXRawCollPV pointers;
};

}  // namespace orxeps
