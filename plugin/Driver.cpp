// The passes that the framework starts: the standard dictionaries, the main loop, and the two
// operations that run them.

#include <new>
#include <utility>

#include "host/ORXPrintPropertiesManager.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "plugin/PageFilter.h"
#include "ps/Dictionaries.h"
#include "ps/Execution.h"
#include "ps/InputBytes.h"
#include "ps/OperatorTable.h"
#include "ps/Scanner.h"

namespace orxeps {

namespace {

constexpr float kLowMemoryThreshold = 0.9F;

// One Operator object for each operator, under its name.
PSRef MakeSystemDict(ORXPrintEPSInterpreter& interpreter) {
  PSRef systemdict = interpreter.heap.Make(PSObjectType::Dictionary);
  for (const OperatorRow& row : OperatorTable) {
    PSRef entry = interpreter.heap.Make(PSObjectType::Operator);
    entry->literal = 0;
    entry->nameText = interpreter.names.Intern(row.name);
    entry->operatorRow = &row;
    const ORXString name = entry->nameText;
    DictInsert(interpreter.heap, *systemdict, name, std::move(entry));
  }
  return systemdict;
}

// What earlier passes left on the stacks stays beneath.
void BuildStandardDictionaries(ORXPrintEPSInterpreter& interpreter) {
  StandardDictionaries made;
  made.systemdict = MakeSystemDict(interpreter);
  for (PSRef* dictionary : {&made.userdict, &made.statusdict, &made.errordict, &made.globaldict}) {
    *dictionary = interpreter.heap.Make(PSObjectType::Dictionary);
  }
  ObjectList& stack = interpreter.dictionaryStack;
  stack.Reserve(2);
  stack.Append(PSRef::Retain(made.systemdict.Get()).Leak());
  stack.Append(PSRef::Retain(made.userdict.Get()).Leak());
  interpreter.dictionariesAtStart = stack.Count();
  interpreter.dictionaries = std::move(made);
}

// Asks the framework about memory on nine tokens of every ten, and reports while it is low.
class MemoryWatch {
public:
  // Whether the pass is to stop before the next token.
  [[nodiscard]] bool MustStop() {
    if (memoryIsLow) {
      ORXPrintPropertiesManager::AddInfo(PrintInfoType::Error,
                                         "ORXPrintCGM2Interpreter: Low Memory Error");
      if (errorAction == OnErrorAction::Stop) return true;
    }
    if (tokenCount % 10 != 0) {
      memoryIsLow = ORXPrintPropertiesManager::IsLowMemory(kLowMemoryThreshold) != 0;
    }
    ++tokenCount;
    return false;
  }

private:
  const OnErrorAction errorAction = ORXPrintPropertiesManager::GetOnErrorAction();
  bool memoryIsLow = false;
  std::uint64_t tokenCount = 0;
};

// Reads one object of the input and lets it take effect.
void InterpretNext(ORXPrintEPSInterpreter& interpreter) {
  const std::string_view token = ReadToken(interpreter);
  const bool isShowPage = token == "showpage";
  if (isShowPage) interpreter.pageState = PageState::Shown;
  if (interpreter.heap.IsFull()) {
    // Nothing can run any more, so the rest is only looked through for page comments.
    RaiseError(interpreter, "VMerror");
    return;
  }
  const PSRef object =
      token.starts_with('{') ? ReadProcedure(interpreter) : ReadObject(interpreter, token);
  if (object && TakesEffect(interpreter, isShowPage)) ExecuteObject(interpreter, object.Get());
}

void InterpretNextWithinLimits(ORXPrintEPSInterpreter& interpreter) noexcept {
  try {
    InterpretNext(interpreter);
  } catch (const LimitReached& limit) {
    AbandonRun(interpreter, limit.error);
  } catch (const std::bad_alloc&) {
    AbandonRun(interpreter, "VMerror");
  }
}

void RunMainLoop(ORXPrintEPSInterpreter& interpreter) {
  MemoryWatch memory;
  const std::uint64_t& bytesRead = interpreter.scanner.bytesRead;
  std::uint64_t before = bytesRead - 1;
  // An input that says it is readable and gives nothing has come to its end as well.
  while (InputIsReadable(interpreter) && bytesRead != before) {
    before = bytesRead;
    if (memory.MustStop()) return;
    InterpretNextWithinLimits(interpreter);
  }
}

// Whether the program could begin to run.
bool RunPass(ORXPrintEPSInterpreter& interpreter) noexcept {
  try {
    interpreter.heap.BeginPass();
    BuildStandardDictionaries(interpreter);
    interpreter.inputStream->Seek(0, 0);
    RunMainLoop(interpreter);
    interpreter.inputStream->ClearEndOfFile();
    return true;
  } catch (const LimitReached& limit) {
    AbandonRun(interpreter, limit.error);
  } catch (const std::bad_alloc&) {
    AbandonRun(interpreter, "VMerror");
  }
  return false;
}

// A pass from opening the input to closing it.
bool RunWholePass(ORXPrintEPSInterpreter& interpreter) noexcept {
  interpreter.pageCounter = 0;
  interpreter.stopped = false;
  interpreter.inputStream->Open("rb");
  const bool ran = RunPass(interpreter);
  interpreter.inputStream->Close();
  if (ran) interpreter.dictionaries = {};
  if (interpreter.watcher) {
    interpreter.watcher->PassEnded(
        {interpreter.stopped ? ORXPassResult::Stopped : ORXPassResult::Complete});
  }
  return ran;
}

void AppendCount(ORXListValORXUnicodeString& lines, const char* text, std::int32_t count) {
  if (count <= 0) return;
  ORXUnicodeString line(text);
  line.Append(ORXUnicodeString::BuildFromNum("%d", count));
  lines.Append(std::move(line));
}

}  // namespace

int ORXPrintEPSInterpreter::Generate(PrintGenerator* newGenerator) noexcept {
  if (!newGenerator || !inputStream) return 0;
  generator = newGenerator;
  graphics.current.ctm = ORXMath3x3Matrix();
  return RunWholePass(*this) ? 1 : 0;
}

int ORXPrintEPSInterpreter::CollectStatistics(ORXListValORXUnicodeString& lines) noexcept {
  StatisticsRecord counted;
  statistics = &counted;
  if (inputStream) RunWholePass(*this);
  statistics = nullptr;
  try {
    AppendCount(lines, "Curve count = ", counted.curves);
    AppendCount(lines, "Line count = ", counted.lines);
    AppendCount(lines, "Arc count = ", counted.arcs);
    AppendCount(lines, "Image count = ", counted.images);
    AppendCount(lines, "Closed Path count = ", counted.closedPaths);
  } catch (const std::bad_alloc&) {
    RaiseError(*this, "VMerror");
  }
  return 1;
}

}  // namespace orxeps
