// How a host or a test decides what ORXPrintPropertiesManager answers.
//
// Interpreters only ask; whoever runs them sets. The settings belong to the process. Set them
// while no interpreter runs a pass: asking is safe from any number of threads at once, setting is
// not locked against asking. A callback runs on the thread of the interpreter that asked, so with
// interpreters on several threads it must stand being called from all of them. What a callback
// throws is dropped, and it then counts as having answered 0.
#pragma once

#include <cstdint>
#include <functional>

#include "host/ORXFrameworkApi.h"
#include "host/ORXPrintPropertiesManager.h"

namespace orxframework {

// Answers IsLowMemory: nonzero when more than `threshold` (0 to 1) of the memory is in use.
using MemoryGauge = std::function<int(float threshold)>;

// Receives each line of the print report, on the thread of the interpreter that adds it. The text
// belongs to that thread: its count of holders is not atomic, so that even a copy of it must not
// outlive the call. A sink that keeps a line or hands it to another thread copies its bytes.
using ReportSink = std::function<void(PrintInfoType type, const ORXUnicodeString& text)>;

class ORX_FRAMEWORK_API PropertiesControl {
public:
  // What a pass does when memory runs low; GoOn by default.
  static void SetOnErrorAction(OnErrorAction action) noexcept;
  // How many bytes of memory this process may use; 0, the default, stands for what the machine or
  // the container that it runs in has. Measured is the resident memory, about every millisecond and
  // whenever the answer would be that memory is low.
  static void SetMemoryLimit(std::uint64_t bytes) noexcept;
  // Puts `gauge` in place of the measurement; an empty one brings the measurement back.
  static void SetMemoryGauge(MemoryGauge gauge) noexcept;
  // Sends report lines to `sink`; with an empty one, the default, they are dropped.
  static void SetReportSink(ReportSink sink) noexcept;
  // Brings every default back.
  static void Reset() noexcept;
};

// Default settings at its start and at its end, for tests that change them in between.
class ScopedProperties {
public:
  ScopedProperties() noexcept { PropertiesControl::Reset(); }
  ScopedProperties(const ScopedProperties&) = delete;
  ScopedProperties& operator=(const ScopedProperties&) = delete;
  ~ScopedProperties() { PropertiesControl::Reset(); }
};

}  // namespace orxframework
