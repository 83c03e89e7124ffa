// The formats of drawings, one row each: adding a format means adding a row and the function that
// makes its writer.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "drawing/Picture.h"
#include "drawing/Shapes.h"

namespace orxprint {

enum class PagesInFile { None, One, All };

// Pixels each way that a picture may have at most; 0 leaves one way open, and both the resolution.
struct PixelBounds {
  int width = 0;
  int height = 0;
};

// How a drawing becomes pixels, for formats that have them.
struct PixelSettings {
  double dotsPerInch = 150;
  PixelBounds bounds;
  std::optional<orxdrawing::Colour> background = orxdrawing::Colour{1, 1, 1};  // none: transparent
  bool inGrey = false;
  unsigned workers = 0;  // threads that paint; 0 for as many as there are cores
};

// What a drawing is written with, whatever its format.
struct PictureSettings {
  PixelSettings pixels;
  double pointsPerUnit = orxdrawing::kPointsPerMillimetre;
  std::string title;    // UTF-8; may be empty
  std::string creator;  // UTF-8; may be empty
  orxdrawing::MayGoOn mayGoOn;
  std::size_t mostBytes = std::size_t{400} << 20;  // that the picture may take in memory
};

struct Format {
  std::string_view name;  // as options and file endings have it, without a dot
  PagesInFile pages;      // None: nothing is written
  bool hasPixels;
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
