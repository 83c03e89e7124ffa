// A host that fails: an input stream of which any call may fail, give less than it was asked for or
// contradict the others, and a generator that refuses everything. No pass and no question may crash
// on it, go on for ever or leave objects behind.
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <ostream>

#include "framework/InputStreams.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "tests/hostile/Documents.h"
#include "tests/support/SilentGenerator.h"

namespace orxtests {
namespace {

enum class Call {
  Open,
  Read,
  ReadByte,
  SetPosition,
  Seek,
  UnreadByte,
  GetPosition,
  IsReadable,
  Close,
  HasMoreData,
  GetState,
  ClearEndOfFile,
  Any
};

enum class Fault {
  Refuses,      // answers without doing anything
  Contradicts,  // does it and answers something else
  ReadsShort,   // Read takes and gives half of what it is asked for and calls that a success
};

struct Trouble {
  const char* name;
  Call call;
  Fault fault;
  int answer;

  friend void PrintTo(const Trouble& trouble, std::ostream* out) { *out << trouble.name; }
};

// From a chosen call of the troubled kind on, every such call or that one alone is in trouble. A
// reader that asks on and on for data that does not come is told apart from a patient one by the
// number of its calls.
class TroubledStream final : public PrintInputStream {
public:
  static constexpr int kMostCalls = 200'000;

  TroubledStream(std::string_view document, const Trouble& what, int firstCall, bool isLasting)
      : stream(document), trouble(what), first(firstCall), lasting(isLasting) {}

  int calls = 0;
  int callsOfTheKind = 0;

  int Open(const char* mode) override {
    return Answer(Call::Open, [&] { return stream.Open(mode); });
  }
  int Read(void* buffer, int count, int* countRead) override {
    const bool isShort = trouble.fault == Fault::ReadsShort;
    return Answer(Call::Read, [&] {
      return stream.Read(buffer, isShort && IsTroubled(Call::Read) ? count / 2 : count, countRead);
    });
  }
  int ReadByte(char* byte) override {
    return Answer(Call::ReadByte, [&] { return stream.ReadByte(byte); });
  }
  int SetPosition(unsigned position) override {
    return Answer(Call::SetPosition, [&] { return stream.SetPosition(position); });
  }
  int Seek(int offset, int origin) override {
    return Answer(Call::Seek, [&] { return stream.Seek(offset, origin); });
  }
  int UnreadByte(char byte) override {
    return Answer(Call::UnreadByte, [&] { return stream.UnreadByte(byte); });
  }
  int GetPosition(unsigned* position) override {
    return Answer(Call::GetPosition, [&] { return stream.GetPosition(position); });
  }
  int IsReadable() override {
    return Answer(Call::IsReadable, [&] { return stream.IsReadable(); });
  }
  int Close() override {
    return Answer(Call::Close, [&] { return stream.Close(); });
  }
  int HasMoreData() override {
    return Answer(Call::HasMoreData, [&] { return stream.HasMoreData(); });
  }
  int GetState() override {
    return Answer(Call::GetState, [&] { return stream.GetState(); });
  }
  int ClearEndOfFile() override {
    return Answer(Call::ClearEndOfFile, [&] { return stream.ClearEndOfFile(); });
  }

private:
  [[nodiscard]] bool IsTroubled(Call call) const {
    if (!IsOfTheKind(call)) return false;
    return lasting ? callsOfTheKind >= first : callsOfTheKind == first;
  }
  [[nodiscard]] bool IsOfTheKind(Call call) const {
    return trouble.call == call || trouble.call == Call::Any;
  }

  template <typename Work>
  int Answer(Call call, Work work) {
    ++calls;
    if (IsOfTheKind(call)) ++callsOfTheKind;
    if (calls > kMostCalls) return -1;
    if (!IsTroubled(call)) return work();
    if (trouble.fault == Fault::ReadsShort) return work();
    if (trouble.fault == Fault::Contradicts) static_cast<void>(work());
    return trouble.answer;
  }

