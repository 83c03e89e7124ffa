#include "tests/hostile/HostileRunner.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <fstream>
#include <memory>
#include <utility>

#if defined(__GLIBC__)
#  include <malloc.h>
#endif

#include "framework/CheckedHost.h"
#include "framework/InputStreams.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {

namespace {

// Appended to every document: a stroke on a second page. It needs no operands, so it comes through
// whatever is on the stacks.
constexpr std::string_view kTail = "\n%%Page: 1 1\n%%Page: 2 2\nstroke\n";

// The growth of the process since the meter was made.
class PeakMeter {
public:
  PeakMeter() {
#if defined(__GLIBC__)
    malloc_trim(0);  // what earlier work has freed must not hide what this work needs
#endif
    isExact = static_cast<bool>(std::ofstream("/proc/self/clear_refs") << "5\n" << std::flush);
    before = Kilobytes("VmRSS:");
  }
  [[nodiscard]] std::size_t MegabytesGrown() const {
    const std::size_t peak = Kilobytes("VmHWM:");
    return isExact && peak > before ? (peak - before) / 1024 : 0;
  }

private:
  static std::size_t Kilobytes(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
      std::size_t value = 0;
      if (word == name && status >> value) return value;
    }
    return 0;
  }

  bool isExact = false;
  std::size_t before = 0;
};

void* RunWork(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return nullptr;
}

}  // namespace

HostileRun RunPasses(std::string_view document, Passes passes) {
  HostileRun run;
  orxframework::MemoryInputStream bytes(document);
  orxframework::CheckedInputStream input{bytes};
  SilentGenerator silent;
  orxframework::CheckedGenerator generator{silent};
  auto interpreter = std::make_unique<orxeps::ORXPrintEPSInterpreter>(&input);
  EXPECT_EQ(interpreter->Generate(&generator), 1);
  run.wentOn = silent.strokesSincePage > 0;
  run.error = interpreter->lastError ? interpreter->lastError : "";
  if (passes == Passes::DrawingAndCounting) {
    ORXListValORXUnicodeString lines;
    EXPECT_EQ(interpreter->CollectStatistics(lines), 1);
  }
  interpreter->ReleaseObjects();
  run.objectsLeft = interpreter->heap.LiveCount();
  interpreter.reset();
  input.RequireClosed();
  for (const auto* log : {&input.Violations(), &generator.Violations()}) {
    if (!log->empty()) run.violation = log->front();
  }
  return run;
}

HostileRun RunHostile(std::string document) {
  document += kTail;
  HostileRun run;
  const PeakMeter meter;
  OnSmallStack([&] { run = RunPasses(document, Passes::DrawingAndCounting); });
  run.megabytesGrown = meter.MegabytesGrown();
  return run;
}

void OnSmallStack(const std::function<void()>& work) {
  constexpr std::size_t kStackBytes = std::size_t{1} << 20;
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackBytes), 0);
  pthread_t thread;
  auto* argument = const_cast<void*>(static_cast<const void*>(&work));
  ASSERT_EQ(pthread_create(&thread, &attributes, RunWork, argument), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

std::string Repeated(std::size_t count, std::string_view text) {
  std::string repeated;
  repeated.reserve(count * text.size());
  while (count-- > 0) repeated += text;
  return repeated;
}

}  // namespace orxtests
