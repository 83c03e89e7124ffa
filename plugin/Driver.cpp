// The passes that the framework starts: the main loop with its page filter, and the two operations
// that run it.

#include <new>
#include <utility>

#include "host/ORXPrintPropertiesManager.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "plugin/Visit.h"
#include "ps/Execution.h"
#include "ps/HostCalls.h"
#include "ps/Operands.h"

namespace orxeps {

namespace {

constexpr float kLowMemoryThreshold = 0.9F;

// Asks the framework about memory on nine tokens of every ten, and reports while it is low.
class MemoryWatch {
public:
  // Whether the pass is to stop before the next token.
  [[nodiscard]] bool MustStop() noexcept {
    if (memoryIsLow) {
      Report();
      if (errorAction == OnErrorAction::Stop) return true;
    }
    if (tokensOfTen != 0) {
      memoryIsLow = ORXPrintPropertiesManager::IsLowMemory(kLowMemoryThreshold) != 0;
    }
    tokensOfTen = tokensOfTen == 9 ? 0 : tokensOfTen + 1;
    return false;
  }

private:
  // The line is made once, when it is first needed; without the memory for it there is none.
  void Report() noexcept {
    try {
      if (line.IsEmpty()) line = "ORXPrintCGM2Interpreter: Low Memory Error";
    } catch (const std::bad_alloc&) {
      return;
    }
    ORXPrintPropertiesManager::AddInfo(PrintInfoType::Error, line);
  }

  const OnErrorAction errorAction = ORXPrintPropertiesManager::GetOnErrorAction();
  bool memoryIsLow = false;
  int tokensOfTen = 0;
  ORXUnicodeString line;
};

// The letters of a page's label: a comment has lost all else.
std::string_view PageNameIn(std::string_view comment) {
  return comment.substr(comment.find(':') + 1);
}

}  // namespace

void ORXPrintEPSInterpreter::CommentRead(std::string_view text) {
  if (text == "EOF") {
    scanner.input.SeekToEnd();
  } else if (text.find("Page:") != std::string_view::npos) {
    BeginPage(text);
  }
}

void ORXPrintEPSInterpreter::BeginPage(std::string_view comment) {
  watch.Note({ORXNoteKind::PageBegun, "%%Page:", PageNameIn(comment), 0});
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
  if (operandStack.IsFull()) return MeetLimit(ORXPassResult::LimitMet, "stackoverflow");
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
    watch.NoteEnd(ORXPassResult::LimitMet, "VMerror", scanner.input.Position());
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

void ORXPrintEPSInterpreter::InterpretNextWithinLimits() {
  try {
    InterpretNext();
    return;
  } catch (const LimitReached& limit) {
    MeetLimit(ORXPassResult::LimitMet, limit.error);
  } catch (const std::bad_alloc&) {
    MeetLimit(ORXPassResult::OutOfMemory, "VMerror");
  }
  watch.CountWork(kMaxClonedElements);  // no operator does more before it meets a limit
}

// Gives up what runs, and tells of it at the end of the pass.
void ORXPrintEPSInterpreter::MeetLimit(ORXPassResult result, const char* error) noexcept {
  AbandonRun(*this, error);
  watch.NoteEnd(result, error, scanner.input.Position());
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

// Gives up the pass because the host's stream or generator threw. The stacks stay as they are.
void ORXPrintEPSInterpreter::GiveUpPass() noexcept {
  executionStack.Abandon();
  watch.NoteEnd(ORXPassResult::HostThrew, "", scanner.input.Position());
}

// Whether the program could run to its end.
bool ORXPrintEPSInterpreter::RunProgram() noexcept {
  try {
    heap.BeginPass();
    BuildStandardDictionaries();
    scanner.input.Rewind();
    RunMainLoop();
    return true;
  } catch (const LimitReached& limit) {
    MeetLimit(ORXPassResult::LimitMet, limit.error);
  } catch (const std::bad_alloc&) {
    MeetLimit(ORXPassResult::OutOfMemory, "VMerror");
  } catch (const HostThrew&) {
    GiveUpPass();
    LeaveStandardDictionaries();
  }
  return false;
}

// A pass from opening the input to closing it.
bool ORXPrintEPSInterpreter::RunWholePass() noexcept {
  pageCounter = 0;
  watch.BeginPass();
  bool ran = false;
  try {
    scanner.input.Open();
    ran = RunProgram();
    const std::uint64_t position = scanner.input.Position();
    scanner.input.ClearEndOfFile();
    scanner.input.Close();
    watch.NoteEnd(ORXPassResult::Complete, "", position);
  } catch (const HostThrew&) {
    GiveUpPass();
    ran = false;
    LeaveStandardDictionaries();
  }
  if (ran) LeaveStandardDictionaries();
  // Nothing would ever paint what a counting pass has gathered to the brim.
  if (!canvas.HasGenerator()) canvas.states.EmptyFullPath();
  names.DropUnused();
  watch.EndPass();
  return ran;
}

int ORXPrintEPSInterpreter::Generate(PrintGenerator* newGenerator) noexcept {
  if (isVisited || !newGenerator || !scanner.input.HasStream()) return 0;
  const Visit visit(isVisited);
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
  if (isVisited) return 0;
  const Visit visit(isVisited);
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
