// Operators that save and restore the graphics state and work on matrices.
//
// "concat" reads the elements of an array as numbers; the other operators read and write their
// realValue, whatever their type.

#include <utility>

#include "graphics/GraphicsOperators.h"
#include "graphics/PointOperands.h"
#include "graphics/SineCosine.h"

namespace orxeps::operators {

namespace {

constexpr std::int32_t kMatrixElements = 6;

ORXMath3x3Matrix MakeMatrix(double a, double b, double c, double d, double tx, double ty) noexcept {
  return {a, b, 0.0, c, d, 0.0, tx, ty, 1.0};
}

bool HasMatrixElements(const PSObject& array) noexcept {
  return array.Parts().arrayElements.Count() >= kMatrixElements;
}

// The realValues of the first six elements. REQUIRES: HasMatrixElements(array).
struct MatrixElements {
  float a, b, c, d, tx, ty;

  explicit MatrixElements(const PSObject& array) noexcept
      : a(At(array, 1)),
        b(At(array, 2)),
        c(At(array, 3)),
        d(At(array, 4)),
        tx(At(array, 5)),
        ty(At(array, 6)) {}

  [[nodiscard]] ORXMath3x3Matrix ToMatrix() const noexcept {
    return MakeMatrix(a, b, c, d, tx, ty);
  }

private:
  static float At(const PSObject& array, std::int32_t position) noexcept {
    return array.Parts().arrayElements.At(position)->realValue;
  }
};

// The matrix acts first, in user space.
void ConcatToCtm(Canvas& canvas, const ORXMath3x3Matrix& matrix) noexcept {
  ORXMath3x3Matrix& ctm = canvas.Current().ctm;
  ctm = matrix * ctm;
}

// Integers count as 0 where only the realValue is read, and what is no number does where numbers
// are.
void NoteOddElements(const Machine& machine, const PSObject& array, PSObjectType odd) noexcept {
  if (!machine.watch.HasListener()) return;
  for (std::int32_t i = 1; i <= kMatrixElements; ++i) {
    const PSObject& element = *array.Parts().arrayElements.At(i);
    const bool isOdd =
        odd == PSObjectType::Integer
            ? element.Is(odd) && static_cast<float>(element.intValue) != element.realValue
            : !element.IsNumber();
    if (isOdd) return NoteDeparture(machine, ORXNoteKind::IntegerMatrix);
  }
}

bool TopIsArray(const Machine& machine) noexcept {
  return machine.operandStack.Top()->Is(PSObjectType::Array);
}

}  // namespace

// gsave ->
ResultCode GSave(Machine& machine, Canvas& canvas) {
  if (!canvas.states.Save()) return RaiseError(machine, "limitcheck");
  return ResultCode::Ran;
}

// grestore ->
ResultCode GRestore(Canvas& canvas) {
  canvas.states.Restore();
  return ResultCode::Ran;
}

// matrix concat ->
ResultCode Concat(Machine& machine, Canvas& canvas) {
  if (!TopIsArray(machine)) return RaiseError(machine, "Operand error : needed array");
  const PSRef array = TakeOperand(machine);
  const ObjectList& elements = array->Parts().arrayElements;
  if (elements.Count() != kMatrixElements) {
    return RaiseError(machine, "Operand error : Array size needs to be 6.");
  }
  NoteOddElements(machine, *array, PSObjectType::None);
  const auto number = [&elements](std::int32_t position) {
    return static_cast<double>(NumberOf(*elements.At(position)));
  };
  ConcatToCtm(canvas, MakeMatrix(number(1), number(2), number(3), number(4), number(5), number(6)));
  return ResultCode::Ran;
}

// matrix -> a new identity matrix
ResultCode Matrix(Machine& machine) {
  PSRef array = machine.heap.Make(PSObjectType::Array);
  ObjectList& elements = array->OwnParts().arrayElements;
  elements.Reserve(kMatrixElements);
  for (const float value : {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}) {
    PSRef element = machine.heap.Make(PSObjectType::Real);
    element->realValue = value;
    elements.Append(std::move(element));
  }
  machine.heap.UpdateCharge(*array);
  return PushResult(machine, std::move(array));
}

// matrix currentmatrix -> matrix. The elements keep their types.
ResultCode CurrentMatrix(Machine& machine, Canvas& canvas) {
  const PSObject& array = *machine.operandStack.Top();
  if (!TopIsArray(machine) || !HasMatrixElements(array)) return ResultCode::Ran;
  const ORXMathVector first = canvas.Current().ctm.GetFirstColumn();
  const ORXMathVector second = canvas.Current().ctm.GetSecondColumn();
  std::int32_t position = 0;
  for (const double value : {first.x, second.x, first.y, second.y, first.z, second.z}) {
    array.Parts().arrayElements.At(++position)->realValue = static_cast<float>(value);
  }
  return ResultCode::Ran;
}

// matrix setmatrix ->
ResultCode SetMatrix(Machine& machine, Canvas& canvas) {
  if (!TopIsArray(machine) || !HasMatrixElements(*machine.operandStack.Top())) {
    return ResultCode::Ran;
  }
  const PSRef array = TakeOperand(machine);
  NoteOddElements(machine, *array, PSObjectType::Integer);
  canvas.Current().ctm = MatrixElements(*array).ToMatrix();
  return ResultCode::Ran;
}

// angle rotate ->
ResultCode Rotate(Machine& machine, Canvas& canvas) {
  const float angle = TakeNumber(machine);
  const auto radians = static_cast<float>(static_cast<double>(angle) * (ORXPI / 180.0));
  const auto [sine, cosine] = SineAndCosine(radians);
  const double s = sine;
  const double c = cosine;
  ConcatToCtm(canvas, MakeMatrix(c, s, -s, c, 0.0, 0.0));
  return ResultCode::Ran;
}

namespace {

// sx sy matrix -> matrix. The elements for sx and sy become copies of the operands.
ResultCode ScaleMatrix(Machine& machine) {
  if (!HasOperands(machine, 3)) return StackUnderflow(machine);
  if (!HasMatrixElements(*machine.operandStack.Top())) return ResultCode::Failed;
  PSRef array = TakeOperand(machine);
  const PSRef sy = TakeOperand(machine);
  const PSRef sx = TakeOperand(machine);
  array->Parts().arrayElements.At(1)->AssignFrom(*sx);
  array->Parts().arrayElements.At(4)->AssignFrom(*sy);
  return PushResult(machine, std::move(array));
}

}  // namespace

// sx sy scale ->
ResultCode Scale(Machine& machine, Canvas& canvas) {
  if (TopIsArray(machine)) return ScaleMatrix(machine);
  if (!HasOperands(machine, 2)) return StackUnderflow(machine);
  const double sy = TakeNumber(machine);
  const double sx = TakeNumber(machine);
  ConcatToCtm(canvas, MakeMatrix(sx, 0.0, 0.0, sy, 0.0, 0.0));
  return ResultCode::Ran;
}

// tx ty translate ->; the displacement is rounded to single precision before it moves the origin
ResultCode Translate(Machine& machine, Canvas& canvas) {
  const float dy = TakeNumber(machine);
  const float dx = TakeNumber(machine);
  ORXMath3x3Matrix& ctm = canvas.Current().ctm;
  const FloatPoint origin = TransformDisplacement(ctm, {dx, dy});
  ctm = ctm * MakeMatrix(1.0, 0.0, 0.0, 1.0, origin.x, origin.y);
  return ResultCode::Ran;
}

namespace {

// Takes the operands "x y matrix" if they are there, and maps the point by a function of it and the
// matrix's elements.
template <typename Mapping>
ResultCode MapThroughOperand(Machine& machine, Mapping map) {
  if (!HasOperands(machine, 3)) return StackUnderflow(machine);
  if (!HasMatrixElements(*machine.operandStack.Top())) return ResultCode::NoOperand;
  NoteOddElements(machine, *machine.operandStack.Top(), PSObjectType::Integer);
  const MatrixElements elements(*TakeOperand(machine));
  const FloatPoint point = TakePoint(machine);
  return PushPoint(machine, map(elements, point));
}

template <typename Mapping>
ResultCode MapThroughCtm(Machine& machine, const Canvas& canvas, Mapping map) {
  if (!HasOperands(machine, 2)) return StackUnderflow(machine);
  const FloatPoint point = TakePoint(machine);
  return PushPoint(machine, map(canvas.Current().ctm, point));
}

FloatPoint MapInSinglePrecision(const MatrixElements& m, FloatPoint p) noexcept {
  return {m.a * p.x + m.c * p.y + m.tx, m.b * p.x + m.d * p.y + m.ty};
}

// A matrix without inverse maps by itself.
FloatPoint MapThroughInverse(const ORXMath3x3Matrix& matrix, FloatPoint point) noexcept {
  ORXMath3x3Matrix inverse = matrix;
  static_cast<void>(matrix.Inverse(inverse));
  return TransformPoint(inverse, point);
}

}  // namespace

// x y transform -> x' y'; x y matrix transform -> x' y'
ResultCode Transform(Machine& machine, Canvas& canvas) {
  if (TopIsArray(machine)) return MapThroughOperand(machine, MapInSinglePrecision);
  return MapThroughCtm(machine, canvas, TransformPoint);
}

// x' y' itransform -> x y; x' y' matrix itransform -> x y
ResultCode ITransform(Machine& machine, Canvas& canvas) {
  if (!TopIsArray(machine)) return MapThroughCtm(machine, canvas, MapThroughInverse);
  return MapThroughOperand(machine, [](const MatrixElements& elements, FloatPoint point) {
    return MapThroughInverse(elements.ToMatrix(), point);
  });
}

}  // namespace orxeps::operators
