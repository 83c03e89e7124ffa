#include "drawing/PngImage.h"

#include <cstdint>
#include <string>

#include "drawing/Crc32.h"
#include "drawing/FilteredRows.h"

namespace orxdrawing {

namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1a\n";
constexpr int kGrey = 0;
constexpr int kTrueColour = 2;

// Numbers in a PNG file have their high byte first.
void AppendNumber(std::string& text, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(number >> shift & 0xFF);
}

void WriteChunk(const ByteSink& sink, std::string_view kind, std::string_view content) {
  std::string chunk;
  AppendNumber(chunk, static_cast<std::uint32_t>(content.size()));
  chunk += kind;
  chunk += content;
  const auto* checked = reinterpret_cast<const unsigned char*>(chunk.data()) + 4;
  AppendNumber(chunk, Crc32({checked, chunk.size() - 4}));
  sink(chunk);
}

std::string Header(const ORXPixelImage& image, bool isBilevel, bool isGrey) {
  std::string header;
  AppendNumber(header, static_cast<std::uint32_t>(image.Width()));
  AppendNumber(header, static_cast<std::uint32_t>(image.Height()));
  header += static_cast<char>(isBilevel ? 1 : 8);
  header += static_cast<char>(isGrey ? kGrey : kTrueColour);
  header.append(3, '\0');  // the only compression, the only filtering, not interlaced
  return header;
}

}  // namespace

void WritePngImage(const ORXPixelImage& image, const MakeDeflater& makeDeflater,
                   const MayGoOn& mayGoOn, const ByteSink& sink) {
  const bool isBilevel = image.Format() == ORXPixelImageFormat::Bilevel1;
  const bool isGrey = isBilevel || image.Format() == ORXPixelImageFormat::Grey8;
  sink(kSignature);
  WriteChunk(sink, "IHDR", Header(image, isBilevel, isGrey));
  const auto deflater = makeDeflater(
      Effort::Normal, [&sink](std::string_view bytes) { WriteChunk(sink, "IDAT", bytes); });
  DeflateRows(image, RowForm::Light, *deflater, mayGoOn);
  deflater->Finish();
  WriteChunk(sink, "IEND", {});
}

}  // namespace orxdrawing
