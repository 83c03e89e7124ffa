#include "ps/ObjectHeap.h"

#include <new>
#include <span>

namespace orxeps {

namespace {

constexpr std::size_t kRecordsPerSlab = 256;

}  // namespace

struct ObjectHeap::Slab {
  alignas(PSObject) std::byte memory[kRecordsPerSlab * sizeof(PSObject)];

  std::span<PSObject> Records() noexcept {
    return {std::launder(reinterpret_cast<PSObject*>(memory)), kRecordsPerSlab};
  }
};

ObjectHeap::ObjectHeap() noexcept = default;

void ObjectHeap::AddSlab() {
  slabs.push_back(std::make_unique_for_overwrite<Slab>());
  std::byte* place = slabs.back()->memory;
  for (std::size_t i = 0; i < kRecordsPerSlab; ++i, place += sizeof(PSObject)) {
    ReturnToFreeList(new (place) PSObject(*this));
  }
}

ObjectHeap::~ObjectHeap() {
  // The records' own members free what they own and follow no pointer to another record.
  for (const auto& slab : slabs) {
    UnpoisonMemory(slab->memory, sizeof slab->memory);
    for (PSObject& record : slab->Records()) record.~PSObject();
  }
}

std::size_t ObjectHeap::BytesBeyondRecord(const PSObject& object) noexcept {
  const auto elements = static_cast<std::size_t>(object.arrayElements.Count()) +
                        static_cast<std::size_t>(object.procElements.Count());
  // A text counts for every object that holds it: any of them may be the one that keeps it.
  return elements * sizeof(PSObject*) + object.dictEntries.ByteCount() + object.stringText.Length();
}

void ObjectHeap::ReturnToFreeList(PSObject* object) noexcept {
  object->refCount = 0;
  object->nextInHeap = freeList;
  freeList = object;
  PoisonMemory(object, sizeof(PSObject));
}

// Called when the last reference to an object is gone. Objects that lose their last reference on
// the way wait in a list instead of being destroyed inside each other.
void ObjectHeap::Destroy(PSObject* object) noexcept {
  object->nextInHeap = nullptr;
  condemned = object;
  while (condemned) {
    PSObject* next = condemned;
    condemned = next->nextInHeap;
    ReleaseContents(*next);
    --liveCount;
    liveBytes -= sizeof(PSObject) + next->chargedBytes;
    next->chargedBytes = 0;
    ReturnToFreeList(next);
  }
}

void ObjectHeap::ReleaseLater(PSObject* object) noexcept {
  if (--object->refCount > 0) return;
  object->nextInHeap = condemned;
  condemned = object;
}

void ObjectHeap::ReleaseContents(PSObject& object) noexcept {
  if (object.dictEntries.Count() > 0) {
    for (ORXHashCodeIter entry(object.dictEntries); !entry.AtEnd(); entry.Next()) {
      auto* value = static_cast<PSObject*>(entry.Value());
      if (value != &object) ReleaseLater(value);
    }
  }
  object.dictEntries.RemoveAll();
  for (ObjectList* elements : {&object.arrayElements, &object.procElements}) {
    for (std::int32_t i = 1; i <= elements->Count(); ++i) ReleaseLater(elements->At(i));
    elements->RemoveAll();
  }
  object.fileFilters.RemoveAll();
  object.fileSource = nullptr;
  object.nameText.Clear();
  object.stringText.Clear();
  object.literal = 1;
  object.type = PSObjectType::None;
  object.boolValue = 0;
  object.intValue = 0;
  object.realValue = 0.0F;
  object.operatorRow = nullptr;
}

}  // namespace orxeps
