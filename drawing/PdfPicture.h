// Pages as PDF.
//
// Contents and images are packed as they are drawn and put aside; the objects around them are made
// when all pages are there. Long contents are several streams, so that none has to be held whole.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/Deflater.h"
#include "drawing/FarImage.h"
#include "drawing/PdfContent.h"
#include "drawing/Picture.h"
#include "drawing/Spool.h"
#include "drawing/TextBuffer.h"

namespace orxdrawing {

struct PdfPage;
struct PdfSettings;
// As WritePdfFile of PdfFile.h.
using PdfWriter = void (*)(const std::vector<PdfPage>& pages, const PdfSettings& settings,
                           const ByteSink& sink);

// Packs an image of black and white as ITU-T T.6 has it (Group 4 facsimile).
using EncodeFax =
    std::function<void(const ORXPixelImage& image, const MayGoOn& mayGoOn, const ByteSink& sink)>;

struct PdfSettings {
  double pointsPerUnit = 1;
  std::string title;    // UTF-8; none where it is empty
  std::string creator;  // the same
  MakeDeflater makeDeflater;
  EncodeFax encodeFax;  // may be empty
  std::shared_ptr<Spool> spool;
  MayGoOn mayGoOn;
  PdfWriter write = nullptr;  // makes the file when all pages are there
};

// Packed bytes that were put aside.
struct PdfStream {
  std::uint64_t place = 0;
  std::uint64_t size = 0;
};

struct PdfImage {
  PdfStream data;
  bool isFax = false;  // else deflated
  ORXPixelImageFormat format = ORXPixelImageFormat::Grey8;
  int width = 0;
  int height = 0;
};

struct PdfPage {
  PicturePage page;
  std::vector<PdfStream> contents;
  std::vector<PdfImage> images;  // named Im0, Im1 ... in the contents
};

class PdfPicture final : public Picture, private ShapeSink {
public:
  PdfPicture(PdfSettings pdfSettings, ByteSink byteSink);

  ShapeSink& BeginPage(const PicturePage& page) override;
  void Finish() override;
  [[nodiscard]] PictureLosses Lost() const override { return losses; }

private:
  void NextPage() override {}
  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

  PdfStream PutAside(const ORXPixelImage& image);
  // Nothing where fax data would be no smaller.
  std::optional<PdfStream> PutAsideAsFax(const ORXPixelImage& image, std::uint64_t deflatedSize);
  void BeginContents();
  void EndContents();
  void EndContentsIfLong();
  void EndPage();

  PdfSettings settings;
  ByteSink sink;
  std::vector<PdfPage> pages;
  std::unique_ptr<Deflater> deflater;  // of the contents that are open
  std::string packed;                  // of them, not put aside yet
  TextBuffer text;
  std::optional<PdfContent> content;  // of the last page
  std::optional<FarImages> farImages;
  PictureLosses losses;
};

}  // namespace orxdrawing
