// Operators that build dictionaries, define and find names, and manage the dictionary stack.

#include "ps/Dictionaries.h"
#include "ps/Execution.h"
#include "ps/LanguageOperators.h"
#include "ps/Operands.h"

namespace orxeps::operators {

// any dict -> a new dictionary; the operand is not looked at
ResultCode Dict(Machine& machine) {
  machine.operandStack.Drop(1);
  return PushResult(machine, machine.heap.Make(PSObjectType::Dictionary));
}

// mark key1 value1 ... keyn valuen >> -> dictionary. A key that is no name is the empty text; of a
// key given twice the pair written last wins.
ResultCode EndDictionary(Machine& machine) {
  OperandStack& stack = machine.operandStack;
  const std::int32_t count = CountAboveMark(machine);
  if (count % 2 != 0) return RaiseError(machine, "rangecheck");
  machine.watch.CountWork(count);
  PSRef dictionary = machine.heap.Make(PSObjectType::Dictionary);
  for (std::int32_t depth = count - 1; depth > 0; depth -= 2) {
    DictInsert(machine.heap, *dictionary, stack.Below(depth)->nameText,
               PSRef::Retain(stack.Below(depth - 1)));
  }
  stack.Drop(count + 1);
  return PushResult(machine, std::move(dictionary));
}

// dictionary begin ->
ResultCode Begin(Machine& machine) {
  if (!machine.operandStack.Top()->Is(PSObjectType::Dictionary)) {
    return RaiseError(machine, "typecheck");
  }
  ObjectList& stack = machine.dictionaryStack;
  if (stack.Count() - machine.dictionariesAtStart >= kMaxOpenDictionaries) {
    throw LimitReached{"dictstackoverflow"};
  }
  stack.Reserve(1);
  machine.OpenDictionary(TakeOperand(machine));
  return ResultCode::Ran;
}

// end ->
ResultCode End(Machine& machine) {
  if (machine.dictionaryStack.Count() <= 2) return RaiseError(machine, "dictstackunderflow");
  static_cast<void>(machine.CloseDictionary());
  return ResultCode::Ran;
}

// key value def ->
ResultCode Def(Machine& machine) {
  PSRef value = TakeOperand(machine);
  const PSRef key = TakeOperand(machine);
  if (!key->Is(PSObjectType::Name)) return RaiseError(machine, "typecheck");
  PSObject* current = machine.dictionaryStack.Last();
  if (!current) return ResultCode::Failed;
  DictInsert(machine.heap, *current, key->nameText, std::move(value));
  return ResultCode::Ran;
}

// key load -> value; an unknown key stays
ResultCode Load(Machine& machine) {
  PSRef key = TakeOperand(machine);
  if (!key->Is(PSObjectType::Name)) return RaiseError(machine, "typecheck");
  if (PSObject* value = LookupName(machine, key->nameText).value) {
    return PushShared(machine, value);
  }
  machine.operandStack.Push(std::move(key));
  return RaiseError(machine, "undefined");
}

// key where -> dictionary true, or false
ResultCode Where(Machine& machine) {
  if (!HasOperands(machine, 1)) {
    StackUnderflow(machine);
    return ResultCode::Ran;
  }
  const PSRef key = TakeOperand(machine);
  if (!key->Is(PSObjectType::Name)) {
    RaiseError(machine, "typecheck");
    return ResultCode::Ran;
  }
  const NameLookup found = LookupName(machine, key->nameText);
  if (found.value) PushShared(machine, found.dictionary);
  return PushBoolean(machine, found.value != nullptr);
}

namespace {

ResultCode PushDictionary(Machine& machine, PSObject* dictionary) {
  return dictionary ? PushShared(machine, dictionary) : ResultCode::Ran;
}

}  // namespace

// -> the dictionary that "def" writes into
ResultCode CurrentDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaryStack.Last());
}

// -> the dictionary of that name, here and below
ResultCode SystemDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaries.systemdict.Get());
}

ResultCode UserDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaries.userdict.Get());
}

ResultCode GlobalDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaries.globaldict.Get());
}

ResultCode ErrorDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaries.errordict.Get());
}

ResultCode StatusDict(Machine& machine) {
  return PushDictionary(machine, machine.dictionaries.statusdict.Get());
}

}  // namespace orxeps::operators
