// Comparisons and constants.

#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

const ORXString& TextOf(const PSObject& string) noexcept { return string.Parts().stringText; }

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
      return TextOf(a) == TextOf(b);
    case PSObjectType::Name:
      return a.nameText == b.nameText;
    case PSObjectType::Array:
      return HaveSameElements(a.Parts().arrayElements, b.Parts().arrayElements);
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
  if (a.Is(PSObjectType::Name) && b.Is(PSObjectType::String))
    return a.nameText.View() == TextOf(b).View();
  if (a.Is(PSObjectType::String) && b.Is(PSObjectType::Name))
    return TextOf(a).View() == b.nameText.View();
  return false;
}

// Two Reals are not ordered: every comparison of them is false.
bool IsLess(const PSObject& a, const PSObject& b) noexcept {
  if (a.Is(PSObjectType::Integer) && b.Is(PSObjectType::Integer)) return a.intValue < b.intValue;
  if (a.IsNumber() && b.IsNumber() && a.type != b.type) return NumberOf(a) < NumberOf(b);
  if (a.Is(PSObjectType::String) && b.Is(PSObjectType::String)) return TextOf(a) < TextOf(b);
  return false;
}

template <typename Relation>
ResultCode Compare(Machine& machine, Relation holds) {
  const PSRef b = TakeOperand(machine);
  const PSRef a = TakeOperand(machine);
  machine.watch.CountWork(a->Parts().arrayElements.Count());
  machine.watch.CountBytes(a->Parts().stringText.Length());
  return PushBoolean(machine, holds(*a, *b));
}

}  // namespace

// a b eq -> bool
ResultCode Eq(Machine& machine) { return Compare(machine, AreEqual); }

// a b lt -> bool
ResultCode Lt(Machine& machine) {
  return Compare(machine, [&machine](const PSObject& a, const PSObject& b) {
    const bool areReals = a.Is(PSObjectType::Real) && b.Is(PSObjectType::Real);
    if (areReals && a.realValue < b.realValue) {
      NoteDeparture(machine, ORXNoteKind::ComparedAsFalse);
    }
    return IsLess(a, b);
  });
}

// -> true
ResultCode True(Machine& machine) { return PushBoolean(machine, true); }

// -> false
ResultCode False(Machine& machine) { return PushBoolean(machine, false); }

// -> null
ResultCode Null(Machine& machine) {
  return PushResult(machine, machine.heap.Make(PSObjectType::Null));
}

}  // namespace orxeps::operators
