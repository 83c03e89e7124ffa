#include "ps/Machine.h"

#include "ps/Dictionaries.h"

namespace orxeps {

namespace {

// Up to so many entries it is cheaper to tell each name than to have all names look again.
constexpr std::int32_t kFewEntries = 16;

}  // namespace

Machine::Machine(const OperatorTable& operatorTable)
    : names(heap.Budget()), operators(operatorTable) {
  operatorNames.reserve(operators.Rows().size());
  for (const OperatorRow& row : operators.Rows()) {
    operatorNames.push_back(names.Intern(row.name));
    operatorNames.back().Record()->row = &row;
  }
}

// What earlier passes left on the stacks stays beneath.
void Machine::BuildStandardDictionaries() {
  StandardDictionaries made = StandardDictionaries::Make(*this);
  dictionaryStack.Reserve(2);
  OpenDictionary(PSRef::Retain(made.systemdict.Get()));
  OpenDictionary(PSRef::Retain(made.userdict.Get()));
  dictionariesAtStart = dictionaryStack.Count();
  dictionaries = std::move(made);
  heap.WatchForLosses(*dictionaries.systemdict);
}

void Machine::LeaveStandardDictionaries() noexcept {
  untouched.StandFor(*this, dictionaries, dictionariesAtStart - 1);
  dictionaries = {};
}

void Machine::OpenDictionary(PSRef dictionary) {
  PSObject& opened = *dictionary;
  dictionaryStack.Append(std::move(dictionary));
  ForgetLookupsThrough(opened);
}

PSRef Machine::CloseDictionary() {
  const bool laysOthersOpen = dictionaryStack.Count() <= dictionariesAtStart;
  if (laysOthersOpen && !untouched.IsEmpty()) untouched.Separate(*this);
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
  untouched.Clear();
  heap.ForgetLookups();
}

}  // namespace orxeps
