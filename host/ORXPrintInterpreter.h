// The base class of everything that interprets a document for the print framework.
//
// The framework builds an interpreter through its factory, asks it about pages and selects some of
// them in any order, starts passes with Generate or CollectStatistics, and deletes it through the
// virtual destructor. All calls come from one thread at a time. Every query and every pass is
// complete in itself: it opens, rewinds and closes the document's input.
//
// A pass or query that is asked for from inside a callback of the same interpreter's running pass
// answers 0 and touches nothing; destroying the interpreter there is forbidden. Callbacks run with
// floating-point rounding to nearest and without traps, whatever the calling thread has set.
//
// Results are 1 for success and 0 for "no answer" unless an operation says otherwise.
#pragma once

#include <cstdint>

#include "host/ORXFrameworkApi.h"
#include "host/ORXListValORXUnicodeString.h"
#include "host/ORXString.h"
#include "host/ORXUnicodeString.h"

class ORXPrintTransformation;
class ORXPrtModel;
class PrintGenerator;

class ORX_FRAMEWORK_API ORXPrintInterpreter {
public:
  ORXPrintInterpreter(const ORXPrintInterpreter&) = delete;
  ORXPrintInterpreter& operator=(const ORXPrintInterpreter&) = delete;

  // The virtual operations stand in the order of the class's table.
  virtual ~ORXPrintInterpreter();
  // The size in output units. With the all-pages flag at 1 the largest of what the results start
  // with and the boxes up to the document's own; at 0 the selected page's box, or the document's
  // where that page has none. A result that the document says nothing about keeps its value, and so
  // do both under any other flag. Returns 1 when neither is 0 then.
  virtual int GetPageSize(float* width, float* height) = 0;
  virtual int GetPageCount(unsigned* count) = 0;
  // The base class knows no bounds: writes nothing, returns 0.
  virtual int GetBounds(float& left, float& bottom, float& right, float& top);
  // Selects a page, counted from 1: the page of GetPageLabel, and, while the all-pages flag is not
  // 1, of GetPageSize and of the passes.
  virtual int SetCurrentPage(unsigned page);
  // 1: every page, which is so from the start. Anything else: the selected page only, and for
  // passes what stands outside of the pages. GetPageCount and GetPageLabel do not look at it.
  virtual int SetAllPages(unsigned char allPages);
  // The label of the selected page, whatever the all-pages flag.
  virtual int GetPageLabel(ORXUnicodeString& label) = 0;
  virtual int GetVersion(unsigned& version);
  // Runs the document, page selection included, and appends a line for each kind of thing that it
  // counted at least once. Attaches no generator, but draws on the one that Generate attached, if
  // any. Returns 1.
  virtual int CollectStatistics(ORXListValORXUnicodeString& lines) = 0;
  // The base class builds no model and keeps no transformations: these return 0.
  virtual long Interpret(ORXPrtModel** model);
  virtual long GetTransformations(ORXPrintTransformation** transformations);
  virtual long SetTransformations(ORXPrintTransformation* transformations);
  // Draws the document on a generator, which is borrowed, stays attached until another takes its
  // place and must outlive the interpreter's last pass. Null draws nothing, leaves the one before
  // attached and returns 0. A pass that ended early returns 1 as well.
  virtual int Generate(PrintGenerator* generator) = 0;

protected:
  explicit ORXPrintInterpreter(const ORXString& name);

  [[nodiscard]] std::uint32_t SelectedPage() const noexcept { return selectedPage; }
  [[nodiscard]] std::uint8_t AllPagesFlag() const noexcept { return allPagesFlag; }

private:
  ORXString interpreterName;
  std::uint32_t selectedPage = 0;
  std::uint8_t allPagesFlag = 1;
};
