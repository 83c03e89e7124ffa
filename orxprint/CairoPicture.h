// A picture painted by Cairo when all its shapes are there.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "drawing/DisplayList.h"
#include "orxprint/PageWriter.h"

namespace orxprint {

class CairoPicture final : public orxdrawing::Picture, private orxdrawing::ShapeSink {
public:
  using Write = Losses (*)(const ByteSink& output, std::span<const PageToWrite> pages,
                           const WriteSettings& settings);
  CairoPicture(Write writer, WriteSettings writeSettings, ByteSink byteSink)
      : write(writer), settings(writeSettings), sink(std::move(byteSink)) {}

  ShapeSink& BeginPage(const orxdrawing::PicturePage& page) override {
    list = std::make_shared<DisplayList>();
    pages.push_back({list, 0, 1, page.area});
    return *this;
  }
  void Finish() override { losses = write(sink, pages, settings); }
  [[nodiscard]] orxdrawing::PictureLosses Lost() const override {
    return {losses.points, losses.images};
  }

private:
  void NextPage() override {}
  void Draw(const orxdrawing::StrokeShape& stroke) override {
    list->BeginStroke(stroke.colour, stroke.width, stroke.cap);
    std::size_t place = 0;
    for (const std::uint32_t length : stroke.contours.lengths) {
      for (std::uint32_t i = 0; i < length; ++i, place += 2) {
        const float x = stroke.contours.coordinates[place];
        const float y = stroke.contours.coordinates[place + 1];
        i == 0 ? list->MoveTo(x, y) : list->LineTo(x, y);
      }
    }
  }
  void Draw(const orxdrawing::FillShape& fill) override {
    const bool isWinding = fill.rule == orxdrawing::FillRule::Winding;
    const std::vector<int> counts(fill.contours.lengths.begin(), fill.contours.lengths.end());
    list->AddFill(isWinding ? Shape::Kind::WindingFill : Shape::Kind::EvenOddFill, fill.colour,
                  counts, fill.contours.coordinates);
  }
  void Draw(const orxdrawing::ImageShape& shape) override {
    const ORXPixelImage& image = *shape.image;
    ImageSamples samples;
    samples.width = image.Width();
    samples.height = image.Height();
    using Layout = ImageSamples::Layout;
    samples.layout = image.Format() == ORXPixelImageFormat::Rgb24      ? Layout::Rgb24
                     : image.Format() == ORXPixelImageFormat::Cmyk32   ? Layout::Cmyk32
                     : image.Format() == ORXPixelImageFormat::Bilevel1 ? Layout::Bilevel1
                                                                       : Layout::Grey8;
    samples.rowBytes = ORXPixelImage::RowBytes(image.Width(), image.Format());
    samples.bytes.assign(image.Pixels(), image.Pixels() + image.ByteCount());
    list->AddImage({std::move(samples), shape.x, shape.y, shape.xPixelSize, shape.yPixelSize});
  }

  Write write;
  WriteSettings settings;
  ByteSink sink;
  std::shared_ptr<DisplayList> list;
  std::vector<PageToWrite> pages;
  Losses losses;
};

}  // namespace orxprint
