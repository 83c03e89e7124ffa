#include "ps/Execution.h"

#include <limits>
#include <vector>

#include "ps/Dictionaries.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

// From here on nothing of the operator's object is read: the operator may release or overwrite it.
ResultCode RunOperator(ORXPrintEPSInterpreter& interpreter, const OperatorRow& row) {
  const ResultCode result = row.handler(interpreter);
  if (row.counter && interpreter.statistics) {
    std::int32_t& count = interpreter.statistics->*row.counter;
    if (count < std::numeric_limits<std::int32_t>::max()) ++count;
  }
  return result;
}

// Does what executing one object does at once; a procedure only begins to run.
void BeginExecution(ORXPrintEPSInterpreter& interpreter, PSObject* object) {
  for (int hops = 0; !object->literal; ++hops) {
    if (object->Is(PSObjectType::Operator)) {
      if (object->operatorRow) RunOperator(interpreter, *object->operatorRow);
      return;
    }
    if (object->Is(PSObjectType::Procedure)) {
      return interpreter.executionStack.RunProcedure(PSRef::Retain(object));
    }
    if (!object->Is(PSObjectType::Name)) break;
    object = LookupName(interpreter, object->nameText).value;
    if (!object) return;
    if (object->Is(PSObjectType::Procedure)) {
      return interpreter.executionStack.RunProcedure(PSRef::Retain(object));
    }
    if (hops == kMaxNameResolutions) {
      RaiseError(interpreter, "limitcheck");
      return;
    }
  }
  PushShared(interpreter, object);
}

// Goes on with what runs until only `depth` frames are left.
void RunDownTo(ORXPrintEPSInterpreter& interpreter, std::size_t depth) {
  for (std::uint32_t step = 1; interpreter.executionStack.Depth() > depth; ++step) {
    if (step % 4096 == 0 && !interpreter.MayGoOn()) return interpreter.executionStack.Abandon();
    if (PSObject* next = interpreter.executionStack.Advance()) BeginExecution(interpreter, next);
  }
}

}  // namespace

NameLookup LookupName(const ORXPrintEPSInterpreter& interpreter, const ORXString& name) noexcept {
  const ObjectList& stack = interpreter.dictionaryStack;
  for (std::int32_t i = stack.Count(); i >= 1; --i) {
    PSObject* dictionary = stack.At(i);
    if (!dictionary->Is(PSObjectType::Dictionary)) continue;
    if (void* value = dictionary->dictEntries.Locate(name)) {
      return {static_cast<PSObject*>(value), dictionary};
    }
  }
  return {};
}

void ExecuteObject(ORXPrintEPSInterpreter& interpreter, PSObject* object) {
  if (!object) return;
  const std::size_t depth = interpreter.executionStack.Depth();
  BeginExecution(interpreter, object);
  RunDownTo(interpreter, depth);
}

ResultCode DispatchOperator(ORXPrintEPSInterpreter& interpreter, const ORXString& name) {
  const OperatorRow* row = FindOperator(name.View());
  if (!row) return ResultCode::UnknownOperator;
  const std::size_t depth = interpreter.executionStack.Depth();
  const ResultCode result = RunOperator(interpreter, *row);
  RunDownTo(interpreter, depth);
  return result;
}

void BindProcedure(ORXPrintEPSInterpreter& interpreter, PSObject& procedure) {
  std::vector<PSObject*> unbound{&procedure};
  while (!unbound.empty()) {
    ObjectList& elements = unbound.back()->procElements;
    unbound.pop_back();
    for (std::int32_t i = 1; i <= elements.Count(); ++i) {
      PSObject* element = elements.At(i);
      if (element->Is(PSObjectType::Procedure)) {
        unbound.push_back(element);
        continue;
      }
      PSObject* value = LookupName(interpreter, element->nameText).value;
      if (!value || !value->Is(PSObjectType::Operator)) continue;
      elements.SetAt(i, PSRef::Retain(value).Leak());
      element->Release();
    }
  }
}

}  // namespace orxeps
