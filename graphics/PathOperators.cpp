// Operators that build the current path. Every point is mapped through the transformation matrix
// when it is added; curves become straight segments at once.

#include "graphics/ArcAngles.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

// Coordinates are taken from the stack in reverse.
FloatPoint TakePoint(ORXPrintEPSInterpreter& interpreter) noexcept {
  const float y = TakeNumber(interpreter);
  const float x = TakeNumber(interpreter);
  return {x, y};
}

ResultCode PathIsFull(ORXPrintEPSInterpreter& interpreter) noexcept {
  return RaiseError(interpreter, "limitcheck");
}

// x y -> a point at (x, y)
ResultCode AddPoint(ORXPrintEPSInterpreter& interpreter, PathPointKind kind) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  GraphicsStates& graphics = interpreter.graphics;
  const FloatPoint point = TransformPoint(graphics.current.ctm, TakePoint(interpreter));
  if (!graphics.HasRoomFor(1)) return PathIsFull(interpreter);
  graphics.AppendPoint(point.x, point.y, kind);
  return ResultCode::Ran;
}

// dx dy -> a point so far from the current point
ResultCode AddRelativePoint(ORXPrintEPSInterpreter& interpreter, PathPointKind kind) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  GraphicsStates& graphics = interpreter.graphics;
  const FloatPoint move = TransformDisplacement(graphics.current.ctm, TakePoint(interpreter));
  if (!graphics.HasRoomFor(1)) return PathIsFull(interpreter);
  graphics.AppendPoint(graphics.current.currentX + static_cast<double>(move.x),
                       graphics.current.currentY + static_cast<double>(move.y), kind);
  return ResultCode::Ran;
}

}  // namespace

// newpath ->
ResultCode NewPath(ORXPrintEPSInterpreter& interpreter) {
  interpreter.graphics.ClearPath();
  return ResultCode::Ran;
}

// x y moveto ->
ResultCode MoveTo(ORXPrintEPSInterpreter& interpreter) {
  return AddPoint(interpreter, PathPointKind::Move);
}

// x y lineto ->
ResultCode LineTo(ORXPrintEPSInterpreter& interpreter) {
  return AddPoint(interpreter, PathPointKind::Line);
}

// dx dy rmoveto ->
ResultCode RMoveTo(ORXPrintEPSInterpreter& interpreter) {
  return AddRelativePoint(interpreter, PathPointKind::Move);
}

// dx dy rlineto ->
ResultCode RLineTo(ORXPrintEPSInterpreter& interpreter) {
  return AddRelativePoint(interpreter, PathPointKind::Line);
}

// closepath ->; a line to where the subpath began. Without a beginning in the path it does nothing.
ResultCode ClosePath(ORXPrintEPSInterpreter& interpreter) {
  GraphicsStates& graphics = interpreter.graphics;
  const std::int32_t start = graphics.current.subpathStart;
  if (start < 1 || static_cast<std::size_t>(start) > graphics.PathCount()) return ResultCode::Ran;
  if (!graphics.HasRoomFor(1)) return PathIsFull(interpreter);
  const PathPoint point = graphics.PathAt(static_cast<std::size_t>(start));
  graphics.AppendPoint(point.x, point.y, PathPointKind::Line);
  return ResultCode::Ran;
}

// currentpoint -> x y, in device space
ResultCode CurrentPoint(ORXPrintEPSInterpreter& interpreter) {
  PushReal(interpreter, static_cast<float>(interpreter.graphics.current.currentX));
  return PushReal(interpreter, static_cast<float>(interpreter.graphics.current.currentY));
}

namespace {

constexpr int kCurveSegments = 10;

// One coordinate of a cubic Bezier curve, in single precision and in this order of operations.
float CurveCoordinate(float t, float p0, float p1, float p2, float p3) noexcept {
  const float s = 1.0F - t;
  const float k = 3.0F * t;
  return ((k * s * s * p1 + s * s * s * p0) + k * t * s * p2) + t * t * t * p3;
}

}  // namespace

