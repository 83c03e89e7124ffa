// Every name of one interpreter, found by its text.
//
// Names that nobody holds any more are dropped when the table would have to grow and when a pass
// ends, so that a document which makes up names without end does not keep them.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "ps/NameText.h"
#include "ps/ObjectHeap.h"

namespace orxeps {

class NameTable {
public:
  // Names count in the heap's budget.
  explicit NameTable(ObjectHeap& accountingHeap) noexcept : heap(accountingHeap) {}
  NameTable(const NameTable&) = delete;
  NameTable& operator=(const NameTable&) = delete;
  ~NameTable() = default;

  // The name of this text, made if there is none yet. Throws LimitReached (VMerror) and
  // std::bad_alloc.
  [[nodiscard]] NameText Intern(std::string_view text) {
    if (text.empty()) return {};
    return NameText(&Find(text, ORXString::HashOf(text)));
  }
  // The same without a hold, for whoever is done with it before another name is made. Null for the
  // empty text.
  [[nodiscard]] Name* Borrow(std::string_view text) {
    return text.empty() ? nullptr : &Find(text, ORXString::HashOf(text));
  }
  // The name of this text if there is one, else null. Makes none.
  [[nodiscard]] Name* FindIfThere(const ORXString& text) const noexcept {
    return Search(text.View(), text.Hash());
  }
  // What look-ups of the empty text remember.
  [[nodiscard]] Name& Empty() noexcept { return emptyName; }

  // Drops the names that nobody holds.
  void DropUnused() noexcept;
  [[nodiscard]] std::size_t Count() const noexcept { return count; }

private:
  struct Slot {
    std::uint32_t hash = 0;
    std::unique_ptr<Name> name;  // none: the slot is free
  };

  Name* Search(std::string_view text, std::uint32_t hash) const noexcept {
    if (slots.empty()) return nullptr;
    const std::size_t mask = slots.size() - 1;
    for (std::size_t place = hash & mask; slots[place].name; place = (place + 1) & mask) {
      const Slot& slot = slots[place];
      if (slot.hash == hash && slot.name->text.View() == text) return slot.name.get();
    }
    return nullptr;
  }
  Name& Find(std::string_view text, std::uint32_t hash) {
    Name* name = Search(text, hash);
    return name ? *name : Make(text, hash);
  }
  Name& Make(std::string_view text, std::uint32_t hash);
  void Resize(std::size_t size);
  void Place(Slot slot) noexcept;

  std::vector<Slot> slots;  // a power of two of them, at most half in use
  std::size_t count = 0;
  ObjectHeap& heap;
  Name emptyName;
};

}  // namespace orxeps
