// Comparisons and constants.

#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

bool HaveSameElements(const ObjectList& a, const ObjectList& b) noexcept {
  if (a.Count() != b.Count()) return false;
  for (std::int32_t i = 1; i <= a.Count(); ++i) {
    if (a.At(i) != b.At(i)) return false;
  }
  return true;
}

bool AreEqualOfOneType(const PSObject& a, const PSObject& b) noexcept {
  switch (a.type) {
    case PSObjectType::Integer:
      return a.intValue == b.intValue;
    case PSObjectType::Real:
      return a.realValue == b.realValue;
    case PSObjectType::String:
      return a.stringText == b.stringText;
    case PSObjectType::Name:
      return a.nameText == b.nameText;
    case PSObjectType::Array:
      return HaveSameElements(a.arrayElements, b.arrayElements);
    case PSObjectType::Boolean:
      return a.boolValue == b.boolValue;
    case PSObjectType::Mark:
    case PSObjectType::Null:
      return true;
    default:
      return false;  // procedures, files, dictionaries and operators equal nothing
  }
}

bool AreEqual(const PSObject& a, const PSObject& b) noexcept {
  if (a.type == b.type) return AreEqualOfOneType(a, b);
  if (a.IsNumber() && b.IsNumber()) return NumberOf(a) == NumberOf(b);
  if (a.Is(PSObjectType::Name) && b.Is(PSObjectType::String)) return a.nameText == b.stringText;
  if (a.Is(PSObjectType::String) && b.Is(PSObjectType::Name)) return a.stringText == b.nameText;
  return false;
}

// Two Reals are not ordered: every comparison of them is false.
bool IsLess(const PSObject& a, const PSObject& b) noexcept {
  if (a.Is(PSObjectType::Integer) && b.Is(PSObjectType::Integer)) return a.intValue < b.intValue;
  if (a.IsNumber() && b.IsNumber() && a.type != b.type) return NumberOf(a) < NumberOf(b);
  if (a.Is(PSObjectType::String) && b.Is(PSObjectType::String)) return a.stringText < b.stringText;
  return false;
}

template <typename Relation>
ResultCode Compare(ORXPrintEPSInterpreter& interpreter, Relation holds) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const PSRef b = TakeOperand(interpreter);
  const PSRef a = TakeOperand(interpreter);
  return PushBoolean(interpreter, holds(*a, *b));
}

}  // namespace

// a b eq -> bool
ResultCode Eq(ORXPrintEPSInterpreter& interpreter) { return Compare(interpreter, AreEqual); }

// a b lt -> bool
ResultCode Lt(ORXPrintEPSInterpreter& interpreter) { return Compare(interpreter, IsLess); }

// -> true
ResultCode True(ORXPrintEPSInterpreter& interpreter) { return PushBoolean(interpreter, true); }

// -> false
ResultCode False(ORXPrintEPSInterpreter& interpreter) { return PushBoolean(interpreter, false); }

// -> null
ResultCode Null(ORXPrintEPSInterpreter& interpreter) {
  return PushResult(interpreter, interpreter.heap.Make(PSObjectType::Null));
}

}  // namespace orxeps::operators
