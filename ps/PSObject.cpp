#include "ps/PSObject.h"

#include <vector>

#include "ps/ObjectHeap.h"

namespace orxeps {

void PSObject::Destroy() noexcept { Heap().Destroy(this); }

void PSObject::MakeParts() { parts = Heap().MakeParts(); }

void PSObject::CopyValuesFrom(const PSObject& source) {
  const PSParts& from = source.Parts();
  if (parts || !from.stringText.IsEmpty() || from.fileSource) {
    PSParts& to = OwnParts();
    to.stringText = from.stringText;
    to.fileSource = from.fileSource;
  }
  literal = source.literal;
  type = source.type;
  boolValue = source.boolValue;
  intValue = source.intValue;
  realValue = source.realValue;
  nameText = source.nameText;
}

// Replaces the dictionary by a table of the same values. An entry for this object itself holds no
// reference.
void PSObject::ShareEntriesOf(const PSObject& source) {
  ORXHashDico entries = source.Parts().dictEntries;
  PSParts& own = OwnParts();
  for (ORXHashCodeIter entry(entries); !entry.AtEnd(); entry.Next()) {
    auto* value = static_cast<PSObject*>(entry.Value());
    if (value != this) value->AddRef();
  }
  std::swap(own.dictEntries, entries);
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

constexpr ObjectList PSParts::*kElementLists[] = {&PSParts::arrayElements, &PSParts::procElements};

bool HasElements(const PSObject& object) noexcept {
  return !object.Parts().arrayElements.IsEmpty() || !object.Parts().procElements.IsEmpty();
}

bool HasEntries(const PSObject& object) noexcept { return object.Parts().dictEntries.Count() > 0; }

}  // namespace

// Copies level by level: what still has elements to copy waits in a list, so nesting costs no
// machine stack.
PSRef PSObject::Clone() const {
  ObjectHeap& heap = Heap();
  PSRef clone = heap.Make();
  clone->CopyValuesFrom(*this);
  std::vector<PendingCopy> pending;
  if (HasElements(*this)) pending.push_back({this, clone.Get()});
  std::size_t made = 0;
  while (!pending.empty()) {
    const PendingCopy next = pending.back();
    pending.pop_back();
    for (ObjectList PSParts::*list : kElementLists) {
      const ObjectList& from = next.source->Parts().*list;
      if (from.IsEmpty()) continue;
      ObjectList& to = next.copy->OwnParts().*list;
      to.Reserve(from.Count());
      for (std::int32_t i = 1; i <= from.Count(); ++i) {
        if (++made > kMaxClonedElements) throw LimitReached{"limitcheck"};
        const PSObject* element = from.At(i);
        to.Append(heap.Make());
        PSObject* copy = to.Last();
        copy->CopyValuesFrom(*element);
        if (HasEntries(*element)) copy->ShareEntriesOf(*element);
        heap.UpdateCharge(*copy);
        if (HasElements(*element)) pending.push_back({element, copy});
      }
    }
    next.copy->OwnParts().definedAt = next.source->Parts().definedAt;
    heap.UpdateCharge(*next.copy);
  }
  if (HasEntries(*this)) clone->ShareEntriesOf(*this);
  heap.UpdateCharge(*clone);
  return clone;
}

// The values come first: where the source holds this object as an element, what is copied of it is
// already what it has become.
void PSObject::AssignFrom(const PSObject& source) {
  ObjectHeap& heap = Heap();
  const PSRef alive = PSRef::Retain(this);
  if (Is(PSObjectType::Dictionary) || source.Is(PSObjectType::Dictionary) || HasEntries(*this)) {
    heap.ForgetLookups();
    heap.NoteLoss(*this);
  }
  if (&source != this) CopyValuesFrom(source);
  // What only one holder has, an array, say, is not on the operand stack.
  if (IsMark() && refCount > 2) heap.NoteMarkWritten();
  for (ObjectList PSParts::*list : kElementLists) {
    const std::int32_t count = (source.Parts().*list).Count();
    if (count == 0) continue;
    ObjectList& own = OwnParts().*list;
    own.Reserve(count);
    for (std::int32_t i = 1; i <= count; ++i) own.Append((source.Parts().*list).At(i)->Clone());
    heap.UpdateCharge(*this);
  }
  if (&source != this && (HasEntries(*this) || HasEntries(source))) ShareEntriesOf(source);
  heap.UpdateCharge(*this);
}

}  // namespace orxeps
