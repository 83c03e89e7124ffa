#include "ps/NameTable.h"

#include <utility>

#include "ps/Limits.h"

namespace orxeps {

namespace {

constexpr std::size_t kFirstSlots = 512;

std::size_t CostOf(const Name& name) noexcept { return kNameCost + name.text.Length(); }

}  // namespace

Name& NameTable::Make(std::string_view text, std::uint32_t hash) {
  if (count * 2 >= slots.size()) {
    DropUnused();
    // Growing only when the names in use fill a quarter keeps both rare.
    if (count * 4 >= slots.size()) Resize(slots.empty() ? kFirstSlots : slots.size() * 2);
  }
  auto name = std::make_unique<Name>();
  name->text = ORXString(text);
  Name& made = *name;
  if (!heap.HasRoomFor(CostOf(made))) DropUnused();
  heap.Charge(CostOf(made));
  ++count;
  Place({hash, std::move(name)});
  return made;
}

// REQUIRES: a free slot.
void NameTable::Place(Slot slot) noexcept {
  const std::size_t mask = slots.size() - 1;
  std::size_t place = slot.hash & mask;
  while (slots[place].name) place = (place + 1) & mask;
  slots[place] = std::move(slot);
}

void NameTable::Resize(std::size_t size) {
  std::vector<Slot> old(size);
  slots.swap(old);
  for (Slot& slot : old) {
    if (slot.name) Place(std::move(slot));
  }
}

void NameTable::DropUnused() noexcept {
  shortNames.fill({});
  bool dropped = false;
  for (Slot& slot : slots) {
    if (!slot.name || slot.name->holders > 0) continue;
    heap.Discharge(CostOf(*slot.name));
    --count;
    slot.name.reset();
    dropped = true;
  }
  if (!dropped) return;
  // The gaps would cut the probe paths of those that remain: take all out and put them back, each
  // run of occupied slots on its own, beginning behind a free one.
  const std::size_t mask = slots.size() - 1;
  std::size_t start = 0;
  while (slots[start].name) ++start;
  for (std::size_t step = 1; step <= slots.size(); ++step) {
    Slot& slot = slots[(start + step) & mask];
    if (slot.name) Place(std::exchange(slot, Slot{}));
  }
}

}  // namespace orxeps
