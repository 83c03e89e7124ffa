// A page as SVG.
//
// Coordinates stand in the text as the document has them, in points with y upwards, with all the
// digits that the interpreter's floats have; one group moves them to the page. Strokes of equal
// attributes that follow each other share a path, fills of equal attributes a group. Images are PNG
// data whose samples keep sharp edges when they are enlarged.
#pragma once

#include <optional>
#include <string>

#include "drawing/ContourCleaner.h"
#include "drawing/Decimals.h"
#include "drawing/Deflater.h"
#include "drawing/FarImage.h"
#include "drawing/HeldFill.h"
#include "drawing/Picture.h"
#include "drawing/SvgPath.h"
#include "drawing/TextBuffer.h"

namespace orxdrawing {

struct SvgSettings {
  double pointsPerUnit = 1;
  MakeDeflater makeDeflater;  // for images
  MayGoOn mayGoOn;
};

class SvgPicture final : public Picture, private ShapeSink {
public:
  SvgPicture(SvgSettings svgSettings, ByteSink sink);

  // REQUIRES: it is the first page.
  ShapeSink& BeginPage(const PicturePage& page) override;
  void Finish() override;
  [[nodiscard]] PictureLosses Lost() const override;

private:
  struct StrokeStyle {
    Colour colour;
    float width = 0;
    LineCap cap = LineCap::Butt;
    friend bool operator==(const StrokeStyle&, const StrokeStyle&) = default;
  };
  struct FillStyle {
    Colour colour;
    FillRule rule = FillRule::Winding;
    std::optional<StrokeStyle> edge;  // of paths that are stroked as well
    friend bool operator==(const FillStyle&, const FillStyle&) = default;
  };

  void NextPage() override {}
  void Draw(const StrokeShape& stroke) override;
  void Draw(const FillShape& fill) override;
  void Draw(const ImageShape& image) override;

  void BeginStrokes(const StrokeStyle& style);
  void BeginFills(const FillStyle& style);
  void Write(const FillShape& fill);
  void WriteEdged(const FillShape& fill, const StrokeShape& stroke);
  void WriteHeldFill();
  void AddStrokeAttributes(const StrokeStyle& style);
  // Ends the path or the group that is open.
  void EndRun();
  void AddColour(const Colour& colour);
  void AddStrokeContour(std::span<const float> coordinates);
  void AddFillContour(std::span<const float> coordinates);
  void AddImageData(const ORXPixelImage& image);

  SvgSettings settings;
  TextBuffer text;
  DecimalPoints decimals;
  SvgPath path{text, decimals};
  std::optional<ContourCleaner> cleaner;
  std::optional<FarImages> farImages;
  HeldFill heldFill;
  std::optional<StrokeStyle> strokes;  // of the path that is open
  std::optional<FillStyle> fills;      // of the group that is open
  std::size_t pathPoints = 0;          // in the path that is open
  std::uint64_t lostImages = 0;
};

}  // namespace orxdrawing
