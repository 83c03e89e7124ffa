// What the framework shares with the whole process: its environment, its memory, its descriptors,
// its forked children and its end.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "framework/Environment.h"
#include "framework/InputStreams.h"
#include "framework/PropertiesControl.h"
#include "host/ORXOMModule.h"
#include "host/ORXSystem.h"

#if defined(__linux__)
#  include <dlfcn.h>
#  include <malloc.h>
#  include <sys/mman.h>
#  include <sys/wait.h>
#  include <unistd.h>

#  include <chrono>
#  include <filesystem>
#  include <fstream>
#  include <iterator>
#  include <memory>
#endif

namespace orxframework {
namespace {

std::string ValueOf(const char* name) {
  const char* value = ORXGetEnv(name);
  return value ? value : "(unset)";
}

TEST(Environment, AnswersWhatWasSetLast) {
  EXPECT_EQ(ValueOf("ORX_TEST"), "(unset)");
  ASSERT_TRUE(SetEnvironment("ORX_TEST", "one"));
  const char* given = ORXGetEnv("ORX_TEST");
  ASSERT_TRUE(SetEnvironment("ORX_TEST", "two"));
  EXPECT_EQ(ValueOf("ORX_TEST"), "two");
  EXPECT_STREQ(given, "one");
  ASSERT_TRUE(SetEnvironment("ORX_TEST", "one"));
  EXPECT_EQ(ORXGetEnv("ORX_TEST"), given);
  ASSERT_TRUE(SetEnvironment("ORX_TEST", ""));
  EXPECT_EQ(ValueOf("ORX_TEST"), "");
  ASSERT_TRUE(SetEnvironment("ORX_TEST", nullptr));
  EXPECT_EQ(ValueOf("ORX_TEST"), "(unset)");
  EXPECT_EQ(ORXGetEnv(nullptr), nullptr);
  EXPECT_EQ(ValueOf(""), "(unset)");
}

#if defined(__linux__)

TEST(Environment, IsACopyThatOtherThreadsMayAskForWhileThePlatformsChanges) {
  EXPECT_EQ(ValueOf("PATH"), getenv("PATH"));
  std::atomic<bool> isOver = false;
  std::vector<std::thread> askers;
  for (int i = 0; i < 3; ++i) {
    askers.emplace_back([&isOver] {
      while (!isOver) EXPECT_EQ(ORXGetEnv("ORX_TEST_OF_THREADS"), nullptr);
    });
  }
  setenv("ORX_TEST_OF_THREADS", "1", 1);
  for (int round = 0; round < 20; ++round) {
    for (int i = 0; i < 500; ++i) setenv(("ORX_TEST_" + std::to_string(i)).c_str(), "x", 1);
    for (int i = 0; i < 500; ++i) unsetenv(("ORX_TEST_" + std::to_string(i)).c_str());
  }
  unsetenv("ORX_TEST_OF_THREADS");
  isOver = true;
  for (std::thread& asker : askers) asker.join();
}

// The limit is so much above what is used now that `bytes` more are low memory and half of them
// are not.
void AllowLessThan(std::uint64_t bytes) {
  malloc_trim(0);  // what earlier tests have freed must not be what is given back later
  std::ifstream file("/proc/self/statm");
  std::uint64_t total = 0;
  std::uint64_t resident = 0;
  file >> total >> resident;
  const double used = static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
  PropertiesControl::SetMemoryLimit(
      static_cast<std::uint64_t>((used + 0.5 * static_cast<double>(bytes)) / 0.9));
}

bool IsLow() { return ORXPrintPropertiesManager::IsLowMemory(0.9F) != 0; }

// The last answer of so many in a row that the clock is looked at for some of them and not for all.
bool IsLowAtLast(int calls) {
  for (int call = 1; call < calls; ++call) static_cast<void>(IsLow());
  return IsLow();
}

// Pages straight from the platform, all of them in main memory.
class Pages {
public:
  explicit Pages(std::size_t byteCount)
      : bytes(byteCount),
        memory(mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0)) {}
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;
  ~Pages() { GiveBack(); }

