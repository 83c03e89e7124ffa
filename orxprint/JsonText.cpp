#include "orxprint/JsonText.h"

namespace orxprint {

using orxdrawing::Box;
using orxdrawing::kPointsPerMillimetre;

Json MillimetresOf(const Box& box) {
  const auto millimetres = [](double points) { return Rounded(points / kPointsPerMillimetre); };
  return {{"leftMm", millimetres(box.left)},
          {"bottomMm", millimetres(box.bottom)},
          {"rightMm", millimetres(box.right)},
          {"topMm", millimetres(box.top)}};
}

std::string Dump(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace orxprint
