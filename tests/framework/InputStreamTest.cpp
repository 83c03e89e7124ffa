// The rules of input streams, each held by every kind of stream there is.
#include "framework/InputStreams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include "tests/framework/StreamScript.h"

namespace orxframework {
namespace {

// A file in the temporary folder, gone at the end.
class TemporaryFile {
public:
  explicit TemporaryFile(const std::string& bytes) {
    static int count = 0;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + "." + test->name() + "." +
                       std::to_string(std::random_device{}()) + "." + std::to_string(++count);
    std::replace(name.begin(), name.end(), '/', '-');
    path = std::filesystem::temp_directory_path() / name;
    std::ofstream(path, std::ios::binary) << bytes;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { std::filesystem::remove(path); }

  std::filesystem::path path;
};

// A stream of one kind over some bytes, with whatever stands behind it.
struct Subject {
  std::unique_ptr<TemporaryFile> file;
  std::string bytes;
  std::unique_ptr<WindowedInputStream> stream;
};

enum class Kind { Borrowed, Owned, File, Section };

Subject MakeSubject(Kind kind, const std::string& bytes) {
  Subject subject;
  subject.bytes = bytes;
  switch (kind) {
    case Kind::Borrowed:
      subject.stream = std::make_unique<MemoryInputStream>(subject.bytes);
      break;
    case Kind::Owned:
      subject.stream = std::make_unique<MemoryInputStream>(std::string(bytes));
      break;
    case Kind::File:
      subject.file = std::make_unique<TemporaryFile>(bytes);
      subject.stream = std::make_unique<FileInputStream>(subject.file->path);
      break;
    case Kind::Section:
      subject.file = std::make_unique<TemporaryFile>("front" + bytes + "back");
      subject.stream =
          std::make_unique<FileInputStream>(subject.file->path, FileSection{5, bytes.size()});
      break;
  }
  return subject;
}

struct Rule {
  const char* name;
  std::string bytes;
  const char* script;
  const char* answers;
};

const Rule kRules[] = {
    {"BytesComeInOrder", "ab", "p r p r p", "0 a 1 b 2"},
    {"NothingIsReadableOnceTheLastByteIsRead", "ab", "? r ? r ? m", "1 a 1 b 0 1"},
    {"EmptyDataIsNeverReadable", "", "? m r m", "0 1 - 0"},
    {"AFailedReadEndsTheData", "a", "r m r m r m", "a 1 - 0 - 0"},
    {"ClearingTheEndBringsItBack", "a", "r r m c m r m", "a - 0 1 - 0"},
    {"SeekingLeavesTheEndAlone", "a", "r r s0 m r m", "a - 0 a 0"},
    {"OpeningClearsTheEndAndRewinds", "ab", "r r r o m p r", "a b - 1 0 a"},
    {"OpeningDropsAByteThatWaits", "ab", "r ux o r", "a a"},
    {"TheByteJustReadStepsBack", "ab", "r ua p ? r r", "a 0 1 a b"},
    {"TheLastByteStepsBack", "ab", "r r ub p ? r ? r", "a b 1 1 b 0 -"},
    {"AnotherByteWaitsInFront", "ab", "r ux p ? r p r", "a 1 1 x 1 b"},
    {"AByteWaitsInFrontOfTheFirst", "ab", "ux p r p r", "0 x 0 a"},
    {"AByteWaitsBehindTheLast", "a", "r ux ? r ? r", "a 1 x 0 -"},
    {"AByteThatWaitedCanWaitAgain", "ab", "r ux r ux p r r", "a x 1 x b"},
    {"AZeroAfterAFailedReadIsAByteToCome", "a", "r r u0 ? m r ? m", "a - 1 0 \\0 0 0"},
    {"AZeroAfterAFailedReadIsNotTheZeroBefore", std::string(1, '\0'), "r r u0 p r p",
     "\\0 - 1 \\0 1"},
    {"AfterASeekNothingHasJustBeenRead", "aab", "r s1 ua p r r r", "a 1 a a b"},
    {"OnlyTheByteJustReadStepsBack", "ab", "r r ub ua p r r", "a b 1 a b"},
    {"SeekDropsAByteThatWaits", "ab", "r ux s0 r", "a a"},
    {"SetPositionDropsAByteThatWaits", "abc", "r ux j2 p r", "a 2 c"},
    {"PositionsAreKeptWithinTheData", "abc", "s-1 p s9 p e1 p e-9 p e-1 p j9 p ?", "0 3 3 0 2 3 0"},
    {"TheEndIsNotReadable", "abc", "e0 ? p r s0 ? r", "0 3 - 1 a"},
    {"ReadTakesWhatIsThereAndFails", "abc", "R2 R2 m ?", "ok:ab !:c 0 0"},
    {"AReadThatFailedCanBeTakenBack", "abc", "r R5 m c j1 m p ? R2 m", "a !:bc 0 1 1 1 ok:bc 1"},
    {"ReadOfTheRestSucceeds", "abc", "R3 m ? R1 m", "ok:abc 1 0 !: 0"},
    {"ReadOfNothingSucceedsAtTheEnd", "", "R0 m", "ok: 1"},
    {"ReadOfLessThanNothingFails", "ab", "R-1 r", "!: a"},
    {"ReadBeginsWithAByteThatWaits", "abc", "r ux R2 p", "a ok:xb 2"},
    {"ReadOnlyOfAByteThatWaits", "abc", "r ux R1 p r", "a ok:x 1 b"},
    {"TheLastByteOfAReadStepsBack", "abc", "R2 ub p r", "ok:ab 1 b"},
    {"NothingWorksWhileClosed", "ab", "r x ? r m R1 ua s0 j0 p o r", "a 0 - 1 !: ! ! ! ! a"},
};

class InputStreamRules : public testing::TestWithParam<Kind> {};

TEST_P(InputStreamRules, Hold) {
  for (const Rule& rule : kRules) {
    const Subject subject = MakeSubject(GetParam(), rule.bytes);
    EXPECT_EQ(StreamScript(*subject.stream).Run(rule.script), rule.answers) << rule.name;
  }
}

TEST_P(InputStreamRules, OnlyBinaryReadingCanBeOpenedAndTheStateIsNormal) {
  const Subject subject = MakeSubject(GetParam(), "a");
  EXPECT_LT(subject.stream->Open("wb"), 0);
  EXPECT_LT(subject.stream->Seek(0, 1), 0);
  EXPECT_EQ(subject.stream->GetState(), 0);
}

// Many buffers long, read with steps of every size, so that windows end everywhere. Data in memory
// has no windows.
TEST_P(InputStreamRules, LongDataReadsAsFromMemory) {
  std::mt19937 random(7);
  std::string bytes(300'000, '\0');
  for (char& byte : bytes) byte = static_cast<char>('a' + random() % 3);
  const Subject subject = MakeSubject(GetParam(), bytes);
  MemoryInputStream memory{std::string_view(bytes)};
  for (int step = 0; step < 60'000; ++step) {
    const unsigned kind = random() % 100;
    const auto number = std::to_string(random() % (bytes.size() + 10));
    std::string script = kind < 60   ? "r"
                         : kind < 98 ? "R" + std::to_string(random() % 60)
                                     : "j" + number;
    if (random() % 4 == 0) script += random() % 2 == 0 ? " ua" : " ux";
    script += " p ?";
    const std::string expected = StreamScript(memory).Run(script);
    ASSERT_EQ(StreamScript(*subject.stream).Run(script), expected) << script << " at step " << step;
  }
}

std::string KindName(const testing::TestParamInfo<Kind>& kind) {
  constexpr const char* kNames[] = {"Borrowed", "Owned", "File", "Section"};
  return kNames[static_cast<int>(kind.param)];
}

INSTANTIATE_TEST_SUITE_P(, InputStreamRules,
                         testing::Values(Kind::Borrowed, Kind::Owned, Kind::File, Kind::Section),
                         KindName);

TEST(FileInputStream, ASectionIsCutAtTheEndOfTheFile) {
  const struct {
    FileSection section;
    const char* bytes;
  } cases[] = {{{2, 2}, "ok:cd !:"}, {{4, 100}, "ok:ef !:"}, {{6, 1}, "!: !:"}, {{99, 1}, "!: !:"}};
  const TemporaryFile file("abcdef");
  for (const auto& each : cases) {
    FileInputStream stream(file.path, each.section);
    EXPECT_EQ(StreamScript(stream).Run("R2 R1"), each.bytes) << each.section.offset;
  }
}

TEST(FileInputStream, AFileThatShrinksEndsWhereItNowEnds) {
  const TemporaryFile file(std::string(200'000, 'a'));
  FileInputStream stream(file.path);
  std::filesystem::resize_file(file.path, 70'000);
  std::string buffer(200'000, '\0');
  int count = 0;
  EXPECT_LT(stream.Read(buffer.data(), 200'000, &count), 0);
  EXPECT_EQ(count, 70'000);
  EXPECT_EQ(StreamScript(stream).Run("? m r p s0 r"), "0 0 - 70000 a");
}

TEST(FileInputStream, PositionsAboveFourGibibytesHaveNoNumber) {
  const TemporaryFile file("x");
  std::error_code error;
  std::filesystem::resize_file(file.path, (std::uintmax_t{1} << 32) + 2, error);
  if (error) GTEST_SKIP() << "the temporary folder holds no file of this size";
  FileInputStream stream(file.path);
  EXPECT_EQ(StreamScript(stream).Run("e-3 p r r p ? r r"), "4294967295 \\0 \\0 ! 1 \\0 -");
}

}  // namespace
}  // namespace orxframework
