// The framework-wide settings and gauges that an interpreter consults during a pass.
//
// Interpreters ask, on the thread of their pass, and may do so from several threads at once. Who
// decides on the answers is the framework: framework/PropertiesControl.h is how a host sets them
// here. None of it throws.
#pragma once

#include "host/ORXFrameworkApi.h"
#include "host/ORXUnicodeString.h"

// What to do when something goes wrong. Interpreters distinguish only the value 1, stop the pass;
// any other value means go on.
enum class OnErrorAction : int { GoOn = 0, Stop = 1 };

// The kind of a report line; interpreters of documents use 2, an error. Other values are the
// framework's own.
enum class PrintInfoType : int { Error = 2 };

class ORX_FRAMEWORK_API ORXPrintPropertiesManager {
public:
  // Asked once at the start of each pass.
  static OnErrorAction GetOnErrorAction() noexcept;
  // Nonzero when more than `threshold` (0 to 1) of the memory that the process may use is in use.
  // Interpreters ask with 0.9, before nine tokens of ten, so the answer must cost next to nothing.
  static int IsLowMemory(float threshold) noexcept;
  // Adds a line to the print report. The text is handed over on this thread and is not to be kept
  // beyond it; see ReportSink in framework/PropertiesControl.h.
  static void AddInfo(PrintInfoType type, ORXUnicodeString text) noexcept;
};
