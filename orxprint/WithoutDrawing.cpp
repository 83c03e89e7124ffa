// The command render in builds without a library to draw with.
#include "orxprint/Commands.h"
#include "orxprint/Messages.h"

namespace orxprint {

Status Render(const Plugin&, const CommonOptions&, const RenderOptions&) {
  Tell("this build of orxprint cannot draw: use info or trace");
  return Status::WrongUsage;
}

}  // namespace orxprint
