// A generator that costs next to nothing, so that what is measured is the library.
//
// It counts the points and pixels that arrive, by which benchmarks divide the time of a pass.
#pragma once

#include <cstdint>

#include "host/ORXPixelImage.h"
#include "host/PrintGenerator.h"

namespace orxbench {

// Counts what it is given.
class CountingGenerator final : public PrintGenerator {
public:
  std::int64_t points = 0;
  std::int64_t pixels = 0;

  int NewPage() override { return 0; }
  int MoveTo(float, float) override { return Point(); }
  int LineTo(float, float) override { return Point(); }
  int FillArea(int outlines, int* counts, float*) override {
    for (int i = 0; i < outlines; ++i) points += counts[i];
    return 0;
  }
  int DrawImage(float, float, int, ORXPixelImage* image) override {
    pixels += std::int64_t{image->Width()} * image->Height();
    return 0;
  }
  int DefineColor(int, float, float, float) override { return 0; }
  int SetLineColor(int) override { return 0; }
  int SetFillColor(int) override { return 0; }
  int SetLineWidth(float) override { return 0; }
  int SetLineCap(int) override { return 0; }
  int SetFillRule(int) override { return 0; }

private:
  int Point() noexcept {
    ++points;
    return 0;
  }
};

}  // namespace orxbench
