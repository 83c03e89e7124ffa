// Named resources. A category is a dictionary in userdict under the category's name, made by the
// first definition; an instance is a value in it under its key.

#include "ps/Dictionaries.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

namespace {

struct Request {
  bool valid = false;
  ORXString category;
  ORXString key;
};

// The text of a key; empty, with an error, for anything but a name or a string.
ORXString TakeKeyText(ORXPrintEPSInterpreter& interpreter) {
  const PSRef key = TakeOperand(interpreter);
  if (key->Is(PSObjectType::Name)) return key->nameText;
  if (key->Is(PSObjectType::String)) return key->stringText;
  RaiseError(interpreter, "typecheck");
  return {};
}

// Takes "key category". A category that is no name stays, and the key beneath it.
Request TakeRequest(ORXPrintEPSInterpreter& interpreter) {
  Request request;
  if (!HasOperands(interpreter, 2)) {
    StackUnderflow(interpreter);
  } else if (!interpreter.operandStack.Top()->Is(PSObjectType::Name)) {
    RaiseError(interpreter, "typecheck");
  } else {
    request.category = TakeOperand(interpreter)->nameText;
    request.key = TakeKeyText(interpreter);
    request.valid = !request.key.IsEmpty();
  }
  return request;
}

// The topmost entry of that name on the dictionary stack if it is a dictionary, else null.
PSObject* FindCategory(const ORXPrintEPSInterpreter& interpreter, const ORXString& name) noexcept {
  const ObjectList& stack = interpreter.dictionaryStack;
  for (std::int32_t i = stack.Count(); i >= 1; --i) {
    if (!stack.At(i)->Is(PSObjectType::Dictionary)) continue;
    if (PSObject* entry = DictLocate(stack.At(i)->dictEntries, name)) {
      return entry->Is(PSObjectType::Dictionary) ? entry : nullptr;
    }
  }
  return nullptr;
}

// The category's entry in userdict, made if there is none.
PSObject& OpenCategory(ORXPrintEPSInterpreter& interpreter, PSObject& userdict,
                       const ORXString& name) {
  if (PSObject* category = DictLocate(userdict.dictEntries, name)) return *category;
  PSRef category = interpreter.heap.Make(PSObjectType::Dictionary);
  PSObject& opened = *category;
  DictInsert(interpreter.heap, userdict, name, std::move(category));
  return opened;
}

}  // namespace

// key instance category defineresource -> instance
ResultCode DefineResource(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 3)) return StackUnderflow(interpreter);
  if (!interpreter.operandStack.Top()->Is(PSObjectType::Name)) {
    return RaiseError(interpreter, "typecheck");
  }
  const ORXString category = TakeOperand(interpreter)->nameText;
  const PSRef instance = TakeOperand(interpreter);
  const ORXString key = TakeKeyText(interpreter);
  if (key.IsEmpty()) return ResultCode::Failed;
  PSObject* userdict = interpreter.dictionaries.userdict.Get();
  if (!userdict || !userdict->Is(PSObjectType::Dictionary)) return ResultCode::Ran;
  DictInsert(interpreter.heap, OpenCategory(interpreter, *userdict, category), key,
             PSRef::Retain(instance.Get()));
  return PushShared(interpreter, instance.Get());
}

// key category findresource -> instance
ResultCode FindResource(ORXPrintEPSInterpreter& interpreter) {
  const Request request = TakeRequest(interpreter);
  if (!request.valid) return ResultCode::Failed;
  const PSObject* category = FindCategory(interpreter, request.category);
  if (!category) return RaiseError(interpreter, "undefinedresource");
  if (PSObject* instance = DictLocate(category->dictEntries, request.key)) {
    return PushShared(interpreter, instance);
  }
  RaiseError(interpreter, "undefined");
  return ResultCode::Ran;
}

// key category undefineresource ->; an unknown key is no error
ResultCode UndefineResource(ORXPrintEPSInterpreter& interpreter) {
  const Request request = TakeRequest(interpreter);
  if (!request.valid) return ResultCode::Failed;
  PSObject* category = FindCategory(interpreter, request.category);
  if (!category) return RaiseError(interpreter, "undefinedresource");
  const PSRef removed = DictRemove(*category, request.key);
  interpreter.heap.UpdateCharge(*category);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
