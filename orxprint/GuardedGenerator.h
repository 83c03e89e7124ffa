// The generator of a run under control: each call passes the control first, so that nothing is
// drawn once the run is being stopped, and nothing that the host's own code throws reaches the
// library.
#pragma once

#include "host/PrintGenerator.h"
#include "orxprint/RunControl.h"

namespace orxprint {

// Hands every call to a generator of type Inner, whose calls the compiler can then see through.
// Borrows both.
template <typename Inner>
class GuardedGenerator final : public PrintGenerator {
public:
  GuardedGenerator(RunControl& runControl, Inner& generator) noexcept
      : control(runControl), inner(generator) {}

  int NewPage() override {
    return control.Enter([&] { inner.NewPage(); });
  }
  int MoveTo(float x, float y) override {
    return control.Enter([&] { inner.MoveTo(x, y); });
  }
  int LineTo(float x, float y) override {
    return control.Enter([&] { inner.LineTo(x, y); });
  }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    return control.Enter([&] {
      if (control.WantsNotes()) control.judge->Filling(*control.watched);
      inner.FillArea(contourCount, pointCounts, points);
    });
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    return control.Enter([&] {
      if (control.WantsNotes()) control.judge->DrawingImage(x, y, *image, *control.watched);
      inner.DrawImage(x, y, flags, image);
    });
  }
  int DefineColor(int index, float red, float green, float blue) override {
    return control.Enter([&] { inner.DefineColor(index, red, green, blue); });
  }
  int SetLineColor(int index) override {
    return control.Enter([&] { inner.SetLineColor(index); });
  }
  int SetFillColor(int index) override {
    return control.Enter([&] { inner.SetFillColor(index); });
  }
  int SetLineWidth(float width) override {
    return control.Enter([&] {
      if (control.WantsNotes()) control.judge->Stroking(*control.watched);
      inner.SetLineWidth(width);
    });
  }
  int SetLineCap(int cap) override {
    return control.Enter([&] { inner.SetLineCap(cap); });
  }
  int SetFillRule(int rule) override {
    return control.Enter([&] { inner.SetFillRule(rule); });
  }

private:
  RunControl& control;
  Inner& inner;
};

}  // namespace orxprint
