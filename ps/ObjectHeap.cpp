#include "ps/ObjectHeap.h"

#include <new>

namespace orxeps {

namespace {

// Every table keeps a fixed number of bytes a slot, whatever the platform.
constexpr std::size_t kSlotCost = 24;
constexpr std::size_t kElementCost = 8;

std::size_t CostOf(const PSParts& parts) noexcept {
  const std::size_t elements = parts.arrayElements.Capacity() + parts.procElements.Capacity();
  // A text counts for every object that holds it: any of them may be the one that keeps it.
  return elements * kElementCost + parts.dictEntries.Capacity() * kSlotCost +
         parts.stringText.Length();
}

}  // namespace

constinit const NoParts kNoParts;

void ObjectHeap::AddSlab() {
  auto* memory = static_cast<std::byte*>(
      ::operator new (PSObject::kSlabBytes, std::align_val_t{PSObject::kSlabBytes}));
  new (memory) PSObject::SlabHeader{this, slabs};
  slabs = memory;
  for (std::size_t place = PSObject::kSlabBytes; place > PSObject::FirstRecord();) {
    place -= sizeof(PSObject);
    auto* record = new (memory + place) PSObject();
    record->nextInHeap = freeList;
    freeList = record;
    PoisonMemory(record, sizeof(PSObject));
  }
}

ObjectHeap::~ObjectHeap() {
  while (slabs) {
    auto* memory = static_cast<std::byte*>(slabs);
    UnpoisonMemory(memory, PSObject::kSlabBytes);
    slabs = reinterpret_cast<PSObject::SlabHeader*>(memory)->nextSlab;
    // A part's own members free what they own and follow no pointer to a record.
    for (std::size_t place = PSObject::kSlabBytes; place > PSObject::FirstRecord();) {
      place -= sizeof(PSObject);
      delete reinterpret_cast<PSObject*>(memory + place)->parts;
    }
    ::operator delete (memory, std::align_val_t{PSObject::kSlabBytes});
  }
}

void ObjectHeap::UpdateCharge(PSObject& object) {
  if (!object.parts) return;
  const std::size_t bytes = kPartsCost + CostOf(*object.parts);
  budget.used = budget.used - object.parts->chargedBytes + bytes;
  object.parts->chargedBytes = bytes;
  if (budget.used > budget.most) throw LimitReached{"VMerror"};
}

PSParts* ObjectHeap::MakeParts() {
  budget.Take(kPartsCost);
  auto* parts = new (std::nothrow) PSParts;
  if (!parts) {
    budget.Give(kPartsCost);
    throw std::bad_alloc();
  }
  parts->chargedBytes = kPartsCost;
  return parts;
}

// Called when the last reference to an object is gone. Objects that lose their last reference on
// the way wait in a list instead of being destroyed inside each other.
void ObjectHeap::Destroy(PSObject* object) noexcept {
  Condemn(object);
  while (condemned) {
    PSObject* next = condemned;
    condemned = next->nextInHeap;
    if (next->parts) ReleaseParts(*next);
    next->ReturnTo(*this);
  }
}

// The name goes at once, because the list passes through its place.
void ObjectHeap::Condemn(PSObject* object) noexcept {
  object->nameText.Clear();
  object->nextInHeap = condemned;
  condemned = object;
}

void ObjectHeap::ReleaseLater(PSObject* object) noexcept {
  if (--object->refCount == 0) Condemn(object);
}

void ObjectHeap::ReleaseParts(PSObject& object) noexcept {
  PSParts& parts = *object.parts;
  for (ORXHashCodeIter entry(parts.dictEntries); !entry.AtEnd(); entry.Next()) {
    auto* value = static_cast<PSObject*>(entry.Value());
    if (value != &object) ReleaseLater(value);
  }
  const auto releaseLater = [this](PSObject* element) { ReleaseLater(element); };
  parts.arrayElements.Drain(releaseLater);
  parts.procElements.Drain(releaseLater);
  budget.Give(parts.chargedBytes);
  delete object.parts;
  object.parts = nullptr;
}

}  // namespace orxeps
