// A generator that draws nothing, answers what it is told to, and remembers how far a document
// came.
#pragma once

#include "host/PrintGenerator.h"

namespace orxtests {

class SilentGenerator : public PrintGenerator {
public:
  virtual ~SilentGenerator() = default;
  explicit SilentGenerator(int everyResult = 0) noexcept : result(everyResult) {}

  int calls = 0;
  int strokesSincePage = 0;

  int NewPage() override {
    strokesSincePage = 0;
    hasPage = true;
    return Answer();
  }
  int SetLineCap(int) override {
    if (hasPage) ++strokesSincePage;
    return Answer();
  }
  int MoveTo(float, float) override { return Answer(); }
  int LineTo(float, float) override { return Answer(); }
  int FillArea(int, int*, float*) override { return Answer(); }
  int DrawImage(float, float, int, ORXPixelImage*) override { return Answer(); }
  int DefineColor(int, float, float, float) override { return Answer(); }
  int SetLineColor(int) override { return Answer(); }
  int SetFillColor(int) override { return Answer(); }
  int SetLineWidth(float) override { return Answer(); }
  int SetFillRule(int) override { return Answer(); }

private:
  int Answer() noexcept {
    ++calls;
    return result;
  }

  const int result;
  bool hasPage = false;
};

}  // namespace orxtests
