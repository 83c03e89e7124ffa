// Hosts with many workers: each draws with an interpreter of its own while modules come and go,
// runs are stopped and the environment changes. Under the thread sanitizer this finds races; under
// any build, drawings that depend on what other threads do.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "drawing/TraceGenerator.h"
#include "framework/Environment.h"
#include "framework/InputStreams.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"
#include "host/ORXPrintPropertiesManager.h"
#include "host/ORXSystem.h"
#include "tests/platform/DynamicLibrary.h"

namespace orxtests {
namespace {

namespace fs = std::filesystem;

constexpr int kWorkers = 4;
constexpr int kRounds = 20;
constexpr const char* kClassName = "ORXPrintEPSInterpreter";

ORXFactoryFunction FactoryOf(void* library) {
  ORXFactoryFunction factory = nullptr;
  void* const symbol = library ? FindSymbol(library, "fctCreateORXPrintEPSInterpreter") : nullptr;
  std::memcpy(&factory, &symbol, sizeof factory);
  return factory;
}

// Says no after a number of questions, or as soon as another thread says so.
class Watcher final : public ORXInterpreterWatcher {
public:
  explicit Watcher(int answersYes = INT_MAX) : yesLeft(answersYes) {}
  bool MayGoOn() noexcept override { return !isToStop && --yesLeft > 0; }
  void PassEnded(const ORXPassEnd& end) noexcept override { result = end.result; }

  std::atomic<bool> isToStop = false;
  ORXPassResult result = ORXPassResult::Complete;

private:
  int yesLeft;
};

// All calls of a drawing pass over a stream, as text.
std::string CallsOf(ORXFactoryFunction factory, PrintInputStream& stream, Watcher& watcher) {
  const std::unique_ptr<ORXPrintInterpreter> interpreter(
      static_cast<ORXPrintInterpreter*>(factory(&stream)));
  if (!interpreter) return "no interpreter";
  if (auto* watchable = dynamic_cast<ORXWatchable*>(interpreter.get())) {
    watchable->SetWatcher(&watcher);
  }
  std::string calls;
  orxdrawing::TraceGenerator trace(orxdrawing::TraceGenerator::Samples::Summary,
                                   [&calls](std::string_view text) { calls += text; });
  interpreter->Generate(&trace);
  trace.Flush();
  return calls;
}

std::string CallsOf(ORXFactoryFunction factory, const fs::path& document, Watcher& watcher) {
  orxframework::FileInputStream stream(document);
  return CallsOf(factory, stream, watcher);
}

std::string EndlessProgram() {
  std::string program = "/a0 {} def ";
  for (int i = 1; i <= 40; ++i) {
    const std::string inner = "a" + std::to_string(i - 1);
    program += "/a" + std::to_string(i) + " {" + inner + " " + inner + "} def ";
  }
  return program + "a40 1 1 moveto 2 2 lineto stroke";
}

class Threads : public testing::Test {
protected:
  void SetUp() override {
    library = OpenLibrary(ORX_MODULE);
    factory = FactoryOf(library);
    ASSERT_TRUE(factory);
    ORXGetEnv(kUnits);  // the first question comes before the first thread
    for (const fs::directory_entry& entry : fs::directory_iterator(ORX_DOCUMENTS)) {
      Watcher watcher;
      documents.push_back({entry.path(), CallsOf(factory, entry.path(), watcher)});
    }
    ASSERT_FALSE(documents.empty());
  }
  void TearDown() override { EXPECT_TRUE(CloseLibrary(library)); }

  struct Document {
    fs::path path;
    std::string calls;
  };

  // Every other pass is stopped early: it has drawn a part of the whole then.
  void DrawEverything(int worker) const {
    for (int round = 0; round < kRounds; ++round) {
      for (std::size_t i = 0; i < documents.size(); ++i) {
        const Document& document =
            documents[(i + static_cast<std::size_t>(worker)) % documents.size()];
        Watcher patient;
        EXPECT_EQ(CallsOf(factory, document.path, patient), document.calls);
        Watcher impatient(1 + round);
        const std::string part = CallsOf(factory, document.path, impatient);
        EXPECT_EQ(part, document.calls.substr(0, part.size()));
      }
    }
  }

  void StopRunsFromOutside() const {
    orxframework::MemoryInputStream stream(EndlessProgram());
    for (int round = 0; round < kRounds; ++round) {
      Watcher watcher;
      std::thread stopper([&watcher] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        watcher.isToStop = true;
      });
      EXPECT_EQ(CallsOf(factory, stream, watcher), "");
      EXPECT_EQ(watcher.result, ORXPassResult::Stopped);
      stopper.join();
    }
  }

  // A second copy of the module, used between its coming and its going.
  void LoadAndUnload(const fs::path& copy) const {
    while (!isOver) {
      void* const second = OpenLibrary(copy.string().c_str());
      const ORXFactoryFunction secondFactory = FactoryOf(second);
      ASSERT_TRUE(secondFactory);
      EXPECT_NE(secondFactory, factory);
      EXPECT_EQ(ORXFillDictionary::Find(kClassName), secondFactory);
      Watcher watcher;
      EXPECT_EQ(CallsOf(secondFactory, documents[0].path, watcher), documents[0].calls);
      EXPECT_TRUE(CloseLibrary(second));
      EXPECT_EQ(ORXFillDictionary::Find(kClassName), factory);
    }
  }

  // Every one of these values means the same to an interpreter.
  void ChangeTheEnvironment() const {
    const char* const values[] = {"1", nullptr, "millimetres"};
    for (int i = 0; !isOver; ++i) {
      orxframework::SetEnvironment(kUnits, values[i % 3]);
      orxframework::SetEnvironment(("ORX_TEST_" + std::to_string(i % 50)).c_str(), "x");
      ORXPrintPropertiesManager::IsLowMemory(0.9F);
      std::this_thread::yield();
    }
    orxframework::SetEnvironment(kUnits, nullptr);
  }

  static constexpr const char* kUnits = "ORXPrintOpenPSToMM";
  void* library = nullptr;
  ORXFactoryFunction factory = nullptr;
  std::vector<Document> documents;
  std::atomic<bool> isOver = false;
};

TEST_F(Threads, DrawTheSameWhateverTheOthersDo) {
  const fs::path copy = fs::path(testing::TempDir()) / "orxprint-second-copy.module";
  fs::copy_file(ORX_MODULE, copy, fs::copy_options::overwrite_existing);
  std::thread loader([&] { LoadAndUnload(copy); });
  std::thread changer([&] { ChangeTheEnvironment(); });
  std::thread stopped([&] { StopRunsFromOutside(); });
  std::vector<std::thread> workers;
  for (int i = 0; i < kWorkers; ++i) workers.emplace_back([this, i] { DrawEverything(i); });
  for (std::thread& worker : workers) worker.join();
  stopped.join();
  isOver = true;
  changer.join();
  loader.join();
  fs::remove(copy);
}

}  // namespace
}  // namespace orxtests
