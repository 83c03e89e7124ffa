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
PSRef PSObject::CloneWithoutEntries() const {
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
  return clone;
}

PSRef PSObject::Clone() const {
  PSRef clone = CloneWithoutEntries();
  clone->ShareEntriesOf(*this);
  heap.UpdateCharge(*clone);
  return clone;
}

void PSObject::AssignFrom(const PSObject& source) {
  if (HasElements(source)) {
    const PSRef copy = source.CloneWithoutEntries();
    arrayElements.Reserve(copy->arrayElements.Count());
    procElements.Reserve(copy->procElements.Count());
    for (ObjectList PSObject::*list : {&PSObject::arrayElements, &PSObject::procElements}) {
      ObjectList& elements = (*copy).*list;
      for (std::int32_t i = 1; i <= elements.Count(); ++i) (this->*list).Append(elements.At(i));
      elements.RemoveAll();
    }
  }
  if (&source == this) return heap.UpdateCharge(*this);
  const PSRef alive = PSRef::Retain(this);
  if (dictEntries.Count() > 0 || source.dictEntries.Count() > 0) ShareEntriesOf(source);
  CopyValuesFrom(source);
  heap.UpdateCharge(*this);
}

}  // namespace orxeps
