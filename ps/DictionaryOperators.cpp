// Operators that build dictionaries, define and find names, and manage the dictionary stack.

#include "ps/Dictionaries.h"
#include "ps/Execution.h"
#include "ps/Operands.h"
#include "ps/Operators.h"

namespace orxeps::operators {

// any dict -> a new dictionary; the operand is not looked at
ResultCode Dict(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  interpreter.operandStack.Drop(1);
  return PushResult(interpreter, interpreter.heap.Make(PSObjectType::Dictionary));
}

// mark key1 value1 ... keyn valuen >> -> dictionary. A key that is no name is the empty text; of a
// key given twice the pair written last wins.
ResultCode EndDictionary(ORXPrintEPSInterpreter& interpreter) {
  OperandStack& stack = interpreter.operandStack;
  const std::int32_t count = CountAboveMark(interpreter);
  if (count % 2 != 0) return RaiseError(interpreter, "rangecheck");
  PSRef dictionary = interpreter.heap.Make(PSObjectType::Dictionary);
  for (std::int32_t depth = count - 1; depth > 0; depth -= 2) {
    DictInsert(interpreter.heap, *dictionary, stack.Below(depth)->nameText,
               PSRef::Retain(stack.Below(depth - 1)));
  }
  stack.Drop(count + 1);
  return PushResult(interpreter, std::move(dictionary));
}

// dictionary begin ->
ResultCode Begin(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  if (!interpreter.operandStack.Top()->Is(PSObjectType::Dictionary)) {
    return RaiseError(interpreter, "typecheck");
  }
  ObjectList& stack = interpreter.dictionaryStack;
  if (stack.Count() - interpreter.dictionariesAtStart >= kMaxOpenDictionaries) {
    return RaiseError(interpreter, "dictstackoverflow");
  }
  stack.Reserve(1);
  stack.Append(TakeOperand(interpreter).Leak());
  return ResultCode::Ran;
}

// end ->
ResultCode End(ORXPrintEPSInterpreter& interpreter) {
  ObjectList& stack = interpreter.dictionaryStack;
  if (stack.Count() <= 2) return RaiseError(interpreter, "dictstackunderflow");
  const PSRef ended = PSRef::Adopt(stack.Last());
  stack.RemoveLast();
  return ResultCode::Ran;
}

// key value def ->
ResultCode Def(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 2)) return StackUnderflow(interpreter);
  PSRef value = TakeOperand(interpreter);
  const PSRef key = TakeOperand(interpreter);
  if (!key->Is(PSObjectType::Name)) return RaiseError(interpreter, "typecheck");
  PSObject* current = interpreter.dictionaryStack.Last();
  if (!current) return ResultCode::Failed;
  DictInsert(interpreter.heap, *current, key->nameText, std::move(value));
  return ResultCode::Ran;
}

// key load -> value; an unknown key stays
ResultCode Load(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) return StackUnderflow(interpreter);
  PSRef key = TakeOperand(interpreter);
  if (!key->Is(PSObjectType::Name)) return RaiseError(interpreter, "typecheck");
  if (PSObject* value = LookupName(interpreter, key->nameText).value) {
    return PushShared(interpreter, value);
  }
  interpreter.operandStack.Push(std::move(key));
  return RaiseError(interpreter, "undefined");
}

// key where -> dictionary true, or false
ResultCode Where(ORXPrintEPSInterpreter& interpreter) {
  if (!HasOperands(interpreter, 1)) {
    StackUnderflow(interpreter);
    return ResultCode::Ran;
  }
  const PSRef key = TakeOperand(interpreter);
  if (!key->Is(PSObjectType::Name)) {
    RaiseError(interpreter, "typecheck");
    return ResultCode::Ran;
  }
  const NameLookup found = LookupName(interpreter, key->nameText);
  if (found.value) PushShared(interpreter, found.dictionary);
  return PushBoolean(interpreter, found.value != nullptr);
}

namespace {

ResultCode PushDictionary(ORXPrintEPSInterpreter& interpreter, PSObject* dictionary) {
  return dictionary ? PushShared(interpreter, dictionary) : ResultCode::Ran;
}

}  // namespace

// -> the dictionary that "def" writes into
ResultCode CurrentDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaryStack.Last());
}

// -> the dictionary of that name, here and below
ResultCode SystemDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaries.systemdict.Get());
}

ResultCode UserDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaries.userdict.Get());
}

ResultCode GlobalDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaries.globaldict.Get());
}

ResultCode ErrorDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaries.errordict.Get());
}

ResultCode StatusDict(ORXPrintEPSInterpreter& interpreter) {
  return PushDictionary(interpreter, interpreter.dictionaries.statusdict.Get());
}

}  // namespace orxeps::operators
