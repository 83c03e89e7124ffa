// Runs a program in an interpreter of its own and shows what it left: the calls on the generator as
// trace lines, and the operand stack as text.
//
// The input and the generator are watched: any use that the host's interfaces do not allow fails
// the test, and so does an object that is still alive once the stacks are empty.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "drawing/TraceGenerator.h"
#include "framework/CheckedHost.h"
#include "framework/InputStreams.h"
#include "plugin/ORXPrintEPSInterpreter.h"
#include "tests/support/Outcomes.h"

namespace orxtests {

class Interpretation {
public:
  // Bytes of the document; a newline is added behind them, so that the last token is complete.
  explicit Interpretation(std::string_view program);
  // Exactly these bytes: for what happens at the very end of the data.
  [[nodiscard]] static Interpretation OfExactly(std::string_view bytes) {
    return Interpretation(ExactBytes{bytes});
  }
  Interpretation(const Interpretation&) = delete;
  Interpretation& operator=(const Interpretation&) = delete;
  ~Interpretation();

  // Runs a drawing pass and returns its trace, one call a line.
  std::string Draw();
  // Runs a drawing pass over an interpreter that has one page selected.
  std::string DrawPage(unsigned page);
  // Runs a counting pass and returns its report, one line each.
  std::string Count();
  // The calls made since the last pass began.
  [[nodiscard]] std::string Calls();
  // The operand stack, as ShowStack shows it.
  [[nodiscard]] std::string Stack() const;
  // The current path in device space: "M 0 0 L 10.5 2", numbers as short as they can be.
  [[nodiscard]] std::string Path() const;
  // The error raised last, or an empty text.
  [[nodiscard]] std::string_view Error() const;

  [[nodiscard]] orxeps::ORXPrintEPSInterpreter& Get() noexcept { return *interpreter; }

  // Objects of this program keep each other alive in circles, so some outlive the stacks.
  void ExpectCircles() noexcept { circlesExpected = true; }
  // This program draws what no sound document draws (points that are not finite, for instance).
  void AllowOddCalls() noexcept { oddCallsAllowed = true; }

private:
  struct ExactBytes {
    std::string_view bytes;
  };
  explicit Interpretation(ExactBytes exact);

  std::string calls;
  orxframework::MemoryInputStream bytes;
  orxframework::CheckedInputStream input{bytes};
  orxdrawing::TraceGenerator tracer;
  orxframework::CheckedGenerator generator{tracer};
  std::unique_ptr<orxeps::ORXPrintEPSInterpreter> interpreter;
  bool circlesExpected = false;
  bool oddCallsAllowed = false;
};

// The calls that a program makes.
[[nodiscard]] std::string CallsOf(std::string_view program);

}  // namespace orxtests
