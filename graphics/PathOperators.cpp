// Operators that build the current path. Every point is mapped through the transformation matrix
// when it is added; curves become straight segments at once.

#include <array>

#include "graphics/ArcAngles.h"
#include "graphics/GraphicsOperators.h"
#include "graphics/PointOperands.h"
#include "graphics/SineCosine.h"
#include "graphics/WideVectors.h"

namespace orxeps::operators {

namespace {

ResultCode PathIsFull(Machine& machine) noexcept { return RaiseError(machine, "limitcheck"); }

// x y -> a point at (x, y)
ResultCode AddPoint(Machine& machine, GraphicsStates& states, PathPointKind kind) {
  const FloatPoint point = TransformPoint(states.current.ctm, TakePoint(machine));
  if (!states.HasRoomFor(1)) return PathIsFull(machine);
  states.AppendPoint(point.x, point.y, kind);
  return ResultCode::Ran;
}

// dx dy -> a point so far from the current point
ResultCode AddRelativePoint(Machine& machine, GraphicsStates& states, PathPointKind kind) {
  const FloatPoint move = TransformDisplacement(states.current.ctm, TakePoint(machine));
  if (!states.HasRoomFor(1)) return PathIsFull(machine);
  states.AppendPoint(states.current.currentX + static_cast<double>(move.x),
                     states.current.currentY + static_cast<double>(move.y), kind);
  return ResultCode::Ran;
}

}  // namespace

// newpath ->
ResultCode NewPath(Canvas& canvas) {
  canvas.states.ClearPath();
  return ResultCode::Ran;
}

// x y moveto ->
ResultCode MoveTo(Machine& machine, Canvas& canvas) {
  return AddPoint(machine, canvas.states, PathPointKind::Move);
}

// x y lineto ->
ResultCode LineTo(Machine& machine, Canvas& canvas) {
  return AddPoint(machine, canvas.states, PathPointKind::Line);
}

// dx dy rmoveto ->
ResultCode RMoveTo(Machine& machine, Canvas& canvas) {
  return AddRelativePoint(machine, canvas.states, PathPointKind::Move);
}

// dx dy rlineto ->
ResultCode RLineTo(Machine& machine, Canvas& canvas) {
  return AddRelativePoint(machine, canvas.states, PathPointKind::Line);
}

// closepath ->; a line to where the subpath began. Without a beginning in the path it does nothing.
ResultCode ClosePath(Machine& machine, Canvas& canvas) {
  GraphicsStates& states = canvas.states;
  const std::int32_t start = states.current.subpathStart;
  if (start < 1 || static_cast<std::size_t>(start) > states.PathCount()) return ResultCode::Ran;
  if (!states.HasRoomFor(1)) return PathIsFull(machine);
  const PathPoint point = states.PathAt(static_cast<std::size_t>(start));
  states.AppendPoint(point.x, point.y, PathPointKind::Line);
  return ResultCode::Ran;
}

// currentpoint -> x y, in device space
ResultCode CurrentPoint(Machine& machine, Canvas& canvas) {
  const ORXMathVector first = canvas.Current().ctm.GetFirstColumn();
  const ORXMathVector second = canvas.Current().ctm.GetSecondColumn();
  const bool isUserSpace = first.x == 1.0 && first.y == 0.0 && first.z == 0.0 && second.x == 0.0 &&
                           second.y == 1.0 && second.z == 0.0;
  if (!isUserSpace) NoteDeparture(machine, ORXNoteKind::DevicePoint);
  return PushPoint(machine, {static_cast<float>(canvas.Current().currentX),
                             static_cast<float>(canvas.Current().currentY)});
}

namespace {

constexpr std::size_t kCurveSegments = 10;

constexpr std::array<float, kCurveSegments + 1> MakeCurveSteps() {
  std::array<float, kCurveSegments + 1> steps{};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    steps[i] = static_cast<float>(static_cast<double>(i) / 10.0);
  }
  return steps;
}
constexpr std::array<float, kCurveSegments + 1> kCurveSteps = MakeCurveSteps();

// One coordinate of a cubic Bezier curve, in single precision and in this order of operations.
float CurveCoordinate(float t, float p0, float p1, float p2, float p3) noexcept {
  const float s = 1.0F - t;
  const float k = 3.0F * t;
  return ((k * s * s * p1 + s * s * s * p0) + k * t * s * p2) + t * t * t * p3;
}

}  // namespace