// x1 y1 x2 y2 x3 y3 curveto ->; eleven points, the first of them the current point
ResultCode CurveTo(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 6)) return StackUnderflow(interpreter);
  const FloatPoint user3 = TakePoint(interpreter);
  const FloatPoint user2 = TakePoint(interpreter);
  const FloatPoint user1 = TakePoint(interpreter);
  GraphicsStates& graphics = interpreter.graphics;
  if (graphics.PathCount() == 0) return RaiseError(interpreter, "No Current Point");
  if (!graphics.HasRoomFor(kCurveSegments + 1)) return PathIsFull(interpreter);
  const FloatPoint p0 = {static_cast<float>(graphics.current.currentX),
                         static_cast<float>(graphics.current.currentY)};
  const FloatPoint p1 = TransformPoint(graphics.current.ctm, user1);
  const FloatPoint p2 = TransformPoint(graphics.current.ctm, user2);
  const FloatPoint p3 = TransformPoint(graphics.current.ctm, user3);
  for (int i = 0; i <= kCurveSegments; ++i) {
    const auto t = static_cast<float>(i / 10.0);
    graphics.AppendPoint(CurveCoordinate(t, p0.x, p1.x, p2.x, p3.x),
                         CurveCoordinate(t, p0.y, p1.y, p2.y, p3.y), PathPointKind::Line);
  }
  return ResultCode::Ran;
}

namespace {

constexpr int kArcSegments = 60;

struct Circle {
  FloatPoint center;
  float radius;
};

// The point of a circle at an angle in degrees, in user space.
FloatPoint PointOnCircle(const Circle& circle, float angle) noexcept {
  const auto radians = static_cast<float>(static_cast<double>(angle) * ORXPI / 180.0);
  return {std::cos(radians) * circle.radius + circle.center.x,
          std::sin(radians) * circle.radius + circle.center.y};
}

// x y r angle1 angle2 -> 61 points from angle1 on, behind a Move when the path is empty
ResultCode AddArc(ORXPrintEPSInterpreter& interpreter, ArcDirection direction) {
  if (!HasOperands(interpreter, 5)) return StackUnderflow(interpreter);
  float last = TakeNumber(interpreter);
  const float first = TakeNumber(interpreter);
  const float radius = TakeNumber(interpreter);
  const Circle circle = {TakePoint(interpreter), radius};
  GraphicsStates& graphics = interpreter.graphics;
  if (!graphics.HasRoomFor(kArcSegments + 2)) return PathIsFull(interpreter);
  last = OrderedEndAngle(first, last, direction);
  // The step is formed from the sweep's size and taken in the arc's direction, so that it rounds
  // alike both ways.
  const float sweep = direction == ArcDirection::CounterClockwise ? last - first : first - last;
  const auto step = static_cast<float>(static_cast<double>(sweep) / 60.0);
  const auto append = [&](float angle, PathPointKind kind) {
    const FloatPoint point = TransformPoint(graphics.current.ctm, PointOnCircle(circle, angle));
    graphics.AppendPoint(point.x, point.y, kind);
  };
  if (graphics.PathCount() == 0) append(first, PathPointKind::Move);
  float angle = first;
  for (int i = 0; i <= kArcSegments; ++i) {
    append(angle, PathPointKind::Line);
    angle = direction == ArcDirection::CounterClockwise ? angle + step : angle - step;
  }
  return ResultCode::Ran;
}

}  // namespace

// x y r angle1 angle2 arc ->
ResultCode Arc(ORXPrintEPSInterpreter& interpreter) {
  return AddArc(interpreter, ArcDirection::CounterClockwise);
}

// x y r angle1 angle2 arcn ->
ResultCode ArcN(ORXPrintEPSInterpreter& interpreter) {
  return AddArc(interpreter, ArcDirection::Clockwise);
}

}  // namespace orxeps::operators
