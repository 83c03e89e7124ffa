// "length", "get", "put" and "forall", which work on several types.

#include "ps/Dictionaries.h"
#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

// Whether an Integer key is a position, from 0, below `count`.
bool IsPosition(const PSObject& key, std::size_t count) noexcept {
  return key.intValue >= 0 && static_cast<std::size_t>(key.intValue) < count;
}

std::size_t ElementCount(const PSObject& array) noexcept {
  return static_cast<std::size_t>(array.Parts().arrayElements.Count());
}

}  // namespace

// string|name|array|dictionary length -> int
ResultCode Length(Machine& machine) {
  const PSRef operand = TakeOperand(machine);
  switch (operand->type) {
    case PSObjectType::String:
      return PushInteger(machine, static_cast<std::int32_t>(operand->Parts().stringText.Length()));
    case PSObjectType::Name:
      return PushInteger(machine, static_cast<std::int32_t>(operand->nameText.Length()));
    case PSObjectType::Array:
      return PushInteger(machine, operand->Parts().arrayElements.Count());
    case PSObjectType::Dictionary:
      return PushInteger(machine, operand->Parts().dictEntries.Count());
    default:
      return RaiseError(machine, "typecheck");
  }
}

namespace {

ResultCode GetByPosition(Machine& machine, const PSObject& collection, const PSObject& key) {
  if (collection.Is(PSObjectType::String)) {
    const ORXString& text = collection.Parts().stringText;
    if (!IsPosition(key, text.Length())) return RaiseError(machine, "rangecheck");
    const ORXChar character = text.At(static_cast<std::size_t>(key.intValue));
    return PushInteger(machine, static_cast<signed char>(character));
  }
  if (collection.Is(PSObjectType::Array)) {
    if (!IsPosition(key, ElementCount(collection))) return RaiseError(machine, "rangecheck");
    return PushShared(machine, collection.Parts().arrayElements.At(key.intValue + 1));
  }
  return RaiseError(machine, "typecheck");
}

}  // namespace

// string|array int get -> element; dictionary name get -> value
ResultCode Get(Machine& machine) {
  const PSRef key = TakeOperand(machine);
  const PSRef collection = TakeOperand(machine);
  if (key->Is(PSObjectType::Integer)) return GetByPosition(machine, *collection, *key);
  if (!key->Is(PSObjectType::Name) || !collection->Is(PSObjectType::Dictionary)) {
    return RaiseError(machine, "typecheck");
  }
  PSObject* value = DictLocate(collection->Parts().dictEntries, key->nameText.Text());
  if (!value) return RaiseError(machine, "undefined");
  return PushShared(machine, value);
}

namespace {

void PutElement(Machine& machine, PSObject& array, const PSObject& key, PSRef value) {
  if (!key.Is(PSObjectType::Integer)) {
    RaiseError(machine, "typecheck");
  } else if (!IsPosition(key, ElementCount(array))) {
    RaiseError(machine, "rangecheck");
  } else {
    static_cast<void>(array.OwnParts().arrayElements.Replace(key.intValue + 1, std::move(value)));
  }
}

// A code of 0 takes the character out.
void PutCharacter(Machine& machine, PSObject& string, const PSObject& key, const PSObject& value) {
  if (!key.Is(PSObjectType::Integer) || !value.Is(PSObjectType::Integer)) {
    RaiseError(machine, "typecheck");
  } else if (!IsPosition(key, string.Parts().stringText.Length())) {
    RaiseError(machine, "rangecheck");
  } else {
    const auto position = static_cast<std::size_t>(key.intValue);
    const auto code = static_cast<unsigned char>(value.intValue);
    ORXString& text = string.OwnParts().stringText;
    if (code != 0) {
      text.SetAt(position, static_cast<ORXChar>(code));
    } else {
      machine.watch.CountBytes(text.Length());
      text.RemoveAt(position);
    }
    machine.heap.UpdateCharge(string);
  }
}

}  // namespace

// array int value put ->; dictionary name value put ->; string int int put ->
ResultCode Put(Machine& machine) {
  PSRef value = TakeOperand(machine);
  const PSRef key = TakeOperand(machine);
  const PSRef collection = TakeOperand(machine);
  if (collection->Is(PSObjectType::Array)) {
    PutElement(machine, *collection, *key, std::move(value));
  } else if (collection->Is(PSObjectType::String)) {
    PutCharacter(machine, *collection, *key, *value);
  } else if (collection->Is(PSObjectType::Dictionary)) {
    if (key->Is(PSObjectType::Name)) {
      DictInsert(machine.heap, *collection, key->nameText, std::move(value));
    } else {
      RaiseError(machine, "typecheck");
    }
  }
  return ResultCode::Ran;
}

// collection proc forall ->; runs nothing
ResultCode ForAll(Machine& machine) {
  NoteDeparture(machine, ORXNoteKind::Ignored);
  machine.operandStack.Drop(2);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
