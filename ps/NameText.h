// The text of a name, shared by everything that bears it: one record for each text, so that equal
// names are one pointer.
//
// The record also remembers what the name stands for: the operator that bears it, and what the last
// look-up through the dictionary stack found. A look-up counts only while the record's generation
// is the heap's (ps/ObjectHeap.h); who enters or removes an entry under the name forgets it.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "host/ORXString.h"

namespace orxeps {

class PSObject;
struct OperatorRow;

// What a look-up found; borrowed, both null when the name is defined nowhere.
struct NameLookup {
  PSObject* value = nullptr;
  PSObject* dictionary = nullptr;
};

struct Name {
  ORXString text;
  std::uint32_t holders = 0;
  const OperatorRow* row = nullptr;  // the operator of this name, or null
  NameLookup found;
  std::uint64_t generation = 0;  // of the heap when `found` was looked up; 0: never

  void ForgetLookup() noexcept { generation = 0; }
};

// A counted hold on a name's record; empty for the empty text. Must not outlive the NameTable.
class NameText {
public:
  NameText() noexcept = default;
  explicit NameText(Name* record) noexcept : name(record) {
    if (name) ++name->holders;
  }
  NameText(const NameText& other) noexcept : NameText(other.name) {}
  NameText(NameText&& other) noexcept : name(std::exchange(other.name, nullptr)) {}
  ~NameText() { Clear(); }
  NameText& operator=(const NameText& other) noexcept {
    if (other.name) ++other.name->holders;
    Clear();
    name = other.name;
    return *this;
  }
  NameText& operator=(NameText&& other) noexcept {
    Name* taken = std::exchange(other.name, nullptr);
    Clear();
    name = taken;
    return *this;
  }

  [[nodiscard]] bool IsEmpty() const noexcept { return name == nullptr; }
  [[nodiscard]] Name* Record() const noexcept { return name; }
  [[nodiscard]] std::string_view View() const noexcept {
    return name ? name->text.View() : std::string_view();
  }
  [[nodiscard]] ORXString Text() const noexcept { return name ? name->text : ORXString(); }
  [[nodiscard]] std::size_t Length() const noexcept { return View().size(); }
  // The operator that bears this name, or null.
  [[nodiscard]] const OperatorRow* Row() const noexcept { return name ? name->row : nullptr; }
  void Clear() noexcept {
    if (name) --name->holders;
    name = nullptr;
  }

  friend bool operator==(const NameText&, const NameText&) noexcept = default;

private:
  Name* name = nullptr;
};

}  // namespace orxeps
