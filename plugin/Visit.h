// One call of the framework that works on the document, from its beginning to its end.
//
// The host thread's floating-point environment is set aside meanwhile: rounding is to nearest and
// nothing traps, so that a drawing does not depend on who asks for it. The host's stream and
// generator are called in this environment, too.
#pragma once

#include <cfenv>

#if defined(__MINGW32__)
#  include <xmmintrin.h>
#endif

namespace orxeps {

// The thread's floating-point environment, set aside while this lives and given back then.
class FloatingPointSetAside {
public:
  FloatingPointSetAside() noexcept {
    std::fegetenv(&environment);
    std::fesetenv(FE_DFL_ENV);
#if defined(__MINGW32__)
    // These functions leave out the unit that does all the arithmetic.
    vectorUnit = _mm_getcsr();
    _mm_setcsr(_MM_MASK_MASK | _MM_ROUND_NEAREST);
#endif
  }
  FloatingPointSetAside(const FloatingPointSetAside&) = delete;
  FloatingPointSetAside& operator=(const FloatingPointSetAside&) = delete;
  ~FloatingPointSetAside() {
    std::fesetenv(&environment);
#if defined(__MINGW32__)
    _mm_setcsr(vectorUnit);
#endif
  }

private:
  std::fenv_t environment;
#if defined(__MINGW32__)
  unsigned vectorUnit = 0;
#endif
};

class Visit {
public:
  // `isRunning` is borrowed: true while a visit lasts.
  explicit Visit(bool& isRunning) noexcept : running(isRunning) { running = true; }
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;
  ~Visit() { running = false; }

private:
  bool& running;
  FloatingPointSetAside floatingPoint;
};

}  // namespace orxeps
