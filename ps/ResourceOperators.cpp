// Named resources. A category is a dictionary in userdict under the category's name, made by the
// first definition; an instance is a value in it under its key.

#include "ps/Dictionaries.h"
#include "ps/Execution.h"
#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

namespace {

struct Request {
  bool valid = false;
  NameText category;
  NameText key;
};

// The text of a key; empty, with an error, for anything but a name or a string.
NameText TakeKeyText(Machine& machine) {
  const PSRef key = TakeOperand(machine);
  if (key->Is(PSObjectType::Name)) return key->nameText;
  if (key->Is(PSObjectType::String)) return machine.names.Intern(key->Parts().stringText.View());
  RaiseError(machine, "typecheck");
  return {};
}

// Takes "key category". A category that is no name stays, and the key beneath it.
Request TakeRequest(Machine& machine) {
  Request request;
  if (!machine.operandStack.Top()->Is(PSObjectType::Name)) {
    RaiseError(machine, "typecheck");
  } else {
    request.category = TakeOperand(machine)->nameText;
    request.key = TakeKeyText(machine);
    request.valid = !request.key.IsEmpty();
  }
  return request;
}

// The topmost entry of that name on the dictionary stack if it is a dictionary, else null.
PSObject* FindCategory(Machine& machine, const NameText& name) {
  PSObject* entry = LookupName(machine, name).value;
  return entry && entry->Is(PSObjectType::Dictionary) ? entry : nullptr;
}

// The category's entry in userdict, made if there is none.
PSObject& OpenCategory(Machine& machine, PSObject& userdict, const NameText& name) {
  const ORXHashDico& entries = userdict.Parts().dictEntries;
  if (PSObject* category = DictLocate(entries, name.Text())) return *category;
  PSRef category = machine.heap.Make(PSObjectType::Dictionary);
  PSObject& opened = *category;
  DictInsert(machine.heap, userdict, name, std::move(category));
  return opened;
}

}  // namespace

// key instance category defineresource -> instance
ResultCode DefineResource(Machine& machine) {
  if (!machine.operandStack.Top()->Is(PSObjectType::Name)) {
    return RaiseError(machine, "typecheck");
  }
  const NameText category = TakeOperand(machine)->nameText;
  const PSRef instance = TakeOperand(machine);
  const NameText key = TakeKeyText(machine);
  if (key.IsEmpty()) return ResultCode::Failed;
  PSObject* userdict = machine.dictionaries.userdict.Get();
  if (!userdict || !userdict->Is(PSObjectType::Dictionary)) return ResultCode::Ran;
  DictInsert(machine.heap, OpenCategory(machine, *userdict, category), key,
             PSRef::Retain(instance.Get()));
  return PushShared(machine, instance.Get());
}

// key category findresource -> instance
ResultCode FindResource(Machine& machine) {
  const Request request = TakeRequest(machine);
  if (!request.valid) return ResultCode::Failed;
  const PSObject* category = FindCategory(machine, request.category);
  if (!category) return RaiseError(machine, "undefinedresource");
  if (PSObject* instance = DictLocate(category->Parts().dictEntries, request.key.Text())) {
    return PushShared(machine, instance);
  }
  RaiseError(machine, "undefined");
  return ResultCode::Ran;
}

// key category undefineresource ->; an unknown key is no error
ResultCode UndefineResource(Machine& machine) {
  const Request request = TakeRequest(machine);
  if (!request.valid) return ResultCode::Failed;
  PSObject* category = FindCategory(machine, request.category);
  if (!category) return RaiseError(machine, "undefinedresource");
  const PSRef removed = DictRemove(machine.heap, *category, request.key);
  machine.heap.UpdateCharge(*category);
  return ResultCode::Ran;
}

}  // namespace orxeps::operators
