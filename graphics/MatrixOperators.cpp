// Operators that save and restore the graphics state and work on matrices.
//
// "concat" reads the elements of an array as numbers; the other operators read and write their
// realValue, whatever their type.

#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

constexpr std::int32_t kMatrixElements = 6;

ORXMath3x3Matrix MakeMatrix(double a, double b, double c, double d, double tx, double ty) noexcept {
  return {a, b, 0.0, c, d, 0.0, tx, ty, 1.0};
}

bool HasMatrixElements(const PSObject& array) noexcept {
  return array.arrayElements.Count() >= kMatrixElements;
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
    return array.arrayElements.At(position)->realValue;
  }
};

// The matrix acts first, in user space.
void ConcatToCtm(ORXPrintEPSInterpreter& interpreter, const ORXMath3x3Matrix& matrix) noexcept {
  ORXMath3x3Matrix& ctm = interpreter.graphics.current.ctm;
  ctm = matrix * ctm;
}

bool TopIsArray(const ORXPrintEPSInterpreter& interpreter) noexcept {
  return interpreter.operandStack.Top()->Is(PSObjectType::Array);
}

}  // namespace

// gsave ->
ResultCode GSave(ORXPrintEPSInterpreter& interpreter) {
  if (!interpreter.graphics.Save()) return RaiseError(interpreter, "limitcheck");
  return ResultCode::Ran;
}

// grestore ->
ResultCode GRestore(ORXPrintEPSInterpreter& interpreter) {
  interpreter.graphics.Restore();
  return ResultCode::Ran;
}

// matrix concat ->
ResultCode Concat(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (!TopIsArray(interpreter)) return RaiseError(interpreter, "Operand error : needed array");
  const PSRef array = TakeOperand(interpreter);
  const ObjectList& elements = array->arrayElements;
  if (elements.Count() != kMatrixElements) {
    return RaiseError(interpreter, "Operand error : Array size needs to be 6.");
  }
  const auto number = [&elements](std::int32_t position) {
    return static_cast<double>(NumberOf(*elements.At(position)));
  };
  ConcatToCtm(interpreter,
              MakeMatrix(number(1), number(2), number(3), number(4), number(5), number(6)));
  return ResultCode::Ran;
}

// matrix -> a new identity matrix
ResultCode Matrix(ORXPrintEPSInterpreter& interpreter) {
  PSRef array = interpreter.heap.Make(PSObjectType::Array);
  array->arrayElements.Reserve(kMatrixElements);
  for (const float value : {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}) {
    PSRef element = interpreter.heap.Make(PSObjectType::Real);
    element->realValue = value;
    array->arrayElements.Append(element.Leak());
  }
  interpreter.heap.UpdateCharge(*array);
  return PushResult(interpreter, std::move(array));
}

// matrix currentmatrix -> matrix. The elements keep their types.
ResultCode CurrentMatrix(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  const PSObject& array = *interpreter.operandStack.Top();
  if (!TopIsArray(interpreter) || !HasMatrixElements(array)) return ResultCode::Ran;
  const ORXMathVector first = interpreter.graphics.current.ctm.GetFirstColumn();
  const ORXMathVector second = interpreter.graphics.current.ctm.GetSecondColumn();
  std::int32_t position = 0;
  for (const double value : {first.x, second.x, first.y, second.y, first.z, second.z}) {
    array.arrayElements.At(++position)->realValue = static_cast<float>(value);
  }
  return ResultCode::Ran;
}

// matrix setmatrix ->
ResultCode SetMatrix(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (!TopIsArray(interpreter) || !HasMatrixElements(*interpreter.operandStack.Top())) {
    return ResultCode::Ran;
  }
  const PSRef array = TakeOperand(interpreter);
  interpreter.graphics.current.ctm = MatrixElements(*array).ToMatrix();
  return ResultCode::Ran;
}

// angle rotate ->
ResultCode Rotate(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  const float angle = TakeNumber(interpreter);
  const auto radians = static_cast<float>(static_cast<double>(angle) * (ORXPI / 180.0));
  const double s = std::sin(radians);
  const double c = std::cos(radians);
  ConcatToCtm(interpreter, MakeMatrix(c, s, -s, c, 0.0, 0.0));
  return ResultCode::Ran;
}

namespace {

// sx sy matrix -> matrix. The elements for sx and sy become copies of the operands.
ResultCode ScaleMatrix(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  if (!HasMatrixElements(*interpreter.operandStack.Top())) return ResultCode::Failed;
  PSRef array = TakeOperand(interpreter);
  const PSRef sy = TakeOperand(interpreter);
  const PSRef sx = TakeOperand(interpreter);
  array->arrayElements.At(1)->AssignFrom(*sx);
  array->arrayElements.At(4)->AssignFrom(*sy);
  return PushResult(interpreter, std::move(array));
}

}  // namespace

// sx sy scale ->
ResultCode Scale(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (TopIsArray(interpreter)) return ScaleMatrix(interpreter);
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const double sy = TakeNumber(interpreter);
  const double sx = TakeNumber(interpreter);
  ConcatToCtm(interpreter, MakeMatrix(sx, 0.0, 0.0, sy, 0.0, 0.0));
  return ResultCode::Ran;
}

// tx ty translate ->; the displacement is rounded to single precision before it moves the origin
ResultCode Translate(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const float dy = TakeNumber(interpreter);
  const float dx = TakeNumber(interpreter);
  ORXMath3x3Matrix& ctm = interpreter.graphics.current.ctm;
  const FloatPoint origin = TransformDisplacement(ctm, {dx, dy});
  ctm = ctm * MakeMatrix(1.0, 0.0, 0.0, 1.0, origin.x, origin.y);
  return ResultCode::Ran;
}

namespace {

FloatPoint TakePoint(ORXPrintEPSInterpreter& interpreter) noexcept {
  const float y = TakeNumber(interpreter);
  const float x = TakeNumber(interpreter);
  return {x, y};
}

ResultCode PushPoint(ORXPrintEPSInterpreter& interpreter, FloatPoint point) {
  PushReal(interpreter, point.x);
  return PushReal(interpreter, point.y);
}

// Takes the operands "x y matrix" if they are there, and maps the point by a function of it and the
// matrix's elements.
template <typename Mapping>
ResultCode MapThroughOperand(ORXPrintEPSInterpreter& interpreter, Mapping map) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  if (!HasMatrixElements(*interpreter.operandStack.Top())) return ResultCode::NoOperand;
  const MatrixElements elements(*TakeOperand(interpreter));
  const FloatPoint point = TakePoint(interpreter);
  return PushPoint(interpreter, map(elements, point));
}

template <typename Mapping>
ResultCode MapThroughCtm(ORXPrintEPSInterpreter& interpreter, Mapping map) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const FloatPoint point = TakePoint(interpreter);
  return PushPoint(interpreter, map(interpreter.graphics.current.ctm, point));
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
ResultCode Transform(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (TopIsArray(interpreter)) return MapThroughOperand(interpreter, MapInSinglePrecision);
  return MapThroughCtm(interpreter, TransformPoint);
}

// x' y' itransform -> x y; x' y' matrix itransform -> x y
ResultCode ITransform(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (!TopIsArray(interpreter)) return MapThroughCtm(interpreter, MapThroughInverse);
  return MapThroughOperand(interpreter, [](const MatrixElements& elements, FloatPoint point) {
    return MapThroughInverse(elements.ToMatrix(), point);
  });
}

}  // namespace orxeps::operators
