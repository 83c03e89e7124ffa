// One call of the framework that works on the document, from its beginning to its end.
//
// The host thread's floating-point environment is set aside meanwhile: rounding is to nearest and
// nothing traps, so that a drawing does not depend on who asks for it. The host's stream and
// generator are called in this environment, too.
#pragma once

#include <cfenv>

namespace orxeps {

class Visit {
public:
  // `isRunning` is borrowed: true while a visit lasts.
  explicit Visit(bool& isRunning) noexcept : running(isRunning) {
    running = true;
    std::fegetenv(&environment);
    std::fesetenv(FE_DFL_ENV);
  }
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;
  ~Visit() {
    std::fesetenv(&environment);
    running = false;
  }

private:
  bool& running;
  std::fenv_t environment;
};

}  // namespace orxeps
