#include "orxprint/PlaceOption.h"

#include <charconv>
#include <cmath>

namespace orxprint {

namespace {

// The number that the text begins with, which is taken away from it.
std::optional<double> TakeNumber(std::string_view& text) {
  double number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  return number;
}

}  // namespace

std::optional<PlaceOption> ParsePlace(std::string_view text) {
  const std::optional<double> x = TakeNumber(text);
  if (!x || !text.starts_with(',')) return std::nullopt;
  text.remove_prefix(1);
  const std::optional<double> y = TakeNumber(text);
  if (!y) return std::nullopt;
  const orxdrawing::Point at{*x, *y};
  if (text.empty()) return PlaceOption{at, std::nullopt};
  if (text == "mm") return PlaceOption{at, 1.0};
  if (text == "pt") return PlaceOption{at, 1 / orxdrawing::kPointsPerMillimetre};
  return std::nullopt;
}

}  // namespace orxprint
