// Operators that send the path to the generator, and those that set what painting sends along.

#include "graphics/GraphicsOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// stroke ->
ResultCode Stroke(Machine& machine, Canvas& canvas) {
  if (!canvas.HasGenerator()) return ResultCode::Failed;
  machine.watch.CountWork(static_cast<std::int64_t>(canvas.states.PathCount()));
  canvas.Stroke();
  return ResultCode::Ran;
}

namespace {

ResultCode FillPath(Machine& machine, Canvas& canvas, FillRule rule) {
  if (!canvas.HasGenerator()) return ResultCode::Failed;
  machine.watch.CountWork(static_cast<std::int64_t>(canvas.states.PathCount()));
  return canvas.Fill(rule) ? ResultCode::Ran : ResultCode::Failed;
}

}  // namespace

// fill ->
ResultCode Fill(Machine& machine, Canvas& canvas) {
  return FillPath(machine, canvas, FillRule::NonZeroWinding);
}

// eofill ->
ResultCode EoFill(Machine& machine, Canvas& canvas) {
  return FillPath(machine, canvas, FillRule::EvenOdd);
}

// width setlinewidth ->; a width that is not positive is the default
ResultCode SetLineWidth(Machine& machine, Canvas& canvas) {
  constexpr float kDefaultWidth = 0.1F;
  const float width = TakeNumber(machine);
  canvas.Current().lineWidth = width > 0.0F ? width * canvas.unitScale : kDefaultWidth;
  if (width <= 0.0F) NoteDeparture(machine, ORXNoteKind::Hairline);
  return ResultCode::Ran;
}

// currentlinewidth -> width, in output units as it is kept
ResultCode CurrentLineWidth(Machine& machine, Canvas& canvas) {
  if (canvas.unitScale != 1.0F) NoteDeparture(machine, ORXNoteKind::OutputWidth);
  return PushReal(machine, canvas.Current().lineWidth);
}

// cap setlinecap ->; anything but an Integer counts as 0, an unknown cap changes nothing
ResultCode SetLineCap(Machine& machine, Canvas& canvas) {
  constexpr std::int32_t kGeneratorCaps[] = {10, 12, 11};  // butt, round, projecting square
  const PSRef operand = TakeOperand(machine);
  const std::int32_t cap = operand->Is(PSObjectType::Integer) ? operand->intValue : 0;
  if (cap >= 0 && cap <= 2) canvas.Current().lineCap = kGeneratorCaps[cap];
  return ResultCode::Ran;
}

namespace {

// A component keeps its value when the operand is no number.
void TakeComponent(Machine& machine, float& component) noexcept {
  const PSRef operand = TakeOperand(machine);
  if (operand->IsNumber()) component = NumberOf(*operand);
}

}  // namespace

// red green blue setrgbcolor ->
ResultCode SetRgbColor(Machine& machine, Canvas& canvas) {
  GraphicsState& state = canvas.Current();
  TakeComponent(machine, state.blue);
  TakeComponent(machine, state.green);
  TakeComponent(machine, state.red);
  return ResultCode::Ran;
}

// grey setgray ->; with an operand that is no number everything takes the value of blue
ResultCode SetGray(Machine& machine, Canvas& canvas) {
  GraphicsState& state = canvas.Current();
  TakeComponent(machine, state.blue);
  state.green = state.blue;
  state.red = state.blue;
  return ResultCode::Ran;
}

// x y width height rectclip ->; nothing is clipped, and arrays and strings stay
ResultCode RectClip(Machine& machine) {
  NoteDeparture(machine, ORXNoteKind::Ignored);
  if (machine.operandStack.Top()->IsNumber()) machine.operandStack.Drop(4);
  return ResultCode::Ran;
}

// any setlinejoin|setmiterlimit|setpagedevice ->; nothing is set
ResultCode IgnoreSetting(Machine& machine) {
  NoteDeparture(machine, ORXNoteKind::Ignored);
  machine.operandStack.Drop(1);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
