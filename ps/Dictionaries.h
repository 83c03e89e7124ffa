// The operations through which every dictionary is read and changed.
//
// A dictionary never owns a reference to itself: storing it into itself gives the reference up, and
// replacing or removing such an entry releases nothing. Entering and removing make the name forget
// where it was found last.
#pragma once

#include "host/ORXHashDico.h"
#include "host/ORXString.h"
#include "ps/ObjectHeap.h"
#include "ps/PSObject.h"

namespace orxeps {

// The value under a key, borrowed, or null.
[[nodiscard]] inline PSObject* DictLocate(const ORXHashDico& entries,
                                          const ORXString& key) noexcept {
  return static_cast<PSObject*>(entries.Locate(key));
}

// Enters a value under a key; a value that was there is replaced and released. The value's
// reference moves in. Throws LimitReached (VMerror) when the memory budget is used up.
void DictInsert(ObjectHeap& heap, PSObject& dictionary, const NameText& key, PSRef value);

// Takes an entry out and hands its reference to the caller: nothing when there is no such entry or
// its value is the dictionary itself.
PSRef DictRemove(ObjectHeap& heap, PSObject& dictionary, const NameText& key) noexcept;

}  // namespace orxeps
