#include "ps/PSObject.h"

#include <vector>

#include "ps/ObjectHeap.h"

namespace orxeps {

void PSObject::Destroy() noexcept { heap.Destroy(this); }

void PSObject::CopyValuesFrom(const PSObject& source) noexcept {
  literal = source.literal;
  type = source.type;
  boolValue = source.boolValue;
  intValue = source.intValue;
  realValue = source.realValue;
  nameText = source.nameText;
  stringText = source.stringText;
  fileSource = source.fileSource;
  operatorRow = source.operatorRow;
}

// Replaces the dictionary by a table of the same values. An entry for this object itself holds no
// reference.
void PSObject::ShareEntriesOf(const PSObject& source) {
  ORXHashDico entries = source.dictEntries;
  for (ORXHashCodeIter entry(entries); !entry.AtEnd(); entry.Next()) {
    auto* value = static_cast<PSObject*>(entry.Value());
    if (value != this) value->AddRef();
  }
  std::swap(dictEntries, entries);
  for (ORXHashCodeIter entry(entries); !entry.AtEnd(); entry.Next()) {
    auto* value = static_cast<PSObject*>(entry.Value());
    if (value != this) value->Release();
  }
}

namespace {

struct PendingCopy {
  const PSObject* source;
  PSObject* copy;
};

bool HasElements(const PSObject& object) noexcept {
  return !object.arrayElements.IsEmpty() || !object.procElements.IsEmpty();
}

}  // namespace

// Copies level by level: what still has elements to copy waits in a list, so nesting costs no
// machine stack.
PSRef PSObject::Clone() const {
  PSRef clone = heap.Make();
  clone->CopyValuesFrom(*this);
  std::vector<PendingCopy> pending;
  if (HasElements(*this)) pending.push_back({this, clone.Get()});
  std::size_t made = 0;
  while (!pending.empty()) {
    const PendingCopy next = pending.back();
    pending.pop_back();
    for (ObjectList PSObject::*list : {&PSObject::arrayElements, &PSObject::procElements}) {
      const ObjectList& from = next.source->*list;
      ObjectList& to = next.copy->*list;
      if (from.IsEmpty()) continue;
      to.Reserve(from.Count());
      for (std::int32_t i = 1; i <= from.Count(); ++i) {
        if (++made > kMaxClonedElements) throw LimitReached{"limitcheck"};
        const PSObject* element = from.At(i);
        to.Append(heap.Make().Leak());
        PSObject* copy = to.Last();
        copy->CopyValuesFrom(*element);
        if (element->dictEntries.Count() > 0) copy->ShareEntriesOf(*element);
        heap.UpdateCharge(*copy);
        if (HasElements(*element)) pending.push_back({element, copy});
      }
    }
    heap.UpdateCharge(*next.copy);
  }
  clone->ShareEntriesOf(*this);
  heap.UpdateCharge(*clone);
  return clone;
}

// The values come first: where the source holds this object as an element, what is copied of it is
// already what it has become.
void PSObject::AssignFrom(const PSObject& source) {
  const PSRef alive = PSRef::Retain(this);
  if (&source != this) CopyValuesFrom(source);
  if (IsMark()) heap.NoteMarkWritten();
  for (ObjectList PSObject::*list : {&PSObject::arrayElements, &PSObject::procElements}) {
    const std::int32_t count = (source.*list).Count();
    if (count == 0) continue;
    (this->*list).Reserve(count);
    for (std::int32_t i = 1; i <= count; ++i) {
      (this->*list).Append((source.*list).At(i)->Clone().Leak());
    }
    heap.UpdateCharge(*this);
  }
  if (&source != this && (dictEntries.Count() > 0 || source.dictEntries.Count() > 0)) {
    ShareEntriesOf(source);
  }
  heap.UpdateCharge(*this);
}

}  // namespace orxeps
