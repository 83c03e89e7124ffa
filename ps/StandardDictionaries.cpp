#include "ps/StandardDictionaries.h"

#include <algorithm>
#include <bit>

#include "ps/Dictionaries.h"
#include "ps/Machine.h"

namespace orxeps {

namespace {

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

// Whether what an object has in every type is as in a new one.
bool IsLikeNew(const PSObject& object, PSObjectType type) noexcept {
  const PSParts& parts = object.Parts();
  return object.Is(type) && object.boolValue == 0 && object.intValue == 0 &&
         std::bit_cast<std::uint32_t>(object.realValue) == 0 && parts.stringText.IsEmpty() &&
         parts.procElements.IsEmpty() && parts.arrayElements.IsEmpty() && !parts.fileSource &&
         parts.fileFilters.Count() == 0;
}

bool IsUntouchedOperator(const PSObject* object, const NameText& name) noexcept {
  return object && object->refCount == 1 && object->literal == 0 && object->nameText == name &&
         IsLikeNew(*object, PSObjectType::Operator) && object->Parts().dictEntries.Count() == 0;
}

// REQUIRES: nobody but the dictionary stack and the maker holds it.
bool IsUntouched(const PSObject& dictionary, const std::vector<NameText>& operators) noexcept {
  const ORXHashDico& entries = dictionary.Parts().dictEntries;
  return dictionary.literal == 1 && dictionary.nameText.IsEmpty() &&
         IsLikeNew(dictionary, PSObjectType::Dictionary) &&
         entries.Count() == static_cast<std::int32_t>(operators.size()) &&
         std::ranges::all_of(operators, [&entries](const NameText& name) {
           return IsUntouchedOperator(DictLocate(entries, name.Text()), name);
         });
}

}  // namespace

StandardDictionaries StandardDictionaries::Make(Machine& machine) {
  StandardDictionaries made;
  made.systemdict = MakeSystemDict(machine);
  for (PSRef* dictionary : {&made.userdict, &made.statusdict, &made.errordict, &made.globaldict}) {
    *dictionary = machine.heap.Make(PSObjectType::Dictionary);
  }
  return made;
}

void UntouchedDictionaries::StandFor(Machine& machine, const StandardDictionaries& made,
                                     std::int32_t systemdictAt) noexcept {
  const auto standFor = [&machine](PSRef& standing, const PSRef& dictionary, std::int32_t position,
                                   const std::vector<NameText>& operators) {
    ObjectList& stack = machine.dictionaryStack;
    constexpr std::uint32_t kHolders = 2;  // the stack and the maker
    if (!dictionary || position < 1 || position > stack.Count() ||
        stack.At(position) != dictionary.Get() || dictionary->refCount != kHolders ||
        !IsUntouched(*dictionary, operators)) {
      return;
    }
    if (!standing) standing = PSRef::Retain(dictionary.Get());
    static_cast<void>(stack.Replace(position, PSRef::Retain(standing.Get())));
  };
  standFor(systemdict, made.systemdict, systemdictAt, machine.operatorNames);
  standFor(userdict, made.userdict, systemdictAt + 1, {});
  machine.heap.ForgetLookups();
}

void UntouchedDictionaries::Separate(Machine& machine) {
  ObjectList& stack = machine.dictionaryStack;
  for (std::int32_t i = 1; i <= stack.Count(); ++i) {
    if (!Holds(stack.At(i))) continue;
    const bool isSystemdict = stack.At(i) == systemdict.Get();
    PSRef own =
        isSystemdict ? MakeSystemDict(machine) : machine.heap.Make(PSObjectType::Dictionary);
    static_cast<void>(stack.Replace(i, std::move(own)));
  }
  machine.heap.ForgetLookups();
  Clear();
}

}  // namespace orxeps
