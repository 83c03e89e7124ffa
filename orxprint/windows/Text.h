// Windows' own texts and errors, seen as the rest of the program has them.
//
// The files of this folder are the only ones that meet texts of 16-bit units.
#pragma once

#include <string>
#include <string_view>

namespace orxprint {

// What is not valid becomes a replacement character.
[[nodiscard]] std::wstring WideText(std::string_view utf8);
[[nodiscard]] std::string Utf8Text(std::wstring_view wide);

// The errno value of the last error of a call of the system. Also sets errno.
int TakeLastError() noexcept;

}  // namespace orxprint
