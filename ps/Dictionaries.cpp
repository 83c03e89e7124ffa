#include "ps/Dictionaries.h"

#include "ps/ObjectHeap.h"

namespace orxeps {

void DictInsert(ObjectHeap& heap, PSObject& dictionary, const ORXString& key, PSRef value) {
  PSObject* stored = value.Get();
  PSRef replaced;
  if (auto* old = static_cast<PSObject*>(dictionary.dictEntries.Insert(key, stored));
      old != &dictionary) {
    replaced = PSRef::Adopt(old);
  }
  if (stored != &dictionary) static_cast<void>(value.Leak());
  heap.UpdateCharge(dictionary);
}

PSRef DictRemove(PSObject& dictionary, const ORXString& key) noexcept {
  auto* removed = static_cast<PSObject*>(dictionary.dictEntries.Remove(key));
  return removed == &dictionary ? PSRef() : PSRef::Adopt(removed);
}

}  // namespace orxeps
