// What the checks of a plug-in share: the module under check, a host that watches it, and the
// documents that it is given.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "drawing/TraceGenerator.h"
#include "framework/CheckedHost.h"
#include "framework/InputStreams.h"
#include "host/ORXOMModule.h"
#include "host/ORXPrintInterpreter.h"

namespace orxprint {

// Throws CheckFailed with this text unless the condition holds.
void Require(bool holds, const std::string& whatIsWrong);
// Throws CheckFailed naming the first line in which two traces differ.
void RequireSameCalls(const std::string& calls, const std::string& expected);
void RequireEqual(long long value, long long expected, const std::string& what);

// The module, loaded. Throws CheckFailed when it is none.
class Candidate {
public:
  explicit Candidate(const std::filesystem::path& file);
  Candidate(const Candidate&) = delete;
  Candidate& operator=(const Candidate&) = delete;

  // No interpreter of it may be alive any more.
  void Unload();
  // A new interpreter; the input is borrowed and may be null. Throws CheckFailed when there is
  // none.
  [[nodiscard]] std::unique_ptr<ORXPrintInterpreter> Make(PrintInputStream* input) const;
  [[nodiscard]] ORXFactoryFunction Factory() const { return factory; }
  [[nodiscard]] void* Handle() const { return library; }

private:
  void* library = nullptr;
  ORXFactoryFunction factory = nullptr;
};

// A host of one document, which it keeps. Coordinates are millimetres.
class Host {
public:
  Host(const Candidate& candidate, std::string_view document);
  // The same over another's stream, which is borrowed.
  Host(const Candidate& candidate, PrintInputStream& source);
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // The calls of a pass as trace lines, and with RequireKept. The pass must answer 1.
  std::string Draw();
  // The lines of a counting pass, each ended.
  std::string Count();
  // Destroys the interpreter. From then on any call on the host is a fault.
  void Destroy();
  // Throws CheckFailed when the interpreter has broken a rule of the host's interfaces.
  void RequireKept() const;

  // What to draw on: notes the calls.
  [[nodiscard]] PrintGenerator& Generator() { return generator; }
  // The calls since the last time.
  [[nodiscard]] std::string TakeCalls();

  [[nodiscard]] ORXPrintInterpreter* operator->() const { return interpreter.get(); }

private:
  Host(const Candidate& candidate, std::unique_ptr<orxframework::MemoryInputStream> document);

  std::unique_ptr<orxframework::MemoryInputStream> own;  // empty where the source is another's
  orxframework::CheckedInputStream input;
  std::string calls;
  orxdrawing::TraceGenerator trace;
  orxframework::CheckedGenerator generator;
  std::unique_ptr<ORXPrintInterpreter> interpreter;
};

// Strokes, fills of both rules, a saved state and a procedure.
extern const std::string_view kShapes;
extern const std::string_view kShapesCalls;
// A grey image of 4 x 2 samples, through its filter, and a stroke behind it.
extern const std::string_view kImage;
extern const std::string_view kImageCalls;
// Two pages of different sizes with labels; the document's own box stands at its end.
extern const std::string_view kPages;
// Never ends.
extern const std::string_view kEndless;
// Leaves open whatever can be left open, and objects that hold each other.
extern const std::string_view kUnfinished;

}  // namespace orxprint
