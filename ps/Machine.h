// The language's half of an interpreter: heap, names, stacks, dictionaries and the last error. It
// knows no page, no generator and no image; whoever adds those derives from it.
//
// A machine owns every object that it holds. What one pass leaves on its stacks is there in the
// next.
#pragma once

#include <cstdint>
#include <vector>

#include "ps/ExecutionStack.h"
#include "ps/NameTable.h"
#include "ps/ObjectHeap.h"
#include "ps/ObjectList.h"
#include "ps/OperandStack.h"
#include "ps/OperatorRow.h"
#include "ps/RunWatch.h"
#include "ps/StandardDictionaries.h"

namespace orxeps {

class Machine {
public:
  // The table is borrowed and must outlive the machine. Throws std::bad_alloc.
  explicit Machine(const OperatorTable& operatorTable);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Makes the standard dictionaries and opens the first two on top of what earlier passes left.
  // Throws LimitReached and std::bad_alloc.
  void BuildStandardDictionaries();
  // The pass is over: what it made stays on the dictionary stack, or what stands for it.
  void LeaveStandardDictionaries() noexcept;
  // Opens a dictionary, or closes the current one. Names forget what they found through the stack
  // as it was.
  void OpenDictionary(PSRef dictionary);
  [[nodiscard]] PSRef CloseDictionary();
  // Releases every object that the stacks and dictionaries hold; only objects that keep each other
  // alive in a circle remain on the heap.
  void ReleaseObjects() noexcept;

  // Destroyed in reverse order: no name outlives the table, no object the heap.
  ObjectHeap heap;
  NameTable names;
  const OperatorTable& operators;
  std::vector<NameText> operatorNames;  // in the order of the table

  OperandStack operandStack;
  ObjectList dictionaryStack;  // the bottom first; the last is the current dictionary
  ExecutionStack executionStack;
  StandardDictionaries dictionaries;
  UntouchedDictionaries untouched;
  std::int32_t dictionariesAtStart = 0;  // entries of the dictionary stack when the pass began

  RunWatch watch;
  const OperatorRow* running = nullptr;  // the operator that runs or ran last
  std::int32_t* counters = nullptr;      // what the operators' rows count in, or null

  std::uint8_t errorFlag = 0;       // 1 once any error has been raised
  const char* lastError = nullptr;  // its name, for whoever debugs; nothing in a run reads it

protected:
  ~Machine() { ReleaseObjects(); }

private:
  void ForgetLookupsThrough(const PSObject& dictionary) noexcept;
};

// Every owner of a machine has this part.
inline Machine& PartOf(Machine& machine, Machine* /*selects*/) noexcept { return machine; }

}  // namespace orxeps
