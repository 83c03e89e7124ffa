// An optional interface between a host and an interpreter: a host that wants to stop a run, or to
// know how one ended, hands the interpreter a watcher.
//
// A host finds the interface with a dynamic_cast from ORXPrintInterpreter* to ORXWatchable*; an
// interpreter that does not offer it answers null, and a host that never asks notices nothing.
// Watching and asking changes no answer and no call on the generator, except that a pass ends where
// the watcher says so.
//
//   if (auto* watchable = dynamic_cast<ORXWatchable*>(interpreter))
//   watchable->SetWatcher(&watcher);
#pragma once

#include <cstdint>

#include "host/ORXNote.h"

// How a pass or a query came to its end.
enum class ORXPassResult : std::uint32_t {
  Complete = 0,   // the end of the data, or of what was asked for
  Stopped = 1,    // the watcher said so
  LowMemory = 2,  // the framework's gauge said so, and its error action is to stop
  LimitMet = 3,   // to the end of the data, but a ceiling of the interpreter took effect on the way
  ReadFailed = 4,   // a read failed while the input said that it was readable
  OutOfMemory = 5,  // an allocation failed; what needed it is missing
  HostThrew = 6,    // an exception came out of the input or the generator
};

struct ORXPassEnd {
  ORXPassResult result = ORXPassResult::Complete;
  // The name of the first error of that kind ("VMerror", "limitcheck", ...), a literal; empty where
  // there is none.
  const char* error = "";
  // Bytes of the document from its start to where that happened; to where the pass ended otherwise.
  std::uint64_t position = 0;
};

// Called on the thread that runs the pass, in its middle: from here operations of the interpreter
// answer 0, and nothing may be thrown.
class ORXInterpreterWatcher {
public:
  // Asked every few thousand steps of a run and whenever more of the input is fetched. A single
  // operator may work for as long as its data takes, up to the interpreter's ceilings, without
  // asking. False ends the pass or query as the end of the input would, after the operator that
  // runs; it is not asked again before the next one.
  virtual bool MayGoOn() noexcept = 0;
  // Told once at the end of each pass and query, before the call that started it returns; not where
  // there was nothing to read from.
  virtual void PassEnded(const ORXPassEnd& end) noexcept = 0;

protected:
  ~ORXInterpreterWatcher() = default;
};

// Told where the interpreter does less, or other, than PostScript asks for; on the thread of the
// run, as often as the document runs operators. The ORXWatchable answers what it looks like there.
class ORXNoteListener {
public:
  virtual void Noted(const ORXNote& note) noexcept = 0;

protected:
  ~ORXNoteListener() = default;
};

// Bytes of the document from its start.
struct ORXPlace {
  static constexpr std::uint64_t kNone = ~std::uint64_t{0};

  // The beginning of the token that runs: inside a procedure, of the token at the top level of the
  // document that led there; while a comment is acted on, of the comment.
  std::uint64_t token = kNone;
  // The "{" of the innermost procedure that runs; kNone where none runs or it was made otherwise.
  std::uint64_t definition = kNone;
};

class ORXWatchable {
public:
  // The watcher is borrowed and stays until another takes its place; null for none. Not to be
  // called in the middle of a pass.
  virtual void SetWatcher(ORXInterpreterWatcher* watcher) noexcept = 0;
  // Where a pass is: to be asked on the thread that runs it, from a call on the generator or on the
  // watcher, as often as one likes. Outside of a pass both members are kNone.
  [[nodiscard]] virtual ORXPlace Place() const noexcept = 0;
  // The operands, 0 the top one; an operand of no type below the last.
  [[nodiscard]] virtual ORXOperand Operand(std::int32_t fromTop) const noexcept = 0;
  [[nodiscard]] virtual ORXGraphics Graphics() const noexcept = 0;
  // Takes time that grows with the path.
  [[nodiscard]] virtual ORXExtent PathExtent() const noexcept = 0;
  // Whether the procedure at that place of the operand stack would run, or any that it would run,
  // an operator or an unknown name that the test holds for. Looks at a bounded number of elements.
  [[nodiscard]] virtual bool RunsAny(std::int32_t fromTop, ORXNameTest& test) noexcept = 0;
  // The same of the procedure that the name stands for, and of the innermost that runs.
  [[nodiscard]] virtual bool NameRunsAny(std::string_view name, ORXNameTest& test) noexcept = 0;
  [[nodiscard]] virtual bool RunningRunsAny(ORXNameTest& test) noexcept = 0;
  // Leaves a mark in the current graphics state, which is saved and restored with it and means
  // nothing to the interpreter. 0 in a new interpreter.
  virtual void SetMark(std::uint32_t mark) noexcept = 0;
  // The listener is borrowed, as the watcher is; null for none.
  virtual void SetListener(ORXNoteListener* listener) noexcept = 0;

protected:
  ~ORXWatchable() = default;
};
