#include "drawing/ShapeGatherer.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace orxdrawing {

namespace {

constexpr int kProjectingCap = 11;
constexpr int kRoundCap = 12;
constexpr std::size_t kLeastCapacity = 1024;

}  // namespace

Colour ShapeGatherer::ColourAt(int index) const {
  return index >= 0 && index < static_cast<int>(kColours) ? palette[static_cast<std::size_t>(index)]
                                                          : Colour{};
}

// The lists are empty again even when the sink throws.
void ShapeGatherer::EndStroke() {
  if (lengths.empty()) return;
  struct Emptied {
    ShapeGatherer& gatherer;
    ~Emptied() {
      gatherer.lengths.clear();
      gatherer.coordinates.clear();
    }
  } const emptied{*this};
  sink.Draw(StrokeShape{{lengths, coordinates}, ColourAt(lineColour), lineWidth, lineCap});
}

template <typename Value>
bool ShapeGatherer::Grow(std::vector<Value>& values) {
  const std::size_t capacity = std::max(kLeastCapacity, values.capacity() / 2 * 3);
  if (hasRoomFor && !hasRoomFor(capacity * sizeof(Value))) {
    if (onFull) onFull();
    return false;
  }
  values.reserve(capacity);
  return true;
}

bool ShapeGatherer::HasRoomForPoint() {
  return (coordinates.capacity() - coordinates.size() >= 2 || Grow(coordinates)) &&
         (lengths.capacity() > lengths.size() || Grow(lengths));
}

int ShapeGatherer::NewPage() {
  EndStroke();
  sink.NextPage();
  return 0;
}

int ShapeGatherer::MoveTo(float x, float y) {
  if (!HasRoomForPoint()) return 0;
  lengths.push_back(1);
  coordinates.push_back(x);
  coordinates.push_back(y);
  return 0;
}

// A line without a point before it starts a contour.
int ShapeGatherer::LineTo(float x, float y) {
  if (lengths.empty()) return MoveTo(x, y);
  if (!HasRoomForPoint()) return 0;
  ++lengths.back();
  coordinates.push_back(x);
  coordinates.push_back(y);
  return 0;
}

int ShapeGatherer::FillArea(int contourCount, int* pointCounts, float* points) {
  EndStroke();
  const std::span<const int> counts(pointCounts, static_cast<std::size_t>(contourCount));
  const std::vector<std::uint32_t> itsLengths(counts.begin(), counts.end());
  const std::size_t pointCount =
      std::accumulate(itsLengths.begin(), itsLengths.end(), std::size_t{0});
  sink.Draw(FillShape{{itsLengths, {points, 2 * pointCount}}, ColourAt(fillColour), fillRule});
  return 0;
}

int ShapeGatherer::DrawImage(float x, float y, int /*flags*/, ORXPixelImage* image) {
  EndStroke();
  if (image->ByteCount() == 0) return 0;
  float rowHeight = image->GetYPixelSize();
  if (image->LinesRunUpwards()) {
    // Rows that run upwards fill the same box from its other end.
    y += static_cast<float>(image->Height()) * rowHeight;
    rowHeight = -rowHeight;
  }
  sink.Draw(ImageShape{image, x, y, image->GetXPixelSize(), rowHeight});
  return 0;
}

int ShapeGatherer::DefineColor(int index, float red, float green, float blue) {
  EndStroke();
  if (index >= 0 && index < static_cast<int>(kColours)) {
    palette[static_cast<std::size_t>(index)] = {red, green, blue};
  }
  return 0;
}

int ShapeGatherer::SetLineColor(int index) {
  EndStroke();
  lineColour = index;
  return 0;
}

int ShapeGatherer::SetFillColor(int index) {
  EndStroke();
  fillColour = index;
  return 0;
}

int ShapeGatherer::SetLineWidth(float width) {
  EndStroke();
  lineWidth = width;
  return 0;
}

int ShapeGatherer::SetLineCap(int cap) {
  EndStroke();
  lineCap = cap == kRoundCap        ? LineCap::Round
            : cap == kProjectingCap ? LineCap::Square
                                    : LineCap::Butt;
  return 0;
}

int ShapeGatherer::SetFillRule(int rule) {
  EndStroke();
  fillRule = rule == 0 ? FillRule::EvenOdd : FillRule::Winding;
  return 0;
}

}  // namespace orxdrawing
