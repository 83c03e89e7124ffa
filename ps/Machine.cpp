#include "ps/Machine.h"

#include "ps/Dictionaries.h"

namespace orxeps {

namespace {

// Up to so many entries it is cheaper to tell each name than to have all names look again.
constexpr std::int32_t kFewEntries = 16;

// One Operator object for each operator, under its name.
PSRef MakeSystemDict(Machine& machine) {
  PSRef systemdict = machine.heap.Make(PSObjectType::Dictionary);
  for (const NameText& name : machine.operatorNames) {
    PSRef entry = machine.heap.Make(PSObjectType::Operator);
    entry->literal = 0;
    entry->nameText = name;
    DictInsert(machine.heap, *systemdict, name, std::move(entry));
  }
  return systemdict;
}

}  // namespace

Machine::Machine(const OperatorTable& operatorTable) : names(heap), operators(operatorTable) {
  operatorNames.reserve(operators.Rows().size());
  for (const OperatorRow& row : operators.Rows()) {
    operatorNames.push_back(names.Intern(row.name));
    operatorNames.back().Record()->row = &row;
  }
}

// What earlier passes left on the stacks stays beneath.
void Machine::BuildStandardDictionaries() {
  StandardDictionaries made;
  made.systemdict = MakeSystemDict(*this);
  for (PSRef* dictionary : {&made.userdict, &made.statusdict, &made.errordict, &made.globaldict}) {
    *dictionary = heap.Make(PSObjectType::Dictionary);
  }
  dictionaryStack.Reserve(2);
  OpenDictionary(PSRef::Retain(made.systemdict.Get()));
  OpenDictionary(PSRef::Retain(made.userdict.Get()));
  dictionariesAtStart = dictionaryStack.Count();
  dictionaries = std::move(made);
}

void Machine::OpenDictionary(PSRef dictionary) {
  PSObject& opened = *dictionary;
  dictionaryStack.Append(std::move(dictionary));
  ForgetLookupsThrough(opened);
}

PSRef Machine::CloseDictionary() {
  PSRef closed = dictionaryStack.TakeLast();
  ForgetLookupsThrough(*closed);
  return closed;
}

void Machine::ForgetLookupsThrough(const PSObject& dictionary) noexcept {
  const ORXHashDico& entries = dictionary.Parts().dictEntries;
  if (entries.Count() > kFewEntries) return heap.ForgetLookups();
  for (ORXHashCodeIter entry(entries); !entry.AtEnd(); entry.Next()) {
    if (Name* name = names.FindIfThere(entry.Key().Bytes())) name->ForgetLookup();
  }
}

void Machine::ReleaseObjects() noexcept {
  executionStack.Abandon();
  operandStack.Clear();
  dictionaryStack.Drain([](PSObject* dictionary) { dictionary->Release(); });
  dictionaries = {};
  heap.ForgetLookups();
}

}  // namespace orxeps
