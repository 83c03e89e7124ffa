// One shared text for every name that the scanner meets, so that equal names are one pointer: most
// look-ups then compare no characters, and most names cost no allocation.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/ORXString.h"

namespace orxeps {

class NameTable {
public:
  // The string of this text. Very long texts are not kept in the table.
  [[nodiscard]] ORXString Intern(std::string_view text);

private:
  void Grow();
  [[nodiscard]] std::size_t PlaceOf(std::string_view text, std::uint32_t hash) const noexcept;

  std::vector<ORXString> slots;  // a power of two of them, at most half in use
  std::size_t count = 0;
};

}  // namespace orxeps
