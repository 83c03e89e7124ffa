// "length", "get", "put" and "forall", which work on several types.

#include "ps/Dictionaries.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

// Whether an Integer key is a position, from 0, below `count`.
bool IsPosition(const PSObject& key, std::size_t count) noexcept {
  return key.intValue >= 0 && static_cast<std::size_t>(key.intValue) < count;
}

std::size_t ElementCount(const PSObject& array) noexcept {
  return static_cast<std::size_t>(array.arrayElements.Count());
}

}  // namespace

// string|name|array|dictionary length -> int
ResultCode Length(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  const PSRef operand = TakeOperand(interpreter);
  switch (operand->type) {
    case PSObjectType::String:
      return PushInteger(interpreter, static_cast<std::int32_t>(operand->stringText.Length()));
    case PSObjectType::Name:
      return PushInteger(interpreter, static_cast<std::int32_t>(operand->nameText.Length()));
    case PSObjectType::Array:
      return PushInteger(interpreter, operand->arrayElements.Count());
    case PSObjectType::Dictionary:
      return PushInteger(interpreter, operand->dictEntries.Count());
    default:
      return RaiseError(interpreter, "typecheck");
  }
}

namespace {

ResultCode GetByPosition(ORXPrintEPSInterpreter& interpreter, const PSObject& collection,
                         const PSObject& key) {
  if (collection.Is(PSObjectType::String)) {
    if (!IsPosition(key, collection.stringText.Length())) {
      return RaiseError(interpreter, "rangecheck");
    }
    const ORXChar character = collection.stringText.At(static_cast<std::size_t>(key.intValue));
    return PushInteger(interpreter, static_cast<signed char>(character));
  }
  if (collection.Is(PSObjectType::Array)) {
    if (!IsPosition(key, ElementCount(collection))) return RaiseError(interpreter, "rangecheck");
    return PushShared(interpreter, collection.arrayElements.At(key.intValue + 1));
  }
  return RaiseError(interpreter, "typecheck");
}

}  // namespace

// string|array int get -> element; dictionary name get -> value
ResultCode Get(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  const PSRef key = TakeOperand(interpreter);
  const PSRef collection = TakeOperand(interpreter);
  if (key->Is(PSObjectType::Integer)) return GetByPosition(interpreter, *collection, *key);
  if (!key->Is(PSObjectType::Name) || !collection->Is(PSObjectType::Dictionary)) {
    return RaiseError(interpreter, "typecheck");
  }
  PSObject* value = DictLocate(collection->dictEntries, key->nameText);
  if (!value) return RaiseError(interpreter, "undefined");
  return PushShared(interpreter, value);
}

namespace {

void PutElement(ORXPrintEPSInterpreter& interpreter, PSObject& array, const PSObject& key,
                PSRef value) {
  if (!key.Is(PSObjectType::Integer)) {
    RaiseError(interpreter, "typecheck");
  } else if (!IsPosition(key, ElementCount(array))) {
    RaiseError(interpreter, "rangecheck");
  } else {
    const std::int32_t position = key.intValue + 1;
    const PSRef replaced = PSRef::Adopt(array.arrayElements.At(position));
    array.arrayElements.SetAt(position, value.Leak());
  }
}

// A code of 0 takes the character out.
void PutCharacter(ORXPrintEPSInterpreter& interpreter, PSObject& string, const PSObject& key,
                  const PSObject& value) {
  if (!key.Is(PSObjectType::Integer) || !value.Is(PSObjectType::Integer)) {
    RaiseError(interpreter, "typecheck");
  } else if (!IsPosition(key, string.stringText.Length())) {
    RaiseError(interpreter, "rangecheck");
  } else {
    const auto position = static_cast<std::size_t>(key.intValue);
    const auto code = static_cast<unsigned char>(value.intValue);
    if (code != 0) {
      string.stringText.SetAt(position, static_cast<ORXChar>(code));
    } else {
      string.stringText.RemoveAt(position);
    }
    interpreter.heap.UpdateCharge(string);
  }
}

}  // namespace

// array int value put ->; dictionary name value put ->; string int int put ->
ResultCode Put(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  PSRef value = TakeOperand(interpreter);
  const PSRef key = TakeOperand(interpreter);
  const PSRef collection = TakeOperand(interpreter);
  if (collection->Is(PSObjectType::Array)) {
    PutElement(interpreter, *collection, *key, std::move(value));
  } else if (collection->Is(PSObjectType::String)) {
    PutCharacter(interpreter, *collection, *key, *value);
  } else if (collection->Is(PSObjectType::Dictionary)) {
    if (key->Is(PSObjectType::Name)) {
      DictInsert(interpreter.heap, *collection, key->nameText, std::move(value));
    } else {
      RaiseError(interpreter, "typecheck");
    }
  }
  return ResultCode::Ran;
}

// collection proc forall ->; runs nothing
ResultCode ForAll(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  interpreter.operandStack.Drop(2);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
