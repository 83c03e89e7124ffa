#include "ps/NameTable.h"

namespace orxeps {

namespace {

constexpr std::size_t kFirstSlots = 512;
constexpr std::size_t kLongestKept = 128;

}  // namespace

ORXString NameTable::Intern(std::string_view text) {
  if (text.empty() || text.size() > kLongestKept) return ORXString(text);
  if (count * 2 >= slots.size()) Grow();
  ORXString& slot = slots[PlaceOf(text, ORXString::HashOf(text))];
  if (slot.IsEmpty()) {
    slot = ORXString(text);
    ++count;
  }
  return slot;
}

// The slot that holds the text, or the free one where it belongs.
std::size_t NameTable::PlaceOf(std::string_view text, std::uint32_t hash) const noexcept {
  const std::size_t mask = slots.size() - 1;
  std::size_t place = hash & mask;
  while (!slots[place].IsEmpty() && !(slots[place].Hash() == hash && slots[place].View() == text)) {
    place = (place + 1) & mask;
  }
  return place;
}

void NameTable::Grow() {
  std::vector<ORXString> old(slots.empty() ? kFirstSlots : slots.size() * 2);
  slots.swap(old);
  for (ORXString& name : old) {
    if (!name.IsEmpty()) slots[PlaceOf(name.View(), name.Hash())] = std::move(name);
  }
}

}  // namespace orxeps
