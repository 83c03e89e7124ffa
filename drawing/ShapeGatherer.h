// A generator that makes shapes of the calls that it is sent.
//
// A stroke is everything between one attribute call, fill, image or page and the next, so that its
// joins come out right; it is kept until then, and nothing else is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "drawing/Shapes.h"
#include "host/PrintGenerator.h"

namespace orxdrawing {

class ShapeGatherer final : public PrintGenerator {
public:
  // Whether that many bytes more may be kept; without it they may.
  using RoomGauge = std::function<bool(std::size_t bytes)>;

  // Borrows the sink.
  explicit ShapeGatherer(ShapeSink& shapeSink) : sink(shapeSink) {}
  // Calls `full` for what the gauge finds no room for; it is left out.
  ShapeGatherer(ShapeSink& shapeSink, RoomGauge gauge, std::function<void()> full)
      : sink(shapeSink), hasRoomFor(std::move(gauge)), onFull(std::move(full)) {}

  // Hands on the last stroke.
  void Finish() { EndStroke(); }

  int NewPage() override;
  int MoveTo(float x, float y) override;
  int LineTo(float x, float y) override;
  int FillArea(int contourCount, int* pointCounts, float* points) override;
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override;
  int DefineColor(int index, float red, float green, float blue) override;
  int SetLineColor(int index) override;
  int SetFillColor(int index) override;
  int SetLineWidth(float width) override;
  int SetLineCap(int cap) override;
  int SetFillRule(int rule) override;

private:
  static constexpr std::size_t kColours = 256;

  [[nodiscard]] Colour ColourAt(int index) const;
  void EndStroke();
  // Whether there is room for a point more, in a contour of its own if need be.
  [[nodiscard]] bool HasRoomForPoint();
  template <typename Value>
  [[nodiscard]] bool Grow(std::vector<Value>& values);

  ShapeSink& sink;
  RoomGauge hasRoomFor;
  std::function<void()> onFull;
  std::array<Colour, kColours> palette;
  int lineColour = 0;
  int fillColour = 0;
  float lineWidth = 0;
  LineCap lineCap = LineCap::Butt;
  FillRule fillRule = FillRule::Winding;
  // Of the stroke that is open.
  std::vector<std::uint32_t> lengths;
  std::vector<float> coordinates;
};

}  // namespace orxdrawing
