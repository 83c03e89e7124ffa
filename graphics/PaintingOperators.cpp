// Operators that send the path to the generator, and those that set what painting sends along. Here
// coordinates become output units.

#include <string_view>
#include <vector>

#include "host/PrintGenerator.h"
#include "plugin/Units.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

// Every colour goes out under this index.
constexpr int kColorIndex = 255;

enum class FillRule : int { EvenOdd = 0, NonZeroWinding = 1 };

// Device space to output units: in double precision, rounded to single.
FloatPoint ToOutput(const PathPoint& point, double unitScale) noexcept {
  return {static_cast<float>(point.x * unitScale), static_cast<float>(point.y * unitScale)};
}

void DefineCurrentColor(ORXPrintEPSInterpreter& interpreter) {
  const GraphicsState& state = interpreter.graphics.current;
  interpreter.generator->DefineColor(kColorIndex, state.red, state.green, state.blue);
}

// Millimetres, whatever the unit of coordinates.
float LineWidthToSend(const GraphicsState& state) noexcept {
  return UnitsAreMillimetres() ? state.lineWidth : state.lineWidth * 25.4F / 72.0F;
}

}  // namespace

// stroke ->; the path goes out as polylines and is emptied
ResultCode Stroke(ORXPrintEPSInterpreter& interpreter) {
  PrintGenerator* generator = interpreter.generator;
  if (!generator) return ResultCode::Failed;
  GraphicsStates& graphics = interpreter.graphics;
  DefineCurrentColor(interpreter);
  generator->SetLineColor(kColorIndex);
  generator->SetLineCap(graphics.current.lineCap);
  generator->SetLineWidth(LineWidthToSend(graphics.current));
  for (std::size_t i = 1; i <= graphics.PathCount(); ++i) {
    const PathPoint& point = graphics.PathAt(i);
    const FloatPoint output = ToOutput(point, interpreter.unitScale);
    if (point.kind == PathPointKind::Move) {
      generator->MoveTo(output.x, output.y);
    } else {
      generator->LineTo(output.x, output.y);
    }
  }
  graphics.ClearPath();
  return ResultCode::Ran;
}

namespace {

// The path in output units: the coordinates of all points, and how many points each contour has. A
// Move begins a contour.
struct Contours {
  std::vector<float> coordinates;
  std::vector<int> pointCounts;
};

Contours MakeContours(const GraphicsStates& graphics, double unitScale) {
  Contours contours;
  contours.coordinates.reserve(graphics.PathCount() * 2);
  for (std::size_t i = 1; i <= graphics.PathCount(); ++i) {
    const PathPoint& point = graphics.PathAt(i);
    if (point.kind == PathPointKind::Move || contours.pointCounts.empty()) {
      contours.pointCounts.push_back(0);
    }
    ++contours.pointCounts.back();
    const FloatPoint output = ToOutput(point, unitScale);
    contours.coordinates.push_back(output.x);
    contours.coordinates.push_back(output.y);
  }
  return contours;
}

// The path goes out as one area and is emptied; an empty path sends its colour only.
ResultCode FillPath(ORXPrintEPSInterpreter& interpreter, FillRule rule) {
  PrintGenerator* generator = interpreter.generator;
  if (!generator) return ResultCode::Failed;
  GraphicsStates& graphics = interpreter.graphics;
  DefineCurrentColor(interpreter);
  generator->SetFillColor(kColorIndex);
  if (graphics.PathCount() == 0) return ResultCode::Failed;
  Contours contours = MakeContours(graphics, interpreter.unitScale);
  generator->SetFillRule(static_cast<int>(rule));
  generator->FillArea(static_cast<int>(contours.pointCounts.size()), contours.pointCounts.data(),
                      contours.coordinates.data());
  graphics.ClearPath();
  return ResultCode::Ran;
}

}  // namespace

// fill ->
ResultCode Fill(ORXPrintEPSInterpreter& interpreter) {
  return FillPath(interpreter, FillRule::NonZeroWinding);
}

// eofill ->
ResultCode EoFill(ORXPrintEPSInterpreter& interpreter) {
  return FillPath(interpreter, FillRule::EvenOdd);
}

// width setlinewidth ->; a width that is not positive is the default
ResultCode SetLineWidth(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  constexpr float kDefaultWidth = 0.1F;
  const float width = TakeNumber(interpreter);
  interpreter.graphics.current.lineWidth =
      width > 0.0F ? width * interpreter.unitScale : kDefaultWidth;
  return ResultCode::Ran;
}

// currentlinewidth -> width, in output units as it is kept
ResultCode CurrentLineWidth(ORXPrintEPSInterpreter& interpreter) {
  return PushReal(interpreter, interpreter.graphics.current.lineWidth);
}

// cap setlinecap ->; anything but an Integer counts as 0, an unknown cap changes nothing
ResultCode SetLineCap(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  constexpr std::int32_t kGeneratorCaps[] = {10, 12, 11};  // butt, round, projecting square
  const PSRef operand = TakeOperand(interpreter);
  const std::int32_t cap = operand->Is(PSObjectType::Integer) ? operand->intValue : 0;
  if (cap >= 0 && cap <= 2) interpreter.graphics.current.lineCap = kGeneratorCaps[cap];
  return ResultCode::Ran;
}

namespace {

// A component keeps its value when the operand is no number.
void TakeComponent(ORXPrintEPSInterpreter& interpreter, float& component) noexcept {
  const PSRef operand = TakeOperand(interpreter);
  if (operand->IsNumber()) component = NumberOf(*operand);
}

}  // namespace

// red green blue setrgbcolor ->
ResultCode SetRgbColor(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  GraphicsState& state = interpreter.graphics.current;
  TakeComponent(interpreter, state.blue);
  TakeComponent(interpreter, state.green);
  TakeComponent(interpreter, state.red);
  return ResultCode::Ran;
}

// grey setgray ->; with an operand that is no number everything takes the value of blue
ResultCode SetGray(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  GraphicsState& state = interpreter.graphics.current;
  TakeComponent(interpreter, state.blue);
  state.green = state.blue;
  state.red = state.blue;
  return ResultCode::Ran;
}

// x y width height rectclip ->; nothing is clipped, and arrays and strings stay
ResultCode RectClip(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 4)) return StackUnderflow(interpreter);
  if (interpreter.operandStack.Top()->IsNumber()) interpreter.operandStack.Drop(4);
  return ResultCode::Ran;
}

// any setlinejoin|setmiterlimit|setpagedevice ->; nothing is set
ResultCode IgnoreSetting(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  interpreter.operandStack.Drop(1);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
