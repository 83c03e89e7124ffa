// Points and boxes of the plane that drawings lie in, y upwards; in points, 72 to the inch, where
// nothing else is said.
#pragma once

namespace orxdrawing {

inline constexpr double kPointsPerMillimetre = 72.0 / 25.4;

struct Point {
  double x = 0;
  double y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

struct Box {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;

  [[nodiscard]] double Width() const { return right - left; }
  [[nodiscard]] double Height() const { return top - bottom; }
  friend bool operator==(const Box&, const Box&) = default;
};

}  // namespace orxdrawing
