#include "ps/Dictionaries.h"

namespace orxeps {

namespace {

// The empty text has no record to tell.
void ForgetLookup(ObjectHeap& heap, const NameText& key) noexcept {
  if (key.IsEmpty()) {
    heap.ForgetLookups();
  } else {
    key.Record()->ForgetLookup();
  }
}

}  // namespace

void DictInsert(ObjectHeap& heap, PSObject& dictionary, const NameText& key, PSRef value) {
  PSObject* stored = value.Get();
  heap.NoteKey(key.Text());
  ORXHashDico& entries = dictionary.OwnParts().dictEntries;
  const std::size_t capacity = entries.Capacity();
  PSRef replaced;
  if (auto* old = static_cast<PSObject*>(entries.Insert(key.Text(), stored)); old != &dictionary) {
    replaced = PSRef::Adopt(old);
  }
  ForgetLookup(heap, key);
  if (stored != &dictionary) static_cast<void>(value.Leak());
  if (entries.Capacity() != capacity) heap.UpdateCharge(dictionary);
}

PSRef DictRemove(ObjectHeap& heap, PSObject& dictionary, const NameText& key) noexcept {
  if (dictionary.Parts().dictEntries.Count() == 0) return {};
  // With entries there are parts, so this cannot fail.
  auto* removed =
      static_cast<PSObject*>(dictionary.OwnParts().dictEntries.Remove(ORXString(key.Text())));
  ForgetLookup(heap, key);
  heap.NoteLoss(dictionary);
  return removed == &dictionary ? PSRef() : PSRef::Adopt(removed);
}

}  // namespace orxeps
