#include "orxprint/Workers.h"

namespace orxprint {

// A process here begins anew; it is never the copy of another.
bool MayShareOut() noexcept { return false; }

void ShareOut(const SharedWork& /*shared*/) {}

}  // namespace orxprint
