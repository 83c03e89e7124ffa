// The base class of everything that interprets a document for the print framework.
//
// The framework builds an interpreter through its factory (ORXOMModule.h), asks it about pages and
// selects some of them in any order, starts passes with Generate or CollectStatistics, and deletes
// it through the virtual destructor. Every query and every pass is complete in itself: it opens,
// rewinds and closes the document's input.
//
// Threads: all calls on one interpreter come from one thread at a time, whichever; the host sees to
// that. Interpreters share nothing but their registration, so each may have a thread of its own.
// Callbacks - input, generator, watcher - come on the thread of the call that started the pass or
// query, while it runs and at no other time.
//
// In the middle: a pass or query that is asked for from inside a callback of the same interpreter
// answers 0 and touches nothing. SetCurrentPage and SetAllPages store what they are given even
// then, to the running pass's confusion: do not call them there. Destroying the interpreter there
// is forbidden.
//
// Ownership: the input is borrowed from before the factory's call until after the destructor's, a
// generator from Generate on until another takes its place. Nothing that arrives in a callback may
// be kept. Everything that an interpreter made is gone with it.
//
// Errors: nothing throws, and what callbacks throw does not come through. Pointers and references
// for results must be valid, for they are not checked. Callbacks run with floating-point rounding
// to nearest and without traps, whatever the calling thread has set; its settings are back when the
// call returns.
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

  // Not from inside a callback of this interpreter. The library that made it must still be loaded.
  virtual ~ORXPrintInterpreter();
  // The size in output units, which are millimetres, or points where "ORXPrintOpenPSToMM" is "0":
  // the upper right corner of a box comment, whose lower left one is not looked at.
  //
  // With the all-pages flag at 1 the largest of what the results start with and the boxes up to the
  // document's own; at 0 the selected page's box, or the document's where that page has none. A
  // result that the document says nothing about keeps its value, and so do both under any other
  // flag. So begin with zeros. Returns 1 when neither result is 0 at the end, read or not.
  virtual int GetPageSize(float* width, float* height) = 0;
  // What the document's first usable "%%Pages: " comment says, whatever the all-pages flag; nobody
  // counts pages, and a negative number arrives as a huge one. Returns 0 where there is no such
  // comment; then `count` keeps its value unless a comment that was not usable had a number.
  virtual int GetPageCount(unsigned* count) = 0;
  // The base class knows no bounds: writes nothing, returns 0.
  virtual int GetBounds(float& left, float& bottom, float& right, float& top);
  // Selects a page, counted from 1: the page of GetPageLabel, and, while the all-pages flag is not
  // 1, of GetPageSize and of the passes. Any number is taken and kept until the next; a page that
  // the document does not have draws what stands before its first page. Returns 1.
  virtual int SetCurrentPage(unsigned page);
  // 1: every page, which is so from the start. Anything else: the selected page only, and for
  // passes what stands outside of the pages. GetPageCount and GetPageLabel do not look at it. Kept
  // until the next call. Returns 1.
  virtual int SetAllPages(unsigned char allPages);
  // The label of the selected page, whatever the all-pages flag: the first field of the page
  // comment whose second field is that number, parentheses included. Returns 0 and leaves `label`
  // alone where there is none. The text counts its holders without locks: give other threads its
  // bytes.
  virtual int GetPageLabel(ORXUnicodeString& label) = 0;
  // The version of this interface. Returns 1.
  virtual int GetVersion(unsigned& version);
  // Runs the document, page selection included, and appends to `lines` one line for each counter
  // that is above 0 at the end, in this order: "Curve count = ", "Line count = ", "Arc count = ",
  // "Image count = ", "Closed Path count = " and the number. No line stands for 0; a document that
  // draws nothing appends nothing. Operators count once they have run, whether or not they drew.
  //
  // Attaches no generator, but draws on the one that Generate attached, if any. Returns 1, also
  // without an input and when the pass ended early.
  virtual int CollectStatistics(ORXListValORXUnicodeString& lines) = 0;
  // The base class builds no model and keeps no transformations: these return 0.
  virtual long Interpret(ORXPrtModel** model);
  virtual long GetTransformations(ORXPrintTransformation** transformations);
  virtual long SetTransformations(ORXPrintTransformation* transformations);
  // Draws the document on a generator, which is borrowed, stays attached until another takes its
  // place and must outlive the interpreter's last pass, a counting one included. Null draws
  // nothing, leaves the one before attached and returns 0.
  //
  // Returns 1 when the program ran, also when a watcher, low memory or the end of the data ended it
  // early; 0 without a generator or an input, when memory ran out before the program began and when
  // a callback threw. What stood on the interpreter's stacks, the path and the attributes carry
  // over from pass to pass; a drawing that is to depend on the document alone needs a new
  // interpreter.
  virtual int Generate(PrintGenerator* generator) = 0;

protected:
  // The name is the interpreter's own, for whoever debugs.
  explicit ORXPrintInterpreter(const ORXString& name);

  // The selection as the host has set it; interpreters read it and never change it.
  [[nodiscard]] std::uint32_t SelectedPage() const noexcept { return selectedPage; }
  [[nodiscard]] std::uint8_t AllPagesFlag() const noexcept { return allPagesFlag; }

private:
  ORXString interpreterName;
  std::uint32_t selectedPage = 0;
  std::uint8_t allPagesFlag = 1;
};
