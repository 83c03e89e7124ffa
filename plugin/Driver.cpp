// The passes that the framework starts: the main loop with its page filter, and the two operations
// that run it.

#include <new>
#include <utility>

#include "host/ORXPrintPropertiesManager.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "ps/Execution.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

constexpr float kLowMemoryThreshold = 0.9F;

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
    if (tokensOfTen != 0) {
      memoryIsLow = ORXPrintPropertiesManager::IsLowMemory(kLowMemoryThreshold) != 0;
    }
    tokensOfTen = tokensOfTen == 9 ? 0 : tokensOfTen + 1;
    return false;
  }

private:
  const OnErrorAction errorAction = ORXPrintPropertiesManager::GetOnErrorAction();
  bool memoryIsLow = false;
  int tokensOfTen = 0;
};

}  // namespace

void ORXPrintEPSInterpreter::CommentRead(std::string_view text) {
  if (text == "EOF") {
    scanner.input.SeekToEnd();
  } else if (text.find("Page:") != std::string_view::npos) {
    BeginPage();
  }
}

void ORXPrintEPSInterpreter::BeginPage() {
  pageState = PageState::Drawing;
  if (AllPagesFlag() == 1 && pageCounter > 0 && canvas.HasGenerator()) canvas.NewPage();
  ++pageCounter;
}

// The page filter. With one page selected everything before the first "%%Page:" comment runs, then
// the selected page, and of each later page what follows its "showpage".
bool ORXPrintEPSInterpreter::TakesEffect(bool isShowPage) const noexcept {
  if (AllPagesFlag() == 1 || pageCounter == 0) return true;
  if (SelectedPage() == 0 || pageCounter < SelectedPage()) return false;
  if (pageCounter == SelectedPage()) return true;
  return pageState == PageState::Shown && !isShowPage;
}

// A full stack is met without throwing: documents that overflow it go on to do so with every token.
void ORXPrintEPSInterpreter::PushLiteral(PSRef object) {
  if (operandStack.IsFull()) return AbandonRun(*this, "stackoverflow");
  operandStack.Push(std::move(object));
}

// Reads one object of the input and lets it take effect.
void ORXPrintEPSInterpreter::InterpretNext() {
  const Token token = scanner.ReadToken();
  const bool isShowPage = token.text == "showpage";
  if (isShowPage) pageState = PageState::Shown;
  if (heap.IsFull()) {
    // Nothing can run any more, so the rest is only looked through for page comments.
    RaiseError(*this, "VMerror");
    return;
  }
  switch (token.kind) {
    case TokenKind::Integer:
    case TokenKind::Real:
      if (TakesEffect(isShowPage)) PushLiteral(scanner.MakeNumber(token));
      return;
    case TokenKind::Word:
      if (Scanner::IsHexadecimal(token.text)) break;
      if (TakesEffect(isShowPage)) ExecuteName(*this, *names.Borrow(token.text));
      return;
    case TokenKind::Nothing:
      if (scanner.BinaryTokenIsRuledOut()) return;
      break;
    default:
      break;
  }
  PSRef object = token.text.starts_with('{') ? scanner.ReadProcedure() : scanner.ReadObject(token);
  if (!object || !TakesEffect(isShowPage)) return;
  if (object->literal) {
    PushLiteral(std::move(object));
  } else {
    ExecuteObject(*this, object.Get());
  }
}

void ORXPrintEPSInterpreter::InterpretNextWithinLimits() noexcept {
  try {
    InterpretNext();
  } catch (const LimitReached& limit) {
    AbandonRun(*this, limit.error);
  } catch (const std::bad_alloc&) {
    AbandonRun(*this, "VMerror");
  }
}

void ORXPrintEPSInterpreter::RunMainLoop() {
  MemoryWatch memory;
  // An input that says it is readable and gives nothing has come to its end as well.
  ProgressGuard progress(scanner.input);
  while (scanner.input.IsReadable() && progress.Moved() && !watch.IsStopped()) {
    if (memory.MustStop()) {
      watch.NoteEnd(ORXPassResult::LowMemory, "", scanner.input.Position());
      return;
    }
    InterpretNextWithinLimits();
  }
}

// Whether the program could begin to run.
bool ORXPrintEPSInterpreter::RunPass() noexcept {
  try {
    heap.BeginPass();
    BuildStandardDictionaries();
    scanner.input.Rewind();
    RunMainLoop();
    watch.EndPass(scanner.input.Position());
    scanner.input.ClearEndOfFile();
    return true;
  } catch (const LimitReached& limit) {
    AbandonRun(*this, limit.error);
  } catch (const std::bad_alloc&) {
    AbandonRun(*this, "VMerror");
  }
  return false;
}

// A pass from opening the input to closing it.
bool ORXPrintEPSInterpreter::RunWholePass() noexcept {
  pageCounter = 0;
  watch.BeginPass();
  scanner.input.Open();
  const bool ran = RunPass();
  scanner.input.Close();
  if (ran) dictionaries = {};
  return ran;
}

int ORXPrintEPSInterpreter::Generate(PrintGenerator* newGenerator) noexcept {
  if (!newGenerator || !scanner.input.HasStream()) return 0;
  canvas.generator = newGenerator;
  canvas.Current().ctm = ORXMath3x3Matrix();
  return RunWholePass() ? 1 : 0;
}

namespace {

void AppendCount(ORXListValORXUnicodeString& lines, const char* text, std::int32_t count) {
  if (count <= 0) return;
  ORXUnicodeString line(text);
  line.Append(ORXUnicodeString::BuildFromNum("%d", count));
  lines.Append(std::move(line));
}

}  // namespace

int ORXPrintEPSInterpreter::CollectStatistics(ORXListValORXUnicodeString& lines) noexcept {
  StatisticsRecord counted{};
  counters = counted.data();
  if (scanner.input.HasStream()) static_cast<void>(RunWholePass());
  counters = nullptr;
  try {
    AppendCount(lines, "Curve count = ", counted[kCurves]);
    AppendCount(lines, "Line count = ", counted[kLines]);
    AppendCount(lines, "Arc count = ", counted[kArcs]);
    AppendCount(lines, "Image count = ", counted[kImages]);
    AppendCount(lines, "Closed Path count = ", counted[kClosedPaths]);
  } catch (const std::bad_alloc&) {
    RaiseError(*this, "VMerror");
  }
  return 1;
}

}  // namespace orxeps
