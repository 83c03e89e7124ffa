#include "drawing/Picking.h"

#include "drawing/HitTest.h"

namespace orxdrawing {

template <typename AnyShape>
void PickingSink::Take(const AnyShape& shape) {
  if (!(DistanceTo(shape, target, pointsPerUnit / kPointsPerMillimetre) <= within)) return;
  if (found.size() == kMost) {
    found.pop_front();
    ++leftOut;
  }
  found.push_back(RecordOf(shape, pointsPerUnit));
  found.back().page = Page();
  found.back().place = Place();
}

template void PickingSink::Take(const StrokeShape&);
template void PickingSink::Take(const FillShape&);
template void PickingSink::Take(const ImageShape&);

}  // namespace orxdrawing
