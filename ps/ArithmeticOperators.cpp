// Arithmetic, carried out in single precision.
//
// A result is a Real if an operand was, otherwise an Integer: the float result truncated. An
// operand that is no number counts as 0. "neg" and "round" change their operand itself, so that
// every holder of the object sees it.

#include <cmath>

#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

ResultCode PushNumber(ORXPrintEPSInterpreter& interpreter, float value, bool isReal) {
  if (isReal) return PushReal(interpreter, value);
  return PushInteger(interpreter, TruncateToInteger(value));
}

template <typename Operation>
ResultCode Unary(ORXPrintEPSInterpreter& interpreter, Operation operation) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  const PSRef a = TakeOperand(interpreter);
  return PushNumber(interpreter, operation(NumberOf(*a)), a->Is(PSObjectType::Real));
}

template <typename Operation>
ResultCode Binary(ORXPrintEPSInterpreter& interpreter, Operation operation) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const PSRef b = TakeOperand(interpreter);
  const PSRef a = TakeOperand(interpreter);
  const bool isReal = a->Is(PSObjectType::Real) || b->Is(PSObjectType::Real);
  return PushNumber(interpreter, operation(NumberOf(*a), NumberOf(*b)), isReal);
}

// Only integers count; anything else is 0.
std::int32_t TakeInteger(ORXPrintEPSInterpreter& interpreter) noexcept {
  const PSRef operand = TakeOperand(interpreter);
  return operand->Is(PSObjectType::Integer) ? operand->intValue : 0;
}

}  // namespace

// a b add -> a+b
ResultCode Add(ORXPrintEPSInterpreter& interpreter) {
  return Binary(interpreter, [](float a, float b) { return a + b; });
}

// a b sub -> a-b
ResultCode Sub(ORXPrintEPSInterpreter& interpreter) {
  return Binary(interpreter, [](float a, float b) { return a - b; });
}

// a b mul -> a*b
ResultCode Mul(ORXPrintEPSInterpreter& interpreter) {
  return Binary(interpreter, [](float a, float b) { return a * b; });
}

// a b div -> a/b, always a Real; 0.0 when b is too close to 0
ResultCode Div(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const float b = TakeNumber(interpreter);
  const float a = TakeNumber(interpreter);
  const double divisor = b;
  const bool tooSmall = divisor > -0.001 && divisor < 0.001;
  return PushReal(interpreter, tooSmall ? 0.0F : a / b);
}

// a b idiv -> the float quotient, truncated
ResultCode IDiv(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const auto b = static_cast<float>(TakeInteger(interpreter));
  const auto a = static_cast<float>(TakeInteger(interpreter));
  // A quotient by 0 has no place among the integers.
  return PushInteger(interpreter,
                     b == 0.0F ? TruncateToInteger(INFINITY) : TruncateToInteger(a / b));
}

// a b mod -> the remainder with the sign of a; 0 when b is 0
ResultCode Mod(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const std::int64_t b = TakeInteger(interpreter);
  const std::int64_t a = TakeInteger(interpreter);
  return PushInteger(interpreter, b == 0 ? 0 : static_cast<std::int32_t>(a % b));
}

// a abs -> |a|
ResultCode Abs(ORXPrintEPSInterpreter& interpreter) {
  return Unary(interpreter, [](float a) { return std::fabs(a); });
}

// a ceiling -> the smallest integral value not below a
ResultCode Ceiling(ORXPrintEPSInterpreter& interpreter) {
  return Unary(interpreter, [](float a) { return std::ceil(a); });
}

// a floor -> the largest integral value not above a
ResultCode Floor(ORXPrintEPSInterpreter& interpreter) {
  return Unary(interpreter, [](float a) { return std::floor(a); });
}

// a neg -> the same object, negated in place
ResultCode Neg(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  PSObject& a = *interpreter.operandStack.Top();
  if (a.Is(PSObjectType::Integer)) {
    a.intValue = static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(a.intValue));
  } else if (a.Is(PSObjectType::Real)) {
    a.realValue = -a.realValue;
  }
  return ResultCode::Ran;
}

// a round -> the same object, a Real rounded to an Integer in place; halves go up
ResultCode Round(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  PSObject& a = *interpreter.operandStack.Top();
  if (!a.Is(PSObjectType::Real)) return ResultCode::Ran;
  const float below = std::floor(a.realValue);
  const float above = std::ceil(a.realValue);
  const float sum = below + above;
  const bool up = static_cast<double>(a.realValue) >= static_cast<double>(sum) * 0.5;
  a.realValue = up ? above : below;
  a.type = PSObjectType::Integer;
  a.literal = 1;
  a.intValue = TruncateToInteger(a.realValue);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
