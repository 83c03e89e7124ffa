// The formats of drawings, one row each: adding a format means adding a row and the function that
// writes it.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "orxprint/OutputFile.h"

namespace orxprint {

struct Losses;
struct PageToWrite;
struct WriteSettings;

enum class PagesInFile { None, One, All };

struct Format {
  std::string_view name;  // as options and file endings have it, without a dot
  PagesInFile pages;      // None: nothing is written
  // Painting may take this share of the time that interpreting may take, for how much longer it
  // then takes until the file is complete.
  double paintingShare;
  // What is held of the drawing, at most, until the file is complete.
  std::size_t bytesPerShape;
  std::size_t bytesPerPoint;
  // Writes the pages, of which there is one unless the file takes all. Null where the library for
  // it is not there.
  Losses (*write)(OutputFile& output, std::span<const PageToWrite> pages,
                  const WriteSettings& settings);

  [[nodiscard]] bool WritesFiles() const { return pages != PagesInFile::None; }
  // Whether this build of the program can write it.
  [[nodiscard]] bool IsThere() const { return !WritesFiles() || write; }
};

// The format that serves when nothing is said.
[[nodiscard]] const Format& DefaultFormat();
// The format of that name, in any case; null when there is none.
[[nodiscard]] const Format* FindFormat(std::string_view name);
// The format that a file's ending stands for, or null.
[[nodiscard]] const Format* FormatOfFile(std::string_view fileName);

}  // namespace orxprint
