// Hands calls on to what gathers shapes, has what is painted judged, and knows which place in the
// document each shape is from.
//
// A stroke is complete only when the next call shows it, so its place is remembered from its
// points.
#pragma once

#include "drawing/LossJudge.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/PrintGenerator.h"

namespace orxweb {

class PlacedGenerator final : public PrintGenerator {
public:
  // Writes the place of each shape to `placeOfShape` before `gatherer` draws it. Borrows all; the
  // judge may be null.
  PlacedGenerator(PrintGenerator& gatherer, ORXWatchable& interpreter, ORXPlace& placeOfShape,
                  orxdrawing::LossJudge* lossJudge)
      : next(gatherer), watchable(interpreter), shown(placeOfShape), judge(lossJudge) {}

  int MoveTo(float x, float y) override {
    ofStroke = watchable.Place();
    return next.MoveTo(x, y);
  }
  int LineTo(float x, float y) override { return next.LineTo(x, y); }
  // The stroke before has been drawn by the attribute calls that every fill begins with.
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    if (judge) judge->Filling(watchable);
    shown = watchable.Place();
    return next.FillArea(contourCount, pointCounts, points);
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    if (judge) judge->DrawingImage(x, y, *image, watchable);
    EndStroke().SetLineCap(lineCap);
    shown = watchable.Place();
    return next.DrawImage(x, y, flags, image);
  }
  int NewPage() override { return EndStroke().NewPage(); }
  int DefineColor(int index, float red, float green, float blue) override {
    return EndStroke().DefineColor(index, red, green, blue);
  }
  int SetLineColor(int index) override { return EndStroke().SetLineColor(index); }
  int SetFillColor(int index) override { return EndStroke().SetFillColor(index); }
  int SetLineWidth(float width) override {
    if (judge) judge->Stroking(watchable);
    return EndStroke().SetLineWidth(width);
  }
  int SetLineCap(int cap) override { return EndStroke().SetLineCap(lineCap = cap); }
  int SetFillRule(int rule) override { return EndStroke().SetFillRule(rule); }
  // The gatherer's next shape is the stroke that is open, if one is.
  PrintGenerator& EndStroke() {
    shown = ofStroke;
    return next;
  }

private:
  PrintGenerator& next;
  ORXWatchable& watchable;
  ORXPlace& shown;
  orxdrawing::LossJudge* judge;
  ORXPlace ofStroke;
  int lineCap = 0;
};

}  // namespace orxweb
