// Shapes together with the page that they are on and the place in the document that drew them.
//
// Commands that lead from the paper to the source draw on a PlacedSink through a PlacedGatherer:
// shapes come out of the gatherer a little after they were made, so the teller notes where a stroke
// began. Everything here borrows what it hands on to.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "drawing/ShapeGatherer.h"
#include "drawing/Shapes.h"
#include "host/ORXInterpreterWatcher.h"

namespace orxdrawing {

// A sink that knows where each shape comes from while it takes it.
class PlacedSink : public ShapeSink {
public:
  // What comes next is on that page.
  virtual void BeginPage(std::uint32_t number) { pageNow = number; }
  void NextPage() final { BeginPage(pageNow + 1); }
  // What comes next was drawn there.
  void SetPlace(const ORXPlace& shapesPlace) { placeNow = shapesPlace; }

protected:
  [[nodiscard]] std::uint32_t Page() const { return pageNow; }
  [[nodiscard]] const ORXPlace& Place() const { return placeNow; }

private:
  std::uint32_t pageNow = 1;
  ORXPlace placeNow;
};

// Hands shapes on and tells a placed sink behind it the place of each.
class PlaceTeller final : public ShapeSink {
public:
  // Where the pass is now; asked during the pass only.
  using PlaceNow = std::function<ORXPlace()>;

  // Borrows both sinks.
  PlaceTeller(ShapeSink& nextSink, PlacedSink& placedSink, PlaceNow teller)
      : next(nextSink), placed(placedSink), placeNow(std::move(teller)) {}

  // A stroke begins; it is handed on when something else comes, or after the pass.
  void BeginStroke() { strokePlace = placeNow(); }

  void NextPage() override { next.NextPage(); }
  void Draw(const StrokeShape& stroke) override { HandOn(stroke, strokePlace); }
  void Draw(const FillShape& fill) override { HandOn(fill, placeNow()); }
  void Draw(const ImageShape& image) override { HandOn(image, placeNow()); }

private:
  template <typename AnyShape>
  void HandOn(const AnyShape& shape, const ORXPlace& place) {
    placed.SetPlace(place);
    next.Draw(shape);
  }

  ShapeSink& next;
  PlacedSink& placed;
  PlaceNow placeNow;
  ORXPlace strokePlace;
};

// A generator that notices where strokes begin on their way to the gatherer of shapes.
class PlacedGatherer : public PrintGenerator {
public:
  // Borrows the teller.
  explicit PlacedGatherer(PlaceTeller& placeTeller) : teller(placeTeller), gatherer(placeTeller) {}
  virtual ~PlacedGatherer() = default;

  // Hands on the last stroke.
  void Finish() { gatherer.Finish(); }

  int MoveTo(float x, float y) override {
    GoOnWithStroke();
    return gatherer.MoveTo(x, y);
  }
  int LineTo(float x, float y) override {
    GoOnWithStroke();
    return gatherer.LineTo(x, y);
  }
  int NewPage() override { return Other().NewPage(); }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    return Other().FillArea(contourCount, pointCounts, points);
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    return Other().DrawImage(x, y, flags, image);
  }
  int DefineColor(int index, float red, float green, float blue) override {
    return Other().DefineColor(index, red, green, blue);
  }
  int SetLineColor(int index) override { return Other().SetLineColor(index); }
  int SetFillColor(int index) override { return Other().SetFillColor(index); }
  int SetLineWidth(float width) override { return Other().SetLineWidth(width); }
  int SetLineCap(int cap) override { return Other().SetLineCap(cap); }
  int SetFillRule(int rule) override { return Other().SetFillRule(rule); }

private:
  void GoOnWithStroke() {
    if (!isInStroke) teller.BeginStroke();
    isInStroke = true;
  }
  // Every other call ends the stroke.
  ShapeGatherer& Other() {
    isInStroke = false;
    return gatherer;
  }

  PlaceTeller& teller;
  ShapeGatherer gatherer;
  bool isInStroke = false;
};

}  // namespace orxdrawing
