#include "ps/Execution.h"

#include <limits>
#include <vector>

#include "ps/Dictionaries.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

// From here on nothing of the operator's object is read: the operator may release or overwrite it.
inline ResultCode RunOperator(Machine& machine, const OperatorRow& row) {
  machine.running = &row;
  const ResultCode result = machine.operandStack.Count() < row.operands
                                ? RaiseError(machine, "stackunderflow")
                                : row.run(machine);
  if (machine.counters && row.counter != kNotCounted) {
    std::int32_t& count = machine.counters[row.counter];
    if (count < std::numeric_limits<std::int32_t>::max()) ++count;
  }
  return result;
}

// A complete "systemdict" lies above untouched dictionaries until entries have been lost.
NameLookup FindInDictionaries(const Machine& machine, const ORXString& name) noexcept {
  const bool passesUntouched = !machine.heap.HasLostEntries();
  const ObjectList& stack = machine.dictionaryStack;
  for (std::int32_t i = stack.Count(); i >= 1; --i) {
    PSObject* dictionary = stack.At(i);
    if (passesUntouched && machine.untouched.Holds(dictionary)) continue;
    if (!dictionary->Is(PSObjectType::Dictionary)) continue;
    if (PSObject* value = DictLocate(dictionary->Parts().dictEntries, name)) {
      return {value, dictionary};
    }
  }
  return {};
}

NameLookup SearchDictionaries(Machine& machine, const ORXString& name) {
  if (!machine.heap.MayBeKey(name)) return {};
  if (machine.heap.HasLostEntries() && !machine.untouched.IsEmpty()) {
    machine.untouched.Separate(machine);
  }
  machine.watch.CountWork(machine.dictionaryStack.Count());
  return FindInDictionaries(machine, name);
}

inline const NameLookup& LookupName(Machine& machine, Name& name) {
  if (name.generation != machine.heap.Generation()) {
    name.found = SearchDictionaries(machine, name.text);
    name.generation = machine.heap.Generation();
  }
  return name.found;
}

}  // namespace

NameLookup LookupName(Machine& machine, const NameText& name) {
  return LookupName(machine, name.IsEmpty() ? machine.names.Empty() : *name.Record());
}

const PSObject* LookAtName(const Machine& machine, const NameText& name) noexcept {
  const ORXString text = name.Text();
  return machine.heap.MayBeKey(text) ? FindInDictionaries(machine, text).value : nullptr;
}

namespace {

[[gnu::cold, gnu::noinline]] void NoteUnknownName(const Machine& machine,
                                                  const Name& name) noexcept {
  machine.watch.Note({ORXNoteKind::UnknownName, name.text.View(), {}, 0});
}

// Does what executing one object does at once; a procedure only begins to run. Null is the value of
// a name that is defined nowhere. Inlined by force: the loop below is the interpreter's hottest.
[[gnu::always_inline]] inline void BeginExecution(Machine& machine, PSObject* object) {
  while (object && !object->literal) {
    if (object->Is(PSObjectType::Operator)) {
      if (const OperatorRow* row = object->nameText.Row()) RunOperator(machine, *row);
      return;
    }
    if (object->Is(PSObjectType::Procedure)) {
      return machine.executionStack.RunProcedure(PSRef::Retain(object));
    }
    if (!object->Is(PSObjectType::Name)) break;
    const NameText& name = object->nameText;
    object = LookupName(machine, name).value;
    if (!object)
      return NoteUnknownName(machine, name.IsEmpty() ? machine.names.Empty() : *name.Record());
    if (object->Is(PSObjectType::Procedure)) {
      return machine.executionStack.RunProcedure(PSRef::Retain(object));
    }
  }
  if (object) PushShared(machine, object);
}

// Goes on with what runs until only `depth` frames are left.
void RunDownTo(Machine& machine, std::size_t depth) {
  while (machine.executionStack.Depth() > depth) {
    if (!machine.watch.MayTakeStep()) return machine.executionStack.Abandon();
    while (PSObject* next = machine.executionStack.Advance()) {
      BeginExecution(machine, next);
      if (!machine.watch.MayTakeStep()) return machine.executionStack.Abandon();
    }
  }
}

}  // namespace

void ExecuteObject(Machine& machine, PSObject* object) {
  const std::size_t depth = machine.executionStack.Depth();
  BeginExecution(machine, object);
  RunDownTo(machine, depth);
}

void ExecuteName(Machine& machine, Name& name) {
  PSObject* value = LookupName(machine, name).value;
  if (!value) return NoteUnknownName(machine, name);
  const std::size_t depth = machine.executionStack.Depth();
  if (value->Is(PSObjectType::Procedure)) {
    machine.executionStack.RunProcedure(PSRef::Retain(value));
  } else {
    BeginExecution(machine, value);
  }
  RunDownTo(machine, depth);
}

ResultCode DispatchOperator(Machine& machine, std::string_view name) {
  const NameText text = machine.names.Intern(name);
  if (!text.Row()) return ResultCode::UnknownOperator;
  const std::size_t depth = machine.executionStack.Depth();
  const ResultCode result = RunOperator(machine, *text.Row());
  RunDownTo(machine, depth);
  return result;
}

void BindProcedure(Machine& machine, PSObject& procedure) {
  std::vector<PSObject*> unbound{&procedure};
  while (!unbound.empty()) {
    const ObjectList& elements = unbound.back()->Parts().procElements;
    ObjectList* own = elements.IsEmpty() ? nullptr : &unbound.back()->OwnParts().procElements;
    unbound.pop_back();
    for (std::int32_t i = 1; i <= elements.Count(); ++i) {
      if (!machine.watch.MayTakeStep()) return;
      PSObject* element = elements.At(i);
      if (element->Is(PSObjectType::Procedure)) {
        unbound.push_back(element);
        continue;
      }
      PSObject* value = LookupName(machine, element->nameText).value;
      if (!value || !value->Is(PSObjectType::Operator)) continue;
      static_cast<void>(own->Replace(i, PSRef::Retain(value)));
    }
  }
}

}  // namespace orxeps
