#include "drawing/PdfPicture.h"

#include <stdexcept>
#include <utility>

#include "drawing/Extent.h"
#include "drawing/FilteredRows.h"
#include "drawing/Text.h"

namespace orxdrawing {

namespace {

// Larger pages no reader shows.
constexpr double kMostPoints = 1'000'000;
// Packed contents of a page go into another stream when they are so long.
constexpr std::size_t kLongContents = std::size_t{1} << 20;

}  // namespace

PdfPicture::PdfPicture(PdfSettings pdfSettings, ByteSink byteSink)
    : settings(std::move(pdfSettings)),
      sink(std::move(byteSink)),
      text([this](std::string_view bytes) {
        deflater->Add({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
      }) {}

ShapeSink& PdfPicture::BeginPage(const PicturePage& page) {
  if (page.area.Width() > kMostPoints || page.area.Height() > kMostPoints) {
    throw std::runtime_error("a page of " + ShortNumber(page.area.Width()) + " x " +
                             ShortNumber(page.area.Height()) + " points is too large to be drawn");
  }
  EndPage();
  pages.push_back({page, {}, {}});
  BeginContents();
  content.emplace(text, page.area, settings.pointsPerUnit);
  farImages.emplace(page.area, settings.pointsPerUnit);
  return *this;
}

void PdfPicture::BeginContents() {
  deflater = settings.makeDeflater(pages.back().contents.empty() ? Effort::Little : Effort::Least,
                                   [this](std::string_view bytes) { packed += bytes; });
}

void PdfPicture::EndContents() {
  text.Flush();
  deflater->Finish();
  pages.back().contents.push_back({settings.spool->Size(), packed.size()});
  settings.spool->Add(packed);
  packed.clear();
}

// Between two operators contents may be parted.
void PdfPicture::EndContentsIfLong() {
  if (packed.size() < kLongContents) return;
  content->Flush();
  EndContents();
  BeginContents();
}

void PdfPicture::EndPage() {
  if (!content) return;
  content->Flush();
  EndContents();
  losses.points += content->LostPoints();
  content.reset();
}

void PdfPicture::Finish() {
  EndPage();
  settings.write(pages, settings, sink);
}

void PdfPicture::Draw(const StrokeShape& stroke) {
  content->Draw(stroke);
  EndContentsIfLong();
}

void PdfPicture::Draw(const FillShape& fill) {
  content->Draw(fill);
  EndContentsIfLong();
}

void PdfPicture::Draw(const ImageShape& shape) {
  if (!ExtentOf(shape)) {
    ++losses.images;
    return;
  }
  if (farImages->Include(shape)) {
    return farImages->Draw(shape, [this](const FillShape& sample) { Draw(sample); });
  }
  const ORXPixelImage& image = *shape.image;
  PdfStream data = PutAside(image);
  const std::optional<PdfStream> fax = PutAsideAsFax(image, data.size);
  if (fax) data = *fax;
  std::vector<PdfImage>& images = pages.back().images;
  content->Draw(shape, "/Im" + std::to_string(images.size()));
  images.push_back({data, fax.has_value(), image.Format(), image.Width(), image.Height()});
}

PdfStream PdfPicture::PutAside(const ORXPixelImage& image) {
  Spool& spool = *settings.spool;
  const std::uint64_t place = spool.Size();
  const auto rows =
      settings.makeDeflater(Effort::Normal, [&spool](std::string_view bytes) { spool.Add(bytes); });
  DeflateRows(image, RowForm::Own, *rows, settings.mayGoOn);
  rows->Finish();
  return {place, spool.Size() - place};
}

std::optional<PdfStream> PdfPicture::PutAsideAsFax(const ORXPixelImage& image,
                                                   std::uint64_t deflatedSize) {
  if (!settings.encodeFax || image.Format() != ORXPixelImageFormat::Bilevel1) return std::nullopt;
  Spool& spool = *settings.spool;
  const std::uint64_t place = spool.Size();
  settings.encodeFax(image, settings.mayGoOn,
                     [&spool](std::string_view bytes) { spool.Add(bytes); });
  const std::uint64_t size = spool.Size() - place;
  return size < deflatedSize ? std::optional(PdfStream{place, size}) : std::nullopt;
}

}  // namespace orxdrawing
