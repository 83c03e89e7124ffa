// A generator that keeps what it is sent in a display list.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "drawing/DisplayList.h"
#include "host/PrintGenerator.h"

namespace orxdrawing {

// A stroke is everything between one attribute call and the next, so that its joins come out right.
class DisplayRecorder final : public PrintGenerator {
public:
  // What a list may grow to, for painting it takes memory as well.
  struct Budget {
    std::size_t bytes = SIZE_MAX;
    std::size_t bytesPerShape = 0;
    std::size_t bytesPerPoint = 0;
    // Whether an image's samples may be kept; asked before they are. Without it they may.
    std::function<bool(std::size_t bytes)> hasRoomFor;
  };

  DisplayRecorder() = default;
  // Calls `full` with every shape that is kept beyond the budget, and for every image that is not.
  DisplayRecorder(Budget listBudget, std::function<void()> full)
      : budget(std::move(listBudget)), onFull(std::move(full)) {}

  [[nodiscard]] const DisplayList& List() const { return list; }

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
  int EndStroke();
  void NeedStroke();
  void CheckBudget() const;

  Budget budget;
  std::function<void()> onFull;
  DisplayList list;
  std::array<Colour, kColours> palette;
  int lineColour = 0;
  int fillColour = 0;
  float lineWidth = 0;
  LineCap lineCap = LineCap::Butt;
  Shape::Kind fillRule = Shape::Kind::WindingFill;
  bool strokeIsOpen = false;
};

}  // namespace orxdrawing
