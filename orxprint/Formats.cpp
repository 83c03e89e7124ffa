#include "orxprint/Formats.h"

#include <algorithm>
#include <array>
#include <utility>

#include "drawing/SvgPicture.h"
#include "orxprint/OutputNames.h"
#if ORXPRINT_DRAWS_EVERYTHING
#  include "drawing/ImageRows.h"
#  include "drawing/PdfPicture.h"
#  include "drawing/PngPicture.h"
#  include "framework/CcittG4Encoder.h"
#  include "orxprint/PdfModule.h"
#  include "orxprint/TemporarySpool.h"
#endif

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

#if ORXPRINT_DRAWS_EVERYTHING

// Rows that are left when `mayGoOn` says no are white.
void EncodeFax(const ORXPixelImage& image, const orxdrawing::MayGoOn& mayGoOn,
               const ByteSink& sink) {
  orxframework::ccitt::G4RowEncoder encoder(image.Width(), sink);
  const std::vector<unsigned char> white(ORXPixelImage::RowBytes(image.Width(), image.Format()));
  bool isStopped = false;
  for (int row = 0; row < image.Height(); ++row) {
    isStopped = isStopped || !mayGoOn();
    encoder.AddRow(isStopped ? std::span<const unsigned char>(white)
                             : orxdrawing::RowOf(image, row));
  }
  encoder.Finish();
}

std::unique_ptr<Picture> MakePdf(const PictureSettings& settings, ByteSink sink) {
  return std::make_unique<orxdrawing::PdfPicture>(
      orxdrawing::PdfSettings{
          settings.pointsPerUnit, settings.title, settings.creator, orxdrawing::MakeZlibDeflater,
          EncodeFax, std::make_shared<TemporarySpool>(), settings.mayGoOn, LoadPdfWriter()},
      std::move(sink));
}

std::unique_ptr<Picture> MakePng(const PictureSettings& settings, ByteSink sink) {
  orxdrawing::PngSettings png;
  png.pointsPerUnit = settings.pointsPerUnit;
  png.dotsPerInch = settings.pixels.dotsPerInch;
  png.mostWidth = settings.pixels.bounds.width;
  png.mostHeight = settings.pixels.bounds.height;
  png.background = settings.pixels.background;
  png.inGrey = settings.pixels.inGrey;
  png.workers = settings.pixels.workers;
  png.mayGoOn = settings.mayGoOn;
  png.mostBytes = settings.mostBytes;
  return std::make_unique<orxdrawing::PngPicture>(std::move(png), std::move(sink));
}

#else

constexpr decltype(Format::make) MakePdf = nullptr;
constexpr decltype(Format::make) MakePng = nullptr;

#endif

constexpr std::array<Format, 4> kFormats = {{
    {"svg", PagesInFile::One, false, MakeSvg},
    {"pdf", PagesInFile::All, false, MakePdf},
    {"png", PagesInFile::One, true, MakePng},
    {"none", PagesInFile::None, false, nullptr},
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