// x1 y1 x2 y2 x3 y3 curveto ->; eleven points, the first of them the current point
ResultCode CurveTo(Machine& machine, Canvas& canvas) {
  const FloatPoint user3 = TakePoint(machine);
  const FloatPoint user2 = TakePoint(machine);
  const FloatPoint user1 = TakePoint(machine);
  GraphicsStates& states = canvas.states;
  if (states.PathCount() == 0) return RaiseError(machine, "No Current Point");
  if (!states.HasRoomFor(kCurveSegments + 1)) return PathIsFull(machine);
  const FloatPoint p0 = {static_cast<float>(states.current.currentX),
                         static_cast<float>(states.current.currentY)};
  const FloatPoint p1 = TransformPoint(states.current.ctm, user1);
  const FloatPoint p2 = TransformPoint(states.current.ctm, user2);
  const FloatPoint p3 = TransformPoint(states.current.ctm, user3);
  std::array<float, kCurveSegments + 1> xs;
  std::array<float, kCurveSegments + 1> ys;
  for (std::size_t i = 0; i < xs.size(); ++i) {
    const float t = kCurveSteps[i];
    xs[i] = CurveCoordinate(t, p0.x, p1.x, p2.x, p3.x);
    ys[i] = CurveCoordinate(t, p0.y, p1.y, p2.y, p3.y);
  }
  states.AppendLines(xs, ys);
  return ResultCode::Ran;
}

namespace {

constexpr std::size_t kArcSegments = 60;
constexpr std::size_t kArcPoints = kArcSegments + 1;

using ArcValues = std::array<float, kArcPoints>;

// The angles of an arc's points, in radians, from the first on. The step is formed from the sweep's
// size and taken in the arc's direction, so that it rounds alike both ways.
ArcValues ArcRadians(float first, float last, ArcDirection direction) noexcept {
  const bool turnsLeft = direction == ArcDirection::CounterClockwise;
  const float sweep = turnsLeft ? last - first : first - last;
  const auto size = static_cast<float>(static_cast<double>(sweep) / 60.0);
  const float step = turnsLeft ? size : -size;
  ArcValues angles;
  float angle = first;
  for (float& result : angles) {
    result = angle;
    angle += step;
  }
  for (float& result : angles) {
    result = static_cast<float>(static_cast<double>(result) * ORXPI / 180.0);
  }
  return angles;
}

// x y r angle1 angle2 -> 61 points from angle1 on, behind a Move when the path is empty
ORX_WIDE_VECTORS ResultCode AddArc(Machine& machine, GraphicsStates& states,
                                   ArcDirection direction) {
  const float given = TakeNumber(machine);
  const float first = TakeNumber(machine);
  const float radius = TakeNumber(machine);
  const FloatPoint center = TakePoint(machine);
  if (!states.HasRoomFor(kArcPoints + 1)) return PathIsFull(machine);
  const ArcValues radians = ArcRadians(first, OrderedEndAngle(first, given, direction), direction);
  ArcValues sines;
  ArcValues cosines;
  SinesAndCosines(radians, sines, cosines);
  const PointMap map(states.current.ctm);
  ArcValues xs;
  ArcValues ys;
  for (std::size_t i = 0; i < kArcPoints; ++i) {
    const FloatPoint point =
        map.Point(cosines[i] * radius + center.x, sines[i] * radius + center.y);
    xs[i] = point.x;
    ys[i] = point.y;
  }
  if (states.PathCount() == 0) states.AppendPoint(xs[0], ys[0], PathPointKind::Move);
  states.AppendLines(xs, ys);
  return ResultCode::Ran;
}

}  // namespace

// x y r angle1 angle2 arc ->
ResultCode Arc(Machine& machine, Canvas& canvas) {
  return AddArc(machine, canvas.states, ArcDirection::CounterClockwise);
}

// x y r angle1 angle2 arcn ->
ResultCode ArcN(Machine& machine, Canvas& canvas) {
  return AddArc(machine, canvas.states, ArcDirection::Clockwise);
}

}  // namespace orxeps::operators
