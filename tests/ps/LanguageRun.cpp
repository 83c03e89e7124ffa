#include "tests/ps/LanguageRun.h"

#include <gtest/gtest.h>

#include "ps/Execution.h"
#include "ps/LanguageOperators.h"

namespace orxtests {

namespace {

constexpr orxeps::OperatorTable kTable{orxeps::kLanguageOperators<LanguageRun>};

}  // namespace

LanguageRun::LanguageRun(std::string_view program)
    : LanguageRun(ExactBytes{std::string(program) + "\n"}) {}

LanguageRun::LanguageRun(ExactBytes exact) : Machine(kTable), stream(std::string(exact.bytes)) {}

LanguageRun::~LanguageRun() {
  ReleaseObjects();
  EXPECT_EQ(heap.LiveCount(), 0U) << "objects left behind";
}

void LanguageRun::Run() {
  heap.BeginPass();
  BuildStandardDictionaries();
  scanner.input.Open();
  scanner.input.Rewind();
  while (scanner.input.IsReadable()) {
    try {
      RunNext();
    } catch (const orxeps::LimitReached& limit) {
      orxeps::AbandonRun(*this, limit.error);
    }
  }
  scanner.input.Close();
}

void LanguageRun::RunNext() {
  const orxeps::Token token = scanner.ReadToken();
  const orxeps::PSRef object =
      token.text.starts_with('{') ? scanner.ReadProcedure() : scanner.ReadObject(token);
  orxeps::ExecuteObject(*this, object.Get());
}

std::string OutcomeOf(std::string_view program) {
  LanguageRun run(program);
  run.Run();
  return ShowOutcome(run);
}

std::string StackAfter(std::string_view program) {
  LanguageRun run(program);
  run.Run();
  return run.Stack();
}

}  // namespace orxtests
