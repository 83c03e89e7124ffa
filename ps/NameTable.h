// Every name of one interpreter, found by its text.
//
// Names that nobody holds any more are dropped when the table would have to grow and when a pass
// ends, so that a document which makes up names without end does not keep them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "ps/MemoryBudget.h"
#include "ps/NameText.h"

namespace orxeps {

class NameTable {
public:
  // Names count in a budget, which is borrowed.
  explicit NameTable(MemoryBudget& memoryBudget) noexcept : budget(memoryBudget) {}
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
    if (text.empty()) return nullptr;
    if (text.size() > kShortText) return &Find(text, ORXString::HashOf(text));
    const std::uint64_t word = Packed(text);
    ShortName& place = shortNames[(word * 0x9E3779B97F4A7C15U) >> 56];
    if (place.word != word || place.length != text.size()) {
      place = {word, text.size(), &Find(text, ORXString::HashOf(text))};
    }
    return place.name;
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
  static constexpr std::size_t kShortText = 8;

  // Where short texts that were asked for lately were found.
  struct ShortName {
    std::uint64_t word = 0;
    std::size_t length = 0;
    Name* name = nullptr;
  };

  // The bytes of a text of 1 to 8 in one word.
  static std::uint64_t Packed(std::string_view text) noexcept {
    const auto byteAt = [text](std::size_t i) {
      return std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
    };
    const std::size_t length = text.size();
    if (length < 4) return byteAt(0) | byteAt(length / 2) | byteAt(length - 1);
    std::uint32_t head = 0;
    std::uint32_t tail = 0;
    std::memcpy(&head, text.data(), 4);
    std::memcpy(&tail, text.data() + length - 4, 4);
    return head | std::uint64_t{tail} << (8 * (length - 4));
  }

  struct Slot {
    std::uint32_t hash = 0;
    std::unique_ptr<Name> name;  // none: the slot is free
  };

  [[nodiscard]] Name* Search(std::string_view text, std::uint32_t hash) const noexcept {
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
  std::array<ShortName, 256> shortNames;
  std::size_t count = 0;
  MemoryBudget& budget;
  Name emptyName;
};

}  // namespace orxeps
