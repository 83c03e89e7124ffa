// Documents of any size, written for measuring: one kind for each thing that costs time. Every one
// is the same each time it is made, on every platform.
//
// They use only what this system and an ordinary PostScript interpreter read alike, so that both
// can be given the same file.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace orxbench {

// What the time of a kind is divided by.
enum class Unit {
  Token,  // of the program text
  Point,  // that the generator is given
  Pixel,  // of the images that the generator is given
  Byte,   // of the document
};

struct Kind {
  std::string_view name;
  std::string_view description;
  Unit unit;
  // A document of about this many bytes; of one image at least where the kind is of images.
  std::string (*make)(std::size_t bytes);
};

[[nodiscard]] std::span<const Kind> Kinds() noexcept;

// How many tokens a program text has outside its comments; every word of a string counts as one.
// REQUIRES: no encoded data in it.
[[nodiscard]] std::size_t CountTokens(std::string_view document) noexcept;

}  // namespace orxbench
