// A generator that drops everything, for runs whose time alone is of interest.
//
// It keeps nothing and answers 0 to every call.
#pragma once

#include "host/PrintGenerator.h"

namespace orxdrawing {

class NullGenerator final : public PrintGenerator {
public:
  int NewPage() override { return 0; }
  int MoveTo(float, float) override { return 0; }
  int LineTo(float, float) override { return 0; }
  int FillArea(int, int*, float*) override { return 0; }
  int DrawImage(float, float, int, ORXPixelImage*) override { return 0; }
  int DefineColor(int, float, float, float) override { return 0; }
  int SetLineColor(int) override { return 0; }
  int SetFillColor(int) override { return 0; }
  int SetLineWidth(float) override { return 0; }
  int SetLineCap(int) override { return 0; }
  int SetFillRule(int) override { return 0; }
};

}  // namespace orxdrawing
