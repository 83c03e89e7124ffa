#include "orxprint/PageWriter.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

#include "drawing/Text.h"
#include "orxprint/Failure.h"

namespace orxprint {

namespace {

using orxdrawing::ShortNumber;

// Larger pages do not fit into Cairo's fixed point numbers.
constexpr double kMostPoints = 1'000'000;
// The bounds of a pixel picture: Cairo's own for a side, and a gigabyte of pixels.
constexpr double kMostSidePixels = 32'767;
constexpr double kMostPixels = 256 << 20;

struct ContextDestroyer {
  void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
};
using ContextPointer = std::unique_ptr<cairo_t, ContextDestroyer>;

cairo_status_t WriteToOutput(void* closure, const unsigned char* data, unsigned length) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), length);
  (*static_cast<const ByteSink*>(closure))(bytes);
  return CAIRO_STATUS_SUCCESS;
}

// A write error is left to the output, which knows its cause.
void RequireSuccess(cairo_status_t status) {
  if (status == CAIRO_STATUS_SUCCESS || status == CAIRO_STATUS_WRITE_ERROR) return;
  if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
  throw Failure(std::string("cannot be drawn: ") + cairo_status_to_string(status));
}

void RequireDrawableSize(const Box& area) {
  if (area.Width() <= kMostPoints && area.Height() <= kMostPoints) return;
  throw Failure("a page of " + ShortNumber(area.Width()) + " x " + ShortNumber(area.Height()) +
                " points is too large to be drawn");
}

void PaintOn(cairo_surface_t* surface, CairoPainter& painter, const PageToWrite& page,
             const WriteSettings& settings, double pixelsPerPoint) {
  const ContextPointer context(cairo_create(surface));
  cairo_scale(context.get(), pixelsPerPoint, pixelsPerPoint);
  painter.PaintPage(context.get(), *page.list, page.page, settings.pointsPerUnit, page.area);
  cairo_show_page(context.get());
  RequireSuccess(cairo_status(context.get()));
}

void FinishSurface(cairo_surface_t* surface) {
  cairo_surface_finish(surface);
  RequireSuccess(cairo_surface_status(surface));
}

struct PixelSize {
  double width;
  double height;
};

PixelSize PixelsOf(const Box& area, double dotsPerInch) {
  const auto pixels = [dotsPerInch](double points) {
    return std::max(1.0, std::round(points * dotsPerInch / 72));
  };
  const PixelSize size{pixels(area.Width()), pixels(area.Height())};
  if (size.width <= kMostSidePixels && size.height <= kMostSidePixels &&
      size.width * size.height <= kMostPixels) {
    return size;
  }
  throw Failure("a picture of " + ShortNumber(size.width) + " x " + ShortNumber(size.height) +
                " pixels is too large: choose fewer dots per inch (-r)");
}

}  // namespace

Losses WritePdf(const ByteSink& output, std::span<const PageToWrite> pages,
                const WriteSettings& settings) {
  CairoPainter painter(Canvas::Stencils, 1, settings.deadline);
  const SurfacePointer surface(
      cairo_pdf_surface_create_for_stream(WriteToOutput, const_cast<ByteSink*>(&output), 1, 1));
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
  for (const PageToWrite& page : pages) {
    RequireDrawableSize(page.area);
    cairo_pdf_surface_set_size(surface.get(), page.area.Width(), page.area.Height());
    PaintOn(surface.get(), painter, page, settings, 1);
  }
  FinishSurface(surface.get());
  return painter.Lost();
}

Losses WritePng(const ByteSink& output, std::span<const PageToWrite> pages,
                const WriteSettings& settings) {
  const PageToWrite& page = pages[0];
  const double pixelsPerPoint = settings.dotsPerInch / 72;
  const PixelSize size = PixelsOf(page.area, settings.dotsPerInch);
  CairoPainter painter(Canvas::Pixels, pixelsPerPoint, settings.deadline);
  const SurfacePointer surface(cairo_image_surface_create(
      CAIRO_FORMAT_RGB24, static_cast<int>(size.width), static_cast<int>(size.height)));
  const ContextPointer context(cairo_create(surface.get()));
  cairo_set_source_rgb(context.get(), 1, 1, 1);
  cairo_paint(context.get());
  PaintOn(surface.get(), painter, page, settings, pixelsPerPoint);
  RequireSuccess(cairo_surface_write_to_png_stream(surface.get(), WriteToOutput,
                                                   const_cast<ByteSink*>(&output)));
  return painter.Lost();
}

}  // namespace orxprint
