// The foundation library's hash table from text to pointer, and the iterator over its values. The
// table never looks at what its pointers point to, and owns none of it; a value is never null.
//
// A table is one pointer wide and allocates nothing while it is empty. It probes linearly, keeps
// itself at most three quarters full, closes the gap when an entry is removed, and shrinks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "host/ORXUnicodeString.h"

class ORXHashDico {
public:
  // The size is a hint of how many entries will come; nothing is allocated before the first.
  constexpr ORXHashDico() noexcept = default;
  explicit ORXHashDico(unsigned /*size*/) noexcept {}
  ORXHashDico(const ORXHashDico& other)
      : table(other.Count() ? std::make_unique<Table>(*other.table) : nullptr) {}
  ORXHashDico(ORXHashDico&&) noexcept = default;
  ~ORXHashDico() = default;
  ORXHashDico& operator=(const ORXHashDico& other) {
    if (this != &other) *this = ORXHashDico(other);
    return *this;
  }
  ORXHashDico& operator=(ORXHashDico&&) noexcept = default;

  [[nodiscard]] std::int32_t Count() const noexcept {
    return table ? static_cast<std::int32_t>(table->count) : 0;
  }
  // The entries that the table has room for; 0 while it has none.
  [[nodiscard]] std::size_t Capacity() const noexcept { return table ? table->capacity : 0; }
  // The value under exactly this text, or null.
  [[nodiscard]] void* Locate(const ORXUnicodeString& key) const noexcept {
    return Locate(key.Bytes());
  }
  // The same for the text that a byte string makes.
  [[nodiscard]] void* Locate(const ORXString& key) const noexcept {
    return table ? table->slots[table->Find(key)].value : nullptr;
  }
  // Enters a value. A value that is already there under the key is replaced and returned; null
  // when the key is new. Throws std::bad_alloc and changes nothing when memory runs out.
  void* Insert(const ORXUnicodeString& key, void* value) {
    if (!table) table = std::make_unique<Table>(kFirstCapacity);
    std::size_t place = table->Find(key.Bytes());
    if (table->slots[place].value) return std::exchange(table->slots[place].value, value);
    if ((table->count + 1) * 4 > table->capacity * 3) {
      table = std::make_unique<Table>(std::move(*table), table->capacity * 2);
      place = table->Find(key.Bytes());
    }
    table->slots[place] = {key.Hash(), key, value};
    ++table->count;
    return nullptr;
  }
  // Takes an entry out and returns its value, or null when there is none.
  void* Remove(const ORXUnicodeString& key) noexcept {
    if (!table) return nullptr;
    const std::size_t place = table->Find(key.Bytes());
    void* value = table->slots[place].value;
    if (!value) return nullptr;
    table->Erase(place);
    if (table->count * 8 < table->capacity && table->capacity > kFirstCapacity) Shrink();
    return value;
  }
  void RemoveAll() noexcept { table.reset(); }

private:
  friend class ORXHashCodeIter;

  static constexpr std::size_t kFirstCapacity = 16;

  struct Slot {
    std::uint32_t hash = 0;
    ORXUnicodeString key;
    void* value = nullptr;  // null: the slot is free
  };

  struct Table {
    explicit Table(std::size_t slotCount)
        : capacity(slotCount), slots(std::make_unique<Slot[]>(slotCount)) {}
    // A copy is as small as its entries allow, whatever the other has held before.
    Table(const Table& other) : Table(CapacityFor(other.count)) {
      for (std::size_t i = 0; i < other.capacity; ++i) {
        if (other.slots[i].value) Place(Slot(other.slots[i]));
      }
    }
    Table(Table&& other, std::size_t slotCount) : Table(slotCount) {
      for (std::size_t i = 0; i < other.capacity; ++i) {
        if (other.slots[i].value) Place(std::move(other.slots[i]));
      }
    }

    static std::size_t CapacityFor(std::size_t count) noexcept {
      std::size_t capacity = kFirstCapacity;
      while (count * 4 > capacity * 3) capacity *= 2;
      return capacity;
    }

    // Puts an entry whose key is not in the table yet into a free slot.
    void Place(Slot entry) noexcept {
      std::size_t place = entry.hash & (capacity - 1);
      while (slots[place].value) place = (place + 1) & (capacity - 1);
      slots[place] = std::move(entry);
      ++count;
    }

    // The slot that holds the key, or the free slot where it belongs.
    [[nodiscard]] std::size_t Find(const ORXString& key) const noexcept {
      const std::uint32_t hash = key.Hash();
      std::size_t place = hash & (capacity - 1);
      while (slots[place].value &&
             !(slots[place].hash == hash && slots[place].key.Bytes() == key)) {
        place = (place + 1) & (capacity - 1);
      }
      return place;
    }

    void Erase(std::size_t gap) noexcept {
      const std::size_t mask = capacity - 1;
      for (std::size_t next = (gap + 1) & mask; slots[next].value; next = (next + 1) & mask) {
        const std::size_t home = slots[next].hash & mask;
        // An entry may move back into the gap only if the gap lies on its probe path.
        if (((next - home) & mask) < ((next - gap) & mask)) continue;
        slots[gap] = std::move(slots[next]);
        slots[next].value = nullptr;
        gap = next;
      }
      slots[gap] = Slot{};
      --count;
    }

    std::size_t capacity;  // a power of two
    std::size_t count = 0;
    std::unique_ptr<Slot[]> slots;
  };

  // A table that has become nearly empty costs as much to copy as a full one. Without the memory
  // for a smaller one it stays.
  void Shrink() noexcept try {
    table = std::make_unique<Table>(std::move(*table), Table::CapacityFor(table->count * 2));
  } catch (const std::bad_alloc&) {
    return;
  }

  std::unique_ptr<Table> table;
};

// Visits every value of a table once, in no particular order. The table must not change meanwhile.
class ORXHashCodeIter {
public:
  explicit ORXHashCodeIter(const ORXHashDico& dictionary) noexcept : table(dictionary.table.get()) {
    Begin();
  }
  void Begin() noexcept {
    place = 0;
    SkipFreeSlots();
  }
  [[nodiscard]] bool AtEnd() const noexcept { return !table || place == table->capacity; }
  // REQUIRES: !AtEnd(), here and below.
  [[nodiscard]] void* Value() const noexcept { return table->slots[place].value; }
  [[nodiscard]] const ORXUnicodeString& Key() const noexcept { return table->slots[place].key; }
  void Next() noexcept {
    ++place;
    SkipFreeSlots();
  }

private:
  void SkipFreeSlots() noexcept {
    while (table && place < table->capacity && !table->slots[place].value) ++place;
  }

  const ORXHashDico::Table* table;
  std::size_t place = 0;
};
