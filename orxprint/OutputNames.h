// Where the drawings go: formats and the names of files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orxprint {

enum class Format { Svg, Pdf, Png, None };

// "svg", "pdf", "png" or "none", in any case.
[[nodiscard]] std::optional<Format> ParseFormat(std::string_view text);
// The format that a file's ending stands for.
[[nodiscard]] std::optional<Format> FormatOfName(std::string_view fileName);
// The ending with its dot. REQUIRES: the format writes files.
[[nodiscard]] std::string_view EndingOf(Format format);

// Whether the name says where the page number goes: a "%d", or "%03d" for leading zeros.
[[nodiscard]] bool HasNumberPlace(std::string_view fileName);
// The name for one page: the number in its place, or else before the ending as in "name-2.svg".
[[nodiscard]] std::string NumberedName(std::string_view fileName, std::uint32_t page);

}  // namespace orxprint
