// The page's half of an interpreter: graphics states with their paths, the scale between device
// space and output units, and the generator.
//
// Nothing else calls the generator, which is borrowed; here coordinates become output units. What a
// pass leaves in the states is there in the next.
#pragma once

#include <cstdint>
#include <vector>

#include "graphics/GraphicsStates.h"
#include "host/PrintGenerator.h"

class ORXPixelImage;

namespace orxeps {

enum class FillRule : int { EvenOdd = 0, NonZeroWinding = 1 };

class Canvas {
public:
  // Asks the environment for the units. What it holds counts in a budget, which is borrowed.
  explicit Canvas(MemoryBudget& budget) noexcept;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  GraphicsStates states;
  PrintGenerator* generator = nullptr;
  float unitScale;  // from PostScript units to output units

  [[nodiscard]] GraphicsState& Current() noexcept { return states.current; }
  [[nodiscard]] const GraphicsState& Current() const noexcept { return states.current; }
  [[nodiscard]] bool HasGenerator() const noexcept { return generator != nullptr; }

  // REQUIRES, from here on: there is a generator. What it throws comes out as HostThrew.

  void NewPage();
  // The path goes out as polylines and is emptied.
  void Stroke();
  // The path goes out as one area and is emptied; an empty path sends its colour only. Whether
  // there was an area. Throws std::bad_alloc.
  bool Fill(FillRule rule);
  // Draws an image whose origin is at a point of device space.
  void DrawImage(FloatPoint origin, ORXPixelImage& image) const;

private:
  void DefineColor() const;
  void SendPath();
  void MakeContours();

  // The path to fill in output units: the coordinates of all points, and how many points each
  // contour has. Kept to be used again while they are small.
  std::vector<float> coordinates;
  std::vector<int> pointCounts;
};

}  // namespace orxeps
