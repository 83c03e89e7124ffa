#include "orxprint/JsonText.h"

#include <cmath>

#include "drawing/Text.h"

namespace orxprint {

using orxdrawing::Box;
using orxdrawing::kPointsPerMillimetre;
using orxdrawing::ShortNumber;

// No negative zero comes out.
double Rounded(double value) { return std::round(value * 1000) / 1000 + 0.0; }

Json MillimetresOf(const Box& box) {
  const auto millimetres = [](double points) { return Rounded(points / kPointsPerMillimetre); };
  return {{"leftMm", millimetres(box.left)},
          {"bottomMm", millimetres(box.bottom)},
          {"rightMm", millimetres(box.right)},
          {"topMm", millimetres(box.top)}};
}

std::string DescribeInMillimetres(const Box& box) {
  const auto corner = [](double x, double y) {
    return ShortNumber(Rounded(x / kPointsPerMillimetre)) + " " +
           ShortNumber(Rounded(y / kPointsPerMillimetre));
  };
  return corner(box.left, box.bottom) + " to " + corner(box.right, box.top) + " mm";
}

std::string Dump(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace orxprint
