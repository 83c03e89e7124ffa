// The interpreter of one document in Encapsulated PostScript: machine, canvas, filters and scanner
// together, the progress of the pages, and the operations that the print framework calls.
//
// An interpreter is built by the library's factory around the document's input, which it borrows,
// as it borrows the generator that Generate attaches. It owns everything else that it holds, and
// after its destruction nothing that it made is left. It is usable from construction on; what one
// pass leaves on the stacks, in the graphics state and in the path is there in the next.
//
// A pass or query that is asked for from inside a callback of one that runs answers 0 and touches
// nothing.
//
// No operation throws; when the host's stream or generator does, the pass or query ends and answers
// 0 (CollectStatistics 1, with its lines). When memory runs out inside a pass the object of the
// input that was being read or run is given up (VMerror) and the pass goes on.
#pragma once

#include <cstdint>
#include <string_view>

#include "graphics/Canvas.h"
#include "graphics/Counters.h"
#include "host/ORXInterpreterWatcher.h"
#include "host/ORXPrintInterpreter.h"
#include "host/PrintInputStream.h"
#include "image/DecodeFilters.h"
#include "ps/Machine.h"
#include "ps/Scanner.h"

namespace orxeps {

enum class PageState : std::int32_t {
  NoPage = -1,  // no "%%Page:" comment yet
  Drawing = 1,  // since the last "%%Page:" comment
  Shown = 2,    // a "showpage" has come since
};

class ORXPrintEPSInterpreter final : public ORXPrintInterpreter,
                                     public ORXWatchable,
                                     public Machine,
                                     private CommentListener {
public:
  // Throws std::bad_alloc. `input` may be null: queries and passes then find nothing.
  explicit ORXPrintEPSInterpreter(PrintInputStream* input);
  ~ORXPrintEPSInterpreter() override = default;

  // In output units, from the document's box comments; see plugin/DscQueries.cpp.
  int GetPageSize(float* width, float* height) noexcept override;
  int GetPageCount(unsigned* count) noexcept override;
  int GetPageLabel(ORXUnicodeString& label) noexcept override;
  // A pass that draws nothing new; always 1. One line for each counter above zero.
  int CollectStatistics(ORXListValORXUnicodeString& lines) noexcept override;
  // A pass that draws. 0 without a generator or an input, and when memory runs out before the
  // program has begun.
  int Generate(PrintGenerator* newGenerator) noexcept override;

  void SetWatcher(ORXInterpreterWatcher* newWatcher) noexcept override {
    watch.SetWatcher(newWatcher);
  }
  [[nodiscard]] ORXPlace Place() const noexcept override;
  [[nodiscard]] ORXOperand Operand(std::int32_t fromTop) const noexcept override;
  [[nodiscard]] ORXGraphics Graphics() const noexcept override;
  [[nodiscard]] ORXExtent PathExtent() const noexcept override;
  [[nodiscard]] bool RunsAny(std::int32_t fromTop, ORXNameTest& test) noexcept override;
  [[nodiscard]] bool NameRunsAny(std::string_view name, ORXNameTest& test) noexcept override;
  [[nodiscard]] bool RunningRunsAny(ORXNameTest& test) noexcept override;
  void SetListener(ORXNoteListener* newListener) noexcept override {
    watch.SetListener(newListener);
  }
  void SetMark(std::uint32_t mark) noexcept override { canvas.Current().mark = mark; }

  Canvas canvas;
  Scanner scanner;
  FilterSet filters;

  std::uint32_t pageCounter = 0;  // "%%Page:" comments met in this pass
  PageState pageState = PageState::NoPage;

private:
  void CommentRead(std::string_view text) override;
  void BeginPage(std::string_view comment);
  [[nodiscard]] bool TakesEffect(bool isShowPage) const noexcept;
  void PushLiteral(PSRef object);
  void InterpretNext();
  void InterpretNextWithinLimits();
  void RunMainLoop();
  void MeetLimit(ORXPassResult result, const char* error) noexcept;
  void GiveUpPass() noexcept;
  [[nodiscard]] bool RunProgram() noexcept;
  [[nodiscard]] bool RunWholePass() noexcept;
  template <typename Query>
  int Answer(Query query) noexcept;
  [[nodiscard]] bool FindPageCount(unsigned& count);
  [[nodiscard]] bool FindPageSize(float& width, float& height);
  [[nodiscard]] bool FindPageLabel(ORXUnicodeString& label);

  bool isVisited = false;  // a pass or a query runs; another answers 0 and touches nothing
};

// The parts of the interpreter that handlers name in their signatures.
inline Canvas& PartOf(ORXPrintEPSInterpreter& owner, Canvas* /*selects*/) noexcept {
  return owner.canvas;
}
inline FilterSet& PartOf(ORXPrintEPSInterpreter& owner, FilterSet* /*selects*/) noexcept {
  return owner.filters;
}

}  // namespace orxeps
