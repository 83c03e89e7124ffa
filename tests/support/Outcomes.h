// What programs leave on the operand stack, as text, and tables of programs with what they leave.
//
// Every test program that includes this brings a runner of its own, OutcomeOf and StackAfter: the
// whole interpreter (tests/support/Interpretation.cpp), or the language alone
// (tests/ps/LanguageRun.cpp).
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "ps/Machine.h"

namespace orxtests {

// An operand stack, bottom first, entries separated by spaces: 1 2.0 (string) /name executable-name
// [array] {procedure} <<number-of-entries>> true mark null --operator-- file none.
[[nodiscard]] std::string ShowStack(const orxeps::OperandStack& stack);

// The stack and, behind it, "!" with the error raised last if there was any: "1 2 !rangecheck".
[[nodiscard]] std::string ShowOutcome(const orxeps::Machine& machine);

// What a program leaves, as ShowOutcome and ShowStack say it.
[[nodiscard]] std::string OutcomeOf(std::string_view program);
[[nodiscard]] std::string StackAfter(std::string_view program);

struct Outcome {
  std::string_view program;
  std::string_view expected;
};
void ExpectOutcomes(std::initializer_list<Outcome> table);

}  // namespace orxtests
