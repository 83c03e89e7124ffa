// The formats of drawings, one row each: adding a format means adding a row and the function that
// makes its writer.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "drawing/Picture.h"

namespace orxprint {

enum class PagesInFile { None, One, All };

// What a drawing is written with, whatever its format.
struct PictureSettings {
  double dotsPerInch = 150;
  double pointsPerUnit = orxdrawing::kPointsPerMillimetre;
  std::string title;    // UTF-8; may be empty
  std::string creator;  // UTF-8; may be empty
  orxdrawing::MayGoOn mayGoOn;
  std::size_t mostBytes = std::size_t{400} << 20;  // that the picture may take in memory
};

struct Format {
  std::string_view name;  // as options and file endings have it, without a dot
  PagesInFile pages;      // None: nothing is written
  // Null where nothing is written, and in builds without the library for it.
  std::unique_ptr<orxdrawing::Picture> (*make)(const PictureSettings& settings,
                                               orxdrawing::ByteSink sink);

  [[nodiscard]] bool WritesFiles() const { return pages != PagesInFile::None; }
  // Whether this build of the program can write it.
  [[nodiscard]] bool IsThere() const { return !WritesFiles() || make; }
};

// The format that serves when nothing is said.
[[nodiscard]] const Format& DefaultFormat();
// The format of that name, in any case; null when there is none.
[[nodiscard]] const Format* FindFormat(std::string_view name);
// The format that a file's ending stands for, or null.
[[nodiscard]] const Format* FormatOfFile(std::string_view fileName);

}  // namespace orxprint
