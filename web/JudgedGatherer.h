// Gathers shapes with their places and has what is painted judged before it is drawn.
//
// Borrows the teller, the interpreter and the judge, for the time of the pass.
#pragma once

#include "drawing/LossJudge.h"
#include "drawing/PlacedShapes.h"
#include "host/ORXInterpreterWatcher.h"

namespace orxweb {

class JudgedGatherer final : public orxdrawing::PlacedGatherer {
public:
  // The judge may be null.
  JudgedGatherer(orxdrawing::PlaceTeller& teller, ORXWatchable& interpreter,
                 orxdrawing::LossJudge* lossJudge)
      : PlacedGatherer(teller), watchable(interpreter), judge(lossJudge) {}

  // Every stroke begins with its width.
  int SetLineWidth(float width) override {
    if (judge) judge->Stroking(watchable);
    return PlacedGatherer::SetLineWidth(width);
  }
  int FillArea(int contourCount, int* pointCounts, float* points) override {
    if (judge) judge->Filling(watchable);
    return PlacedGatherer::FillArea(contourCount, pointCounts, points);
  }
  int DrawImage(float x, float y, int flags, ORXPixelImage* image) override {
    if (judge) judge->DrawingImage(x, y, *image, watchable);
    return PlacedGatherer::DrawImage(x, y, flags, image);
  }

private:
  ORXWatchable& watchable;
  orxdrawing::LossJudge* judge;
};

}  // namespace orxweb
