// The library's face to the framework.
#include "host/ORXOMModule.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

#include "tests/support/Interpretation.h"

extern "C" int ORX_MODULE_MARKER() noexcept;
extern "C" void* fctCreateORXPrintEPSInterpreter(void* input) noexcept;

namespace orxtests {
namespace {

TEST(Module, RegistersItsFactoryWhenItIsLoaded) {
  EXPECT_EQ(ORX_MODULE_MARKER(), 1);
  const ORXFactoryFunction factory = ORXFillDictionary::Find("ORXPrintEPSInterpreter");
  ASSERT_EQ(factory, &fctCreateORXPrintEPSInterpreter);
  orxframework::MemoryInputStream input("%%Pages: 4\n");
  PrintInputStream* stream = &input;
  const std::unique_ptr<ORXPrintInterpreter> interpreter(
      static_cast<ORXPrintInterpreter*>(factory(stream)));
  ASSERT_TRUE(interpreter);
  unsigned count = 0;
  EXPECT_EQ(interpreter->GetPageCount(&count), 1);
  EXPECT_EQ(count, 4U);
}

TEST(Module, InterpretersOnTwoThreadsShareNothing) {
  const std::string program =
      "/n 3000 def /p {n 0 eq {} {/n n 1 sub def n 0 moveto [n (x)] 0 get n lineto stroke\n"
      "<< /a n >> /a get pop gsave 1.001 dup scale grestore p} ifelse} def p";
  const std::string expected = CallsOf(program);
  std::string first;
  std::string second;
  std::thread one([&] { first = CallsOf(program); });
  std::thread two([&] { second = CallsOf(program); });
  one.join();
  two.join();
  EXPECT_EQ(first, expected);
  EXPECT_EQ(second, expected);
}

}  // namespace
}  // namespace orxtests
