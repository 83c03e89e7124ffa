// In builds without the library that writes PNG, pages say that there is no picture.
#include "orxprint/Thumbnail.h"

namespace orxprint {

std::string MakeThumbnail(Session&, const Box&, Units) { return ""; }

}  // namespace orxprint
