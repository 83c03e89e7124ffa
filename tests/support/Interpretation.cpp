#include "tests/support/Interpretation.h"

#include <gtest/gtest.h>

#include <charconv>

namespace orxtests {

namespace {

using orxeps::ObjectList;
using orxeps::PSObject;
using orxeps::PSObjectType;

template <typename Number>
std::string Shortest(Number value) {
  char text[64];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

// As a float wherever that says it all.
std::string ShowCoordinate(double value) {
  const auto narrow = static_cast<float>(value);
  return static_cast<double>(narrow) == value ? Shortest(narrow) : Shortest(value);
}

std::string ShowReal(float value) {
  std::string shown = Shortest(value);
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

void ExpectNoViolations(const orxframework::ViolationLog& log) {
  for (const std::string& violation : log.Violations()) ADD_FAILURE() << violation;
}

}  // namespace

Interpretation::Interpretation(std::string_view program)
    : Interpretation(ExactBytes{std::string(program) + "\n"}) {}

Interpretation::Interpretation(ExactBytes exact)
    : bytes(std::string(exact.bytes)),
      tracer(orxdrawing::TraceGenerator::Samples::Written,
             [this](std::string_view text) { calls += text; }),
      interpreter(std::make_unique<orxeps::ORXPrintEPSInterpreter>(&input)) {}

Interpretation::~Interpretation() {
  interpreter->ReleaseObjects();
  if (!circlesExpected) {
    EXPECT_EQ(interpreter->heap.LiveCount(), 0U) << "objects left behind";
  }
  interpreter.reset();
  input.RequireClosed();
  ExpectNoViolations(input);
  if (!oddCallsAllowed) ExpectNoViolations(generator);
}

std::string Interpretation::Draw() {
  calls.clear();
  EXPECT_EQ(interpreter->Generate(&generator), 1);
  return Calls();
}

std::string Interpretation::Calls() {
  tracer.Flush();
  return calls;
}

std::string Interpretation::DrawPage(unsigned page) {
  interpreter->SetAllPages(0);
  interpreter->SetCurrentPage(page);
  return Draw();
}

std::string Interpretation::Count() {
  calls.clear();
  ORXListValORXUnicodeString lines;
  EXPECT_EQ(interpreter->CollectStatistics(lines), 1);
  std::string report;
  for (std::size_t i = 1; i <= lines.Count(); ++i) report += lines.At(i).ToUtf8() + "\n";
  return report;
}

std::string Interpretation::Stack() const {
  std::string shown;
  for (std::int32_t depth = interpreter->operandStack.Count() - 1; depth >= 0; --depth) {
    shown += Show(*interpreter->operandStack.Below(depth));
    if (depth > 0) shown += ' ';
  }
  return shown;
}

std::string Interpretation::Path() const {
  const orxeps::GraphicsStates& states = interpreter->canvas.states;
  std::string shown;
  for (std::size_t i = 1; i <= states.PathCount(); ++i) {
    const orxeps::PathPoint& point = states.PathAt(i);
    if (i > 1) shown += ' ';
    shown += point.kind == orxeps::PathPointKind::Move ? "M " : "L ";
    shown += ShowCoordinate(point.x) + " " + ShowCoordinate(point.y);
  }
  return shown;
}

std::string_view Interpretation::Error() const {
  return interpreter->lastError ? interpreter->lastError : "";
}

std::string StackAfter(std::string_view program) {
  Interpretation interpretation(program);
  static_cast<void>(interpretation.Draw());
  return interpretation.Stack();
}

void ExpectOutcomes(std::initializer_list<Outcome> table) {
  for (const auto& [program, expected] : table) {
    Interpretation interpretation(program);
    static_cast<void>(interpretation.Draw());
    std::string outcome = interpretation.Stack();
    if (!interpretation.Error().empty()) {
      outcome.append(outcome.empty() ? "!" : " !").append(interpretation.Error());
    }
    EXPECT_EQ(outcome, expected) << program;
  }
}

std::string CallsOf(std::string_view program) {
  Interpretation interpretation(program);
  return interpretation.Draw();
}

}  // namespace orxtests
