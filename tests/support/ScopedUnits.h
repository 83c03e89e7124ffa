// Sets the environment variable that chooses the unit of coordinates, for as long as it lives.
#pragma once

#include <cstdlib>

namespace orxtests {

class ScopedUnits {
public:
  // The variable's value. Interpreters look at it when they are made and when they stroke.
  explicit ScopedUnits(const char* value) noexcept {
#if defined(_WIN32)
    _putenv_s(kName, value);
#else
    setenv(kName, value, 1);
#endif
  }
  ScopedUnits(const ScopedUnits&) = delete;
  ScopedUnits& operator=(const ScopedUnits&) = delete;
  ~ScopedUnits() {
#if defined(_WIN32)
    _putenv_s(kName, "");
#else
    unsetenv(kName);
#endif
  }

private:
  static constexpr const char* kName = "ORXPrintOpenPSToMM";
};

// Coordinates leave as the PostScript units that the document wrote.
class ScopedPoints : public ScopedUnits {
public:
  ScopedPoints() noexcept : ScopedUnits("0") {}
};

}  // namespace orxtests
