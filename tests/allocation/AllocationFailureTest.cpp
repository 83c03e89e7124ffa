// Memory that runs out. Every allocation of ten documents fails, one after the other: alone, and
// together with all that come after it. Each time nothing may escape the library's boundary or be
// lost, and the interpreter must still be good for destruction and, with memory back, for a pass.
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <string_view>

#include "framework/InputStreams.h"
#include "framework/PropertiesControl.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "tests/allocation/FailingMemory.h"
#include "tests/hostile/Documents.h"
#include "tests/support/SilentGenerator.h"

extern "C" void* fctCreateORXPrintEPSInterpreter(void* input) noexcept;

namespace orxtests {
namespace {

using orxeps::ORXPrintEPSInterpreter;

std::unique_ptr<ORXPrintEPSInterpreter> MakeInterpreter(PrintInputStream& input) {
  auto* made = static_cast<ORXPrintInterpreter*>(fctCreateORXPrintEPSInterpreter(&input));
  return std::unique_ptr<ORXPrintEPSInterpreter>(static_cast<ORXPrintEPSInterpreter*>(made));
}

void AskEverything(ORXPrintEPSInterpreter& interpreter) {
  unsigned count = 0;
  float width = 0.0F;
  float height = 0.0F;
  ORXUnicodeString label;
  ORXListValORXUnicodeString lines;
  interpreter.SetCurrentPage(1);
  interpreter.GetPageCount(&count);
  interpreter.GetPageSize(&width, &height);
  interpreter.GetPageLabel(label);
  interpreter.CollectStatistics(lines);
}

// Runs everything with too little memory, then a pass with enough of it. Returns how many
// allocations the first part attempted.
int RunShortOfMemory(const std::string& document, Shortage shortage, int failing) {
  orxframework::MemoryInputStream input{std::string_view(document)};
  SilentGenerator generator;
  std::unique_ptr<ORXPrintEPSInterpreter> interpreter;
  {
    const MemoryShortage shortOfMemory(shortage, failing);
    interpreter = MakeInterpreter(input);
    if (!interpreter) return AllocationsSoFar();
    AskEverything(*interpreter);
    interpreter->Generate(&generator);
  }
  EXPECT_EQ(interpreter->Generate(&generator), 1);
  interpreter->ReleaseObjects();
  EXPECT_EQ(interpreter->heap.LiveCount(), 0U);
  return AllocationsSoFar();
}

class AllocationFailure : public testing::TestWithParam<Shortage> {};

TEST_P(AllocationFailure, IsSurvivedWhereverItComes) {
  for (const std::string& document : TenDocuments()) {
    const int needed = RunShortOfMemory(document, GetParam(), INT_MAX);
    ASSERT_GT(needed, 100) << "allocations are not watched";
    for (int failing = 1; failing <= needed; ++failing) {
      const long before = BlocksInUse();
      RunShortOfMemory(document, GetParam(), failing);
      EXPECT_EQ(BlocksInUse(), before) << "memory is lost";
      ASSERT_FALSE(HasFailure()) << "allocation " << failing << " of " << needed << " in:\n"
                                 << document;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, AllocationFailure, testing::Values(Shortage::Once, Shortage::Lasting),
                         [](const auto& row) {
                           return row.param == Shortage::Once ? "Once" : "Lasting";
                         });

struct LowMemoryPass {
  int answer;
  int reported;  // lines
  int allocations;
};

// A drawing pass during which memory is always low, and the allocation with this number fails.
LowMemoryPass DrawWhileMemoryIsLow(std::string_view document, int failing) {
  using orxframework::PropertiesControl;
  const orxframework::ScopedProperties properties;
  int reported = 0;
  PropertiesControl::SetMemoryGauge([](float) { return 1; });
  PropertiesControl::SetReportSink([&](PrintInfoType, const ORXUnicodeString&) { ++reported; });
  orxframework::MemoryInputStream input(document);
  SilentGenerator generator;
  const auto interpreter = MakeInterpreter(input);
  const MemoryShortage shortOfMemory(Shortage::Once, failing);
  const int answer = interpreter->Generate(&generator);
  return {answer, reported, AllocationsSoFar()};
}

// The line that says that memory is low needs some itself: without it there is one line less.
TEST(AllocationFailureOfALowMemoryLine, CostsNoMoreThanTheLine) {
  constexpr std::string_view kTokens = "true true true true ";
  const int beforeTokens = DrawWhileMemoryIsLow("", INT_MAX).allocations;
  const LowMemoryPass whole = DrawWhileMemoryIsLow(kTokens, INT_MAX);
  ASSERT_GT(whole.allocations, beforeTokens);
  ASSERT_GT(whole.reported, 2);
  for (int failing = beforeTokens + 1; failing <= whole.allocations; ++failing) {
    const LowMemoryPass pass = DrawWhileMemoryIsLow(kTokens, failing);
    EXPECT_EQ(pass.answer, 1) << failing;
    EXPECT_GE(pass.reported, whole.reported - 1) << failing;
  }
}

}  // namespace
}  // namespace orxtests