  void GiveBack() {
    if (memory != MAP_FAILED) munmap(memory, bytes);
    memory = MAP_FAILED;
  }

private:
  std::size_t bytes;
  void* memory;
};

constexpr std::size_t kMuch = std::size_t{64} << 20;

TEST(MemoryGauge, IsNotLowAnyMoreAsSoonAsTheMemoryIsFree) {
  const ScopedProperties scope;
  AllowLessThan(kMuch);
  EXPECT_FALSE(IsLow());
  for (int i = 0; i < 3; ++i) {
    Pages pages(kMuch);
    EXPECT_TRUE(IsLowAtLast(150 + i));
    pages.GiveBack();
    EXPECT_FALSE(IsLow());
  }
}

#  if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
#    if defined(__has_feature)
#      if __has_feature(address_sanitizer)
#        define ORX_OTHER_ALLOCATOR
#      endif
#    endif
#    if !defined(ORX_OTHER_ALLOCATOR)
TEST(MemoryGauge, DoesNotCountWhatTheAllocatorKeeps) {
  const ScopedProperties scope;
  AllowLessThan(kMuch);
  constexpr std::size_t kPiece = 10'000;
  for (int i = 0; i < 3; ++i) {
    std::vector<std::unique_ptr<std::string>> pieces;
    for (std::size_t bytes = 0; bytes < kMuch; bytes += kPiece) {
      pieces.push_back(std::make_unique<std::string>(kPiece, 'x'));
    }
    const auto last = std::make_unique<std::string>(kPiece, 'x');  // keeps the heap from shrinking
    EXPECT_TRUE(IsLowAtLast(150));
    pieces.clear();
    ORXPrintPropertiesManager::GetOnErrorAction();  // a pass begins
    EXPECT_FALSE(IsLow());
  }
}
#    endif
#  endif

// Runs a function in a forked child and gives what it answers.
template <typename Function>
int InChild(Function function) {
  const pid_t child = fork();
  if (child == 0) _exit(function());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(MemoryGauge, AForkedChildMeasuresItself) {
  const ScopedProperties scope;
  AllowLessThan(kMuch);
  Pages pages(kMuch);
  EXPECT_TRUE(IsLowAtLast(150));
  const int childIsLow = InChild([&pages] {
    pages.GiveBack();
    return IsLow() ? 1 : 0;
  });
  EXPECT_EQ(childIsLow, 0);
  EXPECT_TRUE(IsLow());
}

// The place in the file of the only descriptor that is open on it.
std::string PlaceOf(const std::filesystem::path& path) {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code error;
    if (std::filesystem::read_symlink(entry.path(), error) != path) continue;
    std::ifstream info("/proc/self/fdinfo/" + entry.path().filename().string());
    std::string line;
    std::getline(info, line);
    return line;
  }
  return "(not open)";
}

TEST(FileInputStream, LeavesThePlaceAloneThatForkedChildrenShare) {
  const std::filesystem::path path =
      std::filesystem::canonical(testing::TempDir()) / ("orx-fork-" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << std::string(200'000, 'a');
  FileInputStream stream(path);
  const std::string before = PlaceOf(path);
  EXPECT_EQ(before.substr(0, 4), "pos:");
  const int childStatus = InChild([&stream] {
    std::string bytes(200'000, '\0');
    return stream.Read(bytes.data(), 70'000, nullptr) == 0 ? 0 : 1;
  });
  EXPECT_EQ(childStatus, 0);
  EXPECT_EQ(PlaceOf(path), before);
  std::filesystem::remove(path);
}

// Destructors of static variables are entered in a list for the end of the process by a function
// that a library without any does not even import.
TEST(ProcessEnd, TheFrameworkHasNothingToDestroy) {
  Dl_info library{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&ORXGetEnv), &library), 0);
  std::ifstream file(library.dli_fname, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(bytes.find("ORXGetEnv"), std::string::npos);
  EXPECT_EQ(bytes.find(std::string("__cxa_atexit").append(1, '\0')), std::string::npos);
}

// Built before anything of the framework is asked for, so destroyed after all that ends with the
// process; holds the end up for a while.
class LastToGo {
public:
  ~LastToGo() { std::this_thread::sleep_for(delay); }
  std::chrono::milliseconds delay{0};
};
[[gnu::init_priority(101)]] LastToGo lastToGo;

void* MakeNothing(void*) { return nullptr; }

void AskForEver() {
  while (true) {
    ORXPrintPropertiesManager::AddInfo(PrintInfoType::Error, "a line");
    ORXPrintPropertiesManager::IsLowMemory(0.9F);
    ORXGetEnv("PATH");
    if (ORXFillDictionary::Find("ClassAtTheEnd") != &MakeNothing) std::abort();
  }
}

TEST(ProcessEnd, WorkersMayGoOn) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto endWithWorkers = [] {
    lastToGo.delay = std::chrono::milliseconds(100);
    ORXFillDictionary::Register("ClassAtTheEnd", MakeNothing);
    PropertiesControl::SetReportSink(
        [text = std::string(100, 'x')](PrintInfoType, const ORXUnicodeString&) {
          if (text.find('y') != std::string::npos) std::abort();
        });
    for (int i = 0; i < 3; ++i) std::thread(AskForEver).detach();
    std::exit(0);
  };
  EXPECT_EXIT(endWithWorkers(), testing::ExitedWithCode(0), "");
}

#endif

}  // namespace
}  // namespace orxframework
