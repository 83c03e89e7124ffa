#include "drawing/CurveFinder.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orxdrawing {

namespace {

constexpr std::size_t kSteps = kCurvePoints - 1;
// Points of a curve are off it by rounding only, which is this part of the tolerance at most.
constexpr double kRoundingShare = 0.05;

// What each of a curve's four points counts for at one step.
struct Weights {
  double begin;
  double first;
  double second;
  double end;
};

constexpr std::array<Weights, kCurvePoints> MakeWeights() {
  std::array<Weights, kCurvePoints> weights{};
  for (std::size_t i = 0; i < kCurvePoints; ++i) {
    const double t = static_cast<double>(i) / kSteps;
    const double s = 1 - t;
    weights[i] = {s * s * s, 3 * t * s * s, 3 * t * t * s, t * t * t};
  }
  return weights;
}

constexpr std::array<Weights, kCurvePoints> kWeights = MakeWeights();

// Of the least squares, which are the same for both control points.
struct Normal {
  double own = 0;
  double shared = 0;
};

constexpr Normal MakeNormal() {
  Normal normal;
  for (const Weights& weight : kWeights) {
    normal.own += weight.first * weight.first;
    normal.shared += weight.first * weight.second;
  }
  return normal;
}

constexpr Normal kNormal = MakeNormal();
constexpr double kDeterminant = kNormal.own * kNormal.own - kNormal.shared * kNormal.shared;

// One axis of the curve.
struct Axis {
  double begin;
  double first;
  double second;
  double end;

  [[nodiscard]] double At(std::size_t step) const {
    const Weights& weight = kWeights[step];
    return weight.begin * begin + weight.first * first + weight.second * second + weight.end * end;
  }
};

// The curve between the outer points that comes closest to the others.
Axis Fit(std::span<const float> values, std::size_t offset) {
  const auto value = [&](std::size_t step) -> double { return values[2 * step + offset]; };
  Axis axis{value(0), 0, 0, value(kSteps)};
  double first = 0;
  double second = 0;
  for (std::size_t i = 1; i < kSteps; ++i) {
    const double rest = value(i) - axis.At(i);
    first += kWeights[i].first * rest;
    second += kWeights[i].second * rest;
  }
  axis.first = (kNormal.own * first - kNormal.shared * second) / kDeterminant;
  axis.second = (kNormal.own * second - kNormal.shared * first) / kDeterminant;
  return axis;
}

bool GoesThrough(const Axis& axis, std::span<const float> values, std::size_t offset,
                 double tolerance) {
  for (std::size_t i = 1; i < kSteps; ++i) {
    if (!(std::abs(axis.At(i) - values[2 * i + offset]) <= tolerance)) return false;
  }
  return true;
}

// A chord is away from its curve by at most an eighth of the second derivative times the square of
// the step.
double MostBetweenChordAndCurve(const Axis& x, const Axis& y) {
  const double atBegin =
      std::hypot(x.begin - 2 * x.first + x.second, y.begin - 2 * y.first + y.second);
  const double atEnd = std::hypot(x.first - 2 * x.second + x.end, y.first - 2 * y.second + y.end);
  return 6 * std::max(atBegin, atEnd) / (8 * kSteps * kSteps);
}

// A mitre reaches half the width, divided by the cosine of half the turn.
bool HasSharpJoin(std::span<const float> coordinates, const CurveLimits& limits) {
  const double ofHalf = limits.width / (limits.width + 2 * limits.distance);
  const double leastCosine = 2 * ofHalf * ofHalf - 1;
  const auto chord = [&](std::size_t i) {
    return Point{double{coordinates[i + 2]} - coordinates[i],
                 double{coordinates[i + 3]} - coordinates[i + 1]};
  };
  for (std::size_t i = 2; i + 2 < coordinates.size(); i += 2) {
    const Point before = chord(i - 2);
    const Point after = chord(i);
    const double lengths = std::hypot(before.x, before.y) * std::hypot(after.x, after.y);
    if (before.x * after.x + before.y * after.y < leastCosine * lengths) return true;
  }
  return false;
}

}  // namespace

std::optional<CurveControls> FindCurve(std::span<const float> coordinates,
                                       const CurveLimits& limits) {
  const Axis x = Fit(coordinates, 0);
  const Axis y = Fit(coordinates, 1);
  const double rounding = kRoundingShare * limits.distance;
  if (!GoesThrough(x, coordinates, 0, rounding) || !GoesThrough(y, coordinates, 1, rounding) ||
      MostBetweenChordAndCurve(x, y) > limits.distance) {
    return std::nullopt;
  }
  if (limits.width > 0 && HasSharpJoin(coordinates, limits)) return std::nullopt;
  return CurveControls{{x.first, y.first}, {x.second, y.second}};
}

}  // namespace orxdrawing
