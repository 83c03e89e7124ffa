#include "tests/support/Outcomes.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdint>

namespace orxtests {

namespace {

using orxeps::ObjectList;
using orxeps::PSObject;
using orxeps::PSObjectType;

std::string ShowReal(float value) {
  char text[64];
  std::string shown(text, std::to_chars(text, text + sizeof text, value).ptr);
  if (shown.find_first_not_of("-0123456789") == std::string::npos) shown += ".0";
  return shown;
}

std::string Show(const PSObject& object);

std::string ShowElements(const ObjectList& elements) {
  std::string shown;
  for (std::int32_t i = 1; i <= elements.Count(); ++i) {
    if (i > 1) shown += ' ';
    shown += Show(*elements.At(i));
  }
  return shown;
}

std::string Show(const PSObject& object) {
  switch (object.type) {
    case PSObjectType::None:
      return "none";
    case PSObjectType::Integer:
      return std::to_string(object.intValue);
    case PSObjectType::Real:
      return ShowReal(object.realValue);
    case PSObjectType::String:
      return "(" + std::string(object.Parts().stringText.View()) + ")";
    case PSObjectType::Name:
      return (object.literal ? "/" : "") + std::string(object.nameText.View());
    case PSObjectType::Array:
      return "[" + ShowElements(object.Parts().arrayElements) + "]";
    case PSObjectType::Procedure:
      return "{" + ShowElements(object.Parts().procElements) + "}";
    case PSObjectType::File:
      return "file";
    case PSObjectType::Dictionary:
      return "<<" + std::to_string(object.Parts().dictEntries.Count()) + ">>";
    case PSObjectType::Boolean:
      return object.boolValue ? "true" : "false";
    case PSObjectType::Mark:
      return "mark";
    case PSObjectType::Null:
      return "null";
    case PSObjectType::Operator:
      return "--" + std::string(object.nameText.View()) + "--";
  }
  return "?";
}

}  // namespace

std::string ShowStack(const orxeps::OperandStack& stack) {
  std::string shown;
  for (std::int32_t depth = stack.Count() - 1; depth >= 0; --depth) {
    shown += Show(*stack.Below(depth));
    if (depth > 0) shown += ' ';
  }
  return shown;
}

std::string ShowOutcome(const orxeps::Machine& machine) {
  std::string outcome = ShowStack(machine.operandStack);
  if (machine.lastError) outcome.append(outcome.empty() ? "!" : " !").append(machine.lastError);
  return outcome;
}

void ExpectOutcomes(std::initializer_list<Outcome> table) {
  for (const auto& [program, expected] : table) EXPECT_EQ(OutcomeOf(program), expected) << program;
}

}  // namespace orxtests
