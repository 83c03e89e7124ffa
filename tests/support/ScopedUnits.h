// Sets the variable that chooses the unit of coordinates, for as long as it lives.
//
// The framework's copy of the environment is changed, not the process's. An interpreter must be
// made inside the scope: it looks at the variable when it is built.
#pragma once

#include "framework/Environment.h"

namespace orxtests {

class ScopedUnits {
public:
  // The variable's value. Interpreters look at it when they are made and when they stroke.
  explicit ScopedUnits(const char* value) noexcept { orxframework::SetEnvironment(kName, value); }
  ScopedUnits(const ScopedUnits&) = delete;
  ScopedUnits& operator=(const ScopedUnits&) = delete;
  ~ScopedUnits() { orxframework::SetEnvironment(kName, nullptr); }

private:
  static constexpr const char* kName = "ORXPrintOpenPSToMM";
};

// Coordinates leave as the PostScript units that the document wrote.
class ScopedPoints : public ScopedUnits {
public:
  ScopedPoints() noexcept : ScopedUnits("0") {}
};

}  // namespace orxtests
