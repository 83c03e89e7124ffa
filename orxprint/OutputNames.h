// The names of the files that drawings go to.
//
// Pure functions on text: where a name's ending is, and where a page number goes. What a name means
// to the file system is for OutputFile.h and Outputs.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orxprint {

// The place of a file name's ending: of its last dot, or of its end when there is none.
[[nodiscard]] std::size_t EndingPosition(std::string_view fileName);

// Whether the name says where the page number goes: a "%d", or "%03d" for leading zeros.
[[nodiscard]] bool HasNumberPlace(std::string_view fileName);
// The name for one page: the number in its place, or else before the ending as in "name-2.svg".
[[nodiscard]] std::string NumberedName(std::string_view fileName, std::uint32_t page);

}  // namespace orxprint
