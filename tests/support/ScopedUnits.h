// Sets the variable that chooses the unit of coordinates, for as long as it lives.
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
