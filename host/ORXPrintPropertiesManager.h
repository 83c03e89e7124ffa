// The framework-wide settings and gauges that an interpreter consults during a pass.
#pragma once

#include "host/ORXFrameworkApi.h"
#include "host/ORXUnicodeString.h"

// What to do when something goes wrong. Interpreters distinguish only the value 1, stop the pass;
// any other value means go on.
enum class OnErrorAction : int { GoOn = 0, Stop = 1 };

// The kind of a report line; interpreters of documents use 2, an error.
enum class PrintInfoType : int { Error = 2 };

class ORX_FRAMEWORK_API ORXPrintPropertiesManager {
public:
  // Asked once at the start of each pass.
  static OnErrorAction GetOnErrorAction() noexcept;
  // Nonzero when more than `threshold` (0 to 1) of the memory that the process may use is in use.
  static int IsLowMemory(float threshold) noexcept;
  // Adds a line to the print report.
  static void AddInfo(PrintInfoType type, ORXUnicodeString text) noexcept;
};
