#include "orxprint/Formats.h"

#include <algorithm>
#include <array>
#include <utility>

#include "drawing/SvgPicture.h"
#include "orxprint/CairoPicture.h"
#include "orxprint/OutputNames.h"

namespace orxprint {

namespace {

using orxdrawing::ByteSink;
using orxdrawing::Picture;

std::unique_ptr<Picture> MakeSvg(const PictureSettings& settings, ByteSink sink) {
  return std::make_unique<orxdrawing::SvgPicture>(
      orxdrawing::SvgSettings{settings.pointsPerUnit, orxdrawing::MakeZlibDeflater,
                              settings.mayGoOn},
      std::move(sink));
}

template <CairoPicture::Write kWrite>
std::unique_ptr<Picture> MakeCairo(const PictureSettings& settings, ByteSink sink) {
  return std::make_unique<CairoPicture>(
      kWrite, WriteSettings{settings.dotsPerInch, settings.pointsPerUnit, {}}, std::move(sink));
}

constexpr std::array<Format, 4> kFormats = {{
    {"svg", PagesInFile::One, &MakeSvg},
    {"pdf", PagesInFile::All, &MakeCairo<&WritePdf>},
    {"png", PagesInFile::One, &MakeCairo<&WritePng>},
    {"none", PagesInFile::None, nullptr},
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
