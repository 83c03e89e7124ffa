#include "orxprint/Formats.h"

#include <algorithm>
#include <array>

#include "orxprint/OutputNames.h"
#if ORXPRINT_DRAWS
#  include "orxprint/PageWriter.h"
#endif

namespace orxprint {

namespace {

#if !ORXPRINT_DRAWS
constexpr decltype(Format::write) WriteSvg = nullptr;
constexpr decltype(Format::write) WritePdf = nullptr;
constexpr decltype(Format::write) WritePng = nullptr;
#endif

constexpr std::array<Format, 4> kFormats = {{
    {"svg", PagesInFile::One, 0.25, 1400, 100, WriteSvg},
    {"pdf", PagesInFile::All, 0.25, 1400, 100, WritePdf},
    {"png", PagesInFile::One, 1, 0, 0, WritePng},
    {"none", PagesInFile::None, 0, 0, 0, nullptr},
}};

bool IsSameInAnyCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [lower](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace

const Format& DefaultFormat() { return kFormats[0]; }

const Format* FindFormat(std::string_view name) {
  for (const Format& format : kFormats) {
    if (IsSameInAnyCase(name, format.name)) return &format;
  }
  return nullptr;
}

const Format* FormatOfFile(std::string_view fileName) {
  const std::size_t dot = EndingPosition(fileName);
  if (dot == fileName.size()) return nullptr;
  const Format* format = FindFormat(fileName.substr(dot + 1));
  return format && format->WritesFiles() ? format : nullptr;
}

}  // namespace orxprint
