#include "graphics/GraphicsStates.h"

namespace orxeps {

namespace {

// Each product and sum in double precision, from left to right.
double Sum(double xTerm, double yTerm, double translation) noexcept {
  return xTerm + yTerm + translation;
}

}  // namespace

FloatPoint TransformPoint(const ORXMath3x3Matrix& matrix, FloatPoint point) noexcept {
  const ORXMathVector first = matrix.GetFirstColumn();
  const ORXMathVector second = matrix.GetSecondColumn();
  const double x = point.x;
  const double y = point.y;
  return {static_cast<float>(Sum(first.x * x, first.y * y, first.z)),
          static_cast<float>(Sum(second.x * x, second.y * y, second.z))};
}

FloatPoint TransformDisplacement(const ORXMath3x3Matrix& matrix, FloatPoint displacement) noexcept {
  const ORXMathVector first = matrix.GetFirstColumn();
  const ORXMathVector second = matrix.GetSecondColumn();
  const double dx = displacement.x;
  const double dy = displacement.y;
  return {static_cast<float>(first.x * dx + first.y * dy),
          static_cast<float>(second.x * dx + second.y * dy)};
}

bool GraphicsStates::Save() {
  if (saved.size() >= kMaxSavedStates) return false;
  saved.push_back(current);
  return true;
}

void GraphicsStates::Restore() noexcept {
  if (saved.empty()) return;
  current = saved.back();
  saved.pop_back();
  buffer.Truncate(current.path.End());
}

void GraphicsStates::ClearPath() noexcept {
  const std::size_t floor = saved.empty() ? 0 : saved.back().path.End();
  current.path = {floor, 0};
  buffer.Truncate(floor);
}

}  // namespace orxeps