  orxframework::MemoryInputStream stream;
  const Trouble trouble;
  const int first;
  const bool lasting;
};

// Asks and runs everything there is; the number of calls of the troubled kind that this took.
int UseEverything(std::string_view document, const Trouble& trouble, int firstCall, bool lasting) {
  TroubledStream input(document, trouble, firstCall, lasting);
  SilentGenerator generator;
  auto interpreter = std::make_unique<orxeps::ORXPrintEPSInterpreter>(&input);
  unsigned count = 0;
  float width = 0.0F;
  float height = 0.0F;
  ORXUnicodeString label;
  ORXListValORXUnicodeString lines;
  interpreter->SetCurrentPage(1);
  interpreter->GetPageCount(&count);
  interpreter->GetPageSize(&width, &height);
  interpreter->GetPageLabel(label);
  interpreter->CollectStatistics(lines);
  interpreter->Generate(&generator);
  interpreter->ReleaseObjects();
  EXPECT_EQ(interpreter->heap.LiveCount(), 0U);
  interpreter.reset();
  EXPECT_LT(input.calls, TroubledStream::kMostCalls) << "asks for ever";
  return input.callsOfTheKind;
}

constexpr Trouble kTroubles[] = {
    {"EverythingFails", Call::Any, Fault::Refuses, -1},
    {"ReadByteFails", Call::ReadByte, Fault::Refuses, INT_MIN},
    {"ReadByteSaysItFailed", Call::ReadByte, Fault::Contradicts, -1},
    {"ReadFails", Call::Read, Fault::Refuses, -1},
    {"ReadGivesNothing", Call::Read, Fault::Refuses, 0},
    {"ReadIsShort", Call::Read, Fault::ReadsShort, 0},
    {"SeekFails", Call::Seek, Fault::Refuses, -1},
    {"SeekDoesNothing", Call::Seek, Fault::Refuses, 0},
    {"UnreadFails", Call::UnreadByte, Fault::Refuses, -1},
    {"OpenFails", Call::Open, Fault::Refuses, -1},
    {"CloseFails", Call::Close, Fault::Refuses, -1},
    {"AlwaysReadable", Call::IsReadable, Fault::Refuses, 1},
    {"NeverReadable", Call::IsReadable, Fault::Refuses, 0},
    {"ReadableFails", Call::IsReadable, Fault::Refuses, -5},
    {"AlwaysMoreData", Call::HasMoreData, Fault::Refuses, 1},
    {"NeverMoreData", Call::HasMoreData, Fault::Refuses, 0},
    {"BadState", Call::GetState, Fault::Refuses, 7},
    {"EndNotCleared", Call::ClearEndOfFile, Fault::Refuses, -1},
};

// Where there are more calls than this the faults are spread among them.
constexpr int kMostPlaces = 200;

class FailingInput : public testing::TestWithParam<Trouble> {};

TEST_P(FailingInput, HarmsNothingWhereverItFails) {
  for (const std::string& document : TenDocuments()) {
    const int calls = UseEverything(document, GetParam(), INT_MAX, false);
    const int stride = 1 + calls / kMostPlaces;
    for (int first = 1; first <= calls; first += stride) {
      UseEverything(document, GetParam(), first, false);
      UseEverything(document, GetParam(), first, true);
      ASSERT_FALSE(HasFailure()) << "from call " << first << " in:\n" << document;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, FailingInput, testing::ValuesIn(kTroubles),
                         [](const auto& row) { return std::string(row.param.name); });

int CallsOnGeneratorThatAnswers(int result, const std::string& document) {
  orxframework::MemoryInputStream input{std::string_view(document)};
  SilentGenerator generator(result);
  orxeps::ORXPrintEPSInterpreter interpreter(&input);
  EXPECT_EQ(interpreter.Generate(&generator), 1);
  return generator.calls;
}

TEST(FailingGenerator, IsCalledAllTheSame) {
  for (const std::string& document : TenDocuments()) {
    const int calls = CallsOnGeneratorThatAnswers(0, document);
    EXPECT_EQ(CallsOnGeneratorThatAnswers(-1, document), calls) << document;
    EXPECT_EQ(CallsOnGeneratorThatAnswers(INT_MIN, document), calls) << document;
  }
}

}  // namespace
}  // namespace orxtests
