// Documents of any size, written for measuring. Every one is the same each time it is made.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orxbench {

// Short polylines with absolute coordinates, operators by their own names.
[[nodiscard]] std::string PlainLines(std::size_t lines);

// The same drawn through a prolog of short names bound to operators, as programs write it.
[[nodiscard]] std::string PrologLines(std::size_t lines);

// Filled outlines of curves under a matrix of their own.
[[nodiscard]] std::string Curves(std::size_t outlines);

// Circles.
[[nodiscard]] std::string Circles(std::size_t circles);

// Arithmetic and stack work in procedures that call procedures, `depth` dictionaries deep.
[[nodiscard]] std::string Arithmetic(std::size_t rounds, std::size_t depth);

// One grey image of `bytes` samples in base-85 text.
[[nodiscard]] std::string GreyImage(std::size_t bytes);

// A section of `bytes` hexadecimal digits behind "eexec".
[[nodiscard]] std::string EncryptedSection(std::size_t bytes);

// Bytes in base-85 text with the end marker, in lines.
[[nodiscard]] std::string EncodeBase85(std::string_view bytes);

}  // namespace orxbench
