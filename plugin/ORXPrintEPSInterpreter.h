// The interpreter of one document in Encapsulated PostScript: the record that every room of the
// library works on, and the operations that the print framework calls.
//
// An interpreter is built by the library's factory around the document's input, which it borrows,
// as it borrows the generator that Generate attaches. It owns everything else that it holds, and
// after its destruction nothing that it made is left. It is usable from construction on; what one
// pass leaves on the stacks, in the graphics state and in the path is there in the next.
//
// No operation throws. When memory runs out inside a pass the object of the input that was being
// read or run is given up (VMerror) and the pass goes on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "graphics/GraphicsStates.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintInputStream.h"
#include "plugin/StatisticsRecord.h"
#include "ps/ExecutionStack.h"
#include "ps/NameTable.h"
#include "ps/ObjectHeap.h"
#include "ps/ObjectList.h"
#include "ps/OperandStack.h"

namespace orxeps {

class ASCII85DecodeFilter;
class CCITTFaxDecodeFilter;
class RunLengthDecodeFilter;

// The dictionaries that every pass starts with; nothing between the passes.
struct StandardDictionaries {
  PSRef systemdict;
  PSRef globaldict;
  PSRef userdict;
  PSRef errordict;
  PSRef statusdict;
};

enum class PageState : std::int32_t {
  NoPage = -1,  // no "%%Page:" comment yet
  Drawing = 1,  // since the last "%%Page:" comment
  Shown = 2,    // a "showpage" has come since
};

// What the scanner keeps between two tokens.
struct ScannerState {
  // Open parentheses. Carries over from pass to pass: an unterminated string leaves it above 0, a
  // stray ")" below.
  std::int32_t stringDepth = 0;
  // The last token ended before a byte that begins a binary token.
  bool stoppedAtBinaryToken = false;
  // Bytes read so far. A loop that reads ends when this stands still: an input may fail for ever.
  std::uint64_t bytesRead = 0;
  std::string token;
  std::string text;
};

class ORXPrintEPSInterpreter final : public ORXPrintInterpreter, public ORXWatchable {
public:
  // Throws std::bad_alloc. `input` may be null: queries and passes then find nothing.
  explicit ORXPrintEPSInterpreter(PrintInputStream* input);
  ~ORXPrintEPSInterpreter() override;

  // In output units, from the document's box comments; see plugin/DscQueries.cpp.
  int GetPageSize(float* width, float* height) noexcept override;
  int GetPageCount(unsigned* count) noexcept override;
  int GetPageLabel(ORXUnicodeString& label) noexcept override;
  // A pass that draws nothing new; always 1. One line for each counter above zero.
  int CollectStatistics(ORXListValORXUnicodeString& lines) noexcept override;
  // A pass that draws. 0 without a generator or an input, and when memory runs out before the
  // program has begun.
  int Generate(PrintGenerator* newGenerator) noexcept override;

  void SetWatcher(ORXInterpreterWatcher* newWatcher) noexcept override { watcher = newWatcher; }
  // Whether the watcher lets the run go on; its refusal holds until the pass ends.
  [[nodiscard]] bool MayGoOn() noexcept {
    if (watcher && !stopped) stopped = !watcher->MayGoOn();
    return !stopped;
  }

  using ORXPrintInterpreter::AllPagesFlag;
  using ORXPrintInterpreter::SelectedPage;

  // Releases every object that the stacks and dictionaries hold; only objects that keep each other
  // alive in a circle remain on the heap.
  void ReleaseObjects() noexcept;

  // The heap comes first, so that it is destroyed last.
  ObjectHeap heap;
  NameTable names;

  PrintInputStream* const inputStream;  // borrowed
  PrintGenerator* generator = nullptr;  // borrowed
  float unitScale;                      // from PostScript units to output units

  OperandStack operandStack;
  ObjectList dictionaryStack;  // the bottom first; the last is the current dictionary
  ExecutionStack executionStack;
  StandardDictionaries dictionaries;
  std::int32_t dictionariesAtStart = 0;  // entries of the dictionary stack when the pass began

  GraphicsStates graphics;

  // One filter of each kind, made on first use and shared by all files of the document.
  std::unique_ptr<ASCII85DecodeFilter> ascii85Filter;
  std::unique_ptr<RunLengthDecodeFilter> runLengthFilter;
  std::unique_ptr<CCITTFaxDecodeFilter> ccittFaxFilter;

  ScannerState scanner;
  std::uint32_t pageCounter = 0;  // "%%Page:" comments met in this pass
  PageState pageState = PageState::NoPage;
  StatisticsRecord* statistics = nullptr;  // attached only while a pass counts

  ORXInterpreterWatcher* watcher = nullptr;  // borrowed
  bool stopped = false;                      // the watcher ended the pass that runs

  std::uint8_t errorFlag = 0;       // 1 once any error has been raised
  const char* lastError = nullptr;  // its name, for whoever debugs; nothing in a run reads it
};

}  // namespace orxeps
