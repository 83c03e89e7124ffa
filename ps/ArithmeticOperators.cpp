// Arithmetic, carried out in single precision.
//
// A result is a Real if an operand was, otherwise an Integer: the float result truncated. An
// operand that is no number counts as 0. "neg" and "round" change their operand itself, so that
// every holder of the object sees it.

#include <cmath>

#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

ResultCode PushNumber(Machine& machine, float value, bool isReal) {
  if (isReal) return PushReal(machine, value);
  return PushInteger(machine, TruncateToInteger(value));
}

template <typename Operation>
ResultCode Unary(Machine& machine, Operation operation) {
  const PSRef a = TakeOperand(machine);
  return PushNumber(machine, operation(NumberOf(*a)), a->Is(PSObjectType::Real));
}

template <typename Operation>
ResultCode Binary(Machine& machine, Operation operation) {
  const PSRef b = TakeOperand(machine);
  const PSRef a = TakeOperand(machine);
  const bool isReal = a->Is(PSObjectType::Real) || b->Is(PSObjectType::Real);
  return PushNumber(machine, operation(NumberOf(*a), NumberOf(*b)), isReal);
}

// Only integers count; anything else is 0.
std::int32_t TakeInteger(Machine& machine) noexcept {
  const PSRef operand = TakeOperand(machine);
  return operand->Is(PSObjectType::Integer) ? operand->intValue : 0;
}

}  // namespace

// a b add -> a+b
ResultCode Add(Machine& machine) {
  return Binary(machine, [](float a, float b) { return a + b; });
}

// a b sub -> a-b
ResultCode Sub(Machine& machine) {
  return Binary(machine, [](float a, float b) { return a - b; });
}

// a b mul -> a*b
ResultCode Mul(Machine& machine) {
  return Binary(machine, [](float a, float b) { return a * b; });
}

// a b div -> a/b, always a Real; 0.0 when b is too close to 0
ResultCode Div(Machine& machine) {
  const float b = TakeNumber(machine);
  const float a = TakeNumber(machine);
  const double divisor = b;
  const bool tooSmall = divisor > -0.001 && divisor < 0.001;
  return PushReal(machine, tooSmall ? 0.0F : a / b);
}

// a b idiv -> the float quotient, truncated
ResultCode IDiv(Machine& machine) {
  const auto b = static_cast<float>(TakeInteger(machine));
  const auto a = static_cast<float>(TakeInteger(machine));
  // A quotient by 0 has no place among the integers.
  return PushInteger(machine, b == 0.0F ? TruncateToInteger(INFINITY) : TruncateToInteger(a / b));
}

// a b mod -> the remainder with the sign of a; 0 when b is 0
ResultCode Mod(Machine& machine) {
  const std::int64_t b = TakeInteger(machine);
  const std::int64_t a = TakeInteger(machine);
  return PushInteger(machine, b == 0 ? 0 : static_cast<std::int32_t>(a % b));
}

// a abs -> |a|
ResultCode Abs(Machine& machine) {
  return Unary(machine, [](float a) { return std::fabs(a); });
}

// a ceiling -> the smallest integral value not below a
ResultCode Ceiling(Machine& machine) {
  return Unary(machine, [](float a) { return std::ceil(a); });
}

// a floor -> the largest integral value not above a
ResultCode Floor(Machine& machine) {
  return Unary(machine, [](float a) { return std::floor(a); });
}

namespace {

// An object that is to be changed in place has another holder, too.
void NoteShared(const Machine& machine, const PSObject& a) noexcept {
  if (!machine.watch.HasListener() || !a.IsNumber()) return;
  const bool isConstant = machine.executionStack.ElementBefore() == &a;
  NoteDeparture(machine, isConstant ? ORXNoteKind::ChangedConstant : ORXNoteKind::ChangedForAll);
}

}  // namespace

// a neg -> the same object, negated in place
ResultCode Neg(Machine& machine) {
  PSObject& a = *machine.operandStack.Top();
  if (a.refCount > 1) NoteShared(machine, a);
  if (a.Is(PSObjectType::Integer)) {
    a.intValue = static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(a.intValue));
  } else if (a.Is(PSObjectType::Real)) {
    a.realValue = -a.realValue;
  }
  return ResultCode::Ran;
}

// a round -> the same object, a Real rounded to an Integer in place; halves go up
ResultCode Round(Machine& machine) {
  PSObject& a = *machine.operandStack.Top();
  if (!a.Is(PSObjectType::Real)) return ResultCode::Ran;
  if (a.refCount > 1) NoteShared(machine, a);
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
