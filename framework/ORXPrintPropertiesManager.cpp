// The settings behind the properties manager, and the manager's answers from them.
#include "host/ORXPrintPropertiesManager.h"

#include <atomic>
#include <exception>
#include <utility>

#include "framework/MemoryMeter.h"
#include "framework/NeverDestroyed.h"
#include "framework/PropertiesControl.h"

using orxframework::MemoryMeter;
using orxframework::PropertiesControl;

namespace {

// Apart from the other settings because it is asked for with nearly every token.
constinit std::atomic<bool> hasGauge = false;

struct Settings {
  std::atomic<OnErrorAction> onErrorAction = OnErrorAction::GoOn;
  orxframework::MemoryGauge gauge;
  orxframework::ReportSink sink;
};

Settings& TheSettings() noexcept {
  static orxframework::NeverDestroyed<Settings> settings;
  return *settings;
}

}  // namespace

OnErrorAction ORXPrintPropertiesManager::GetOnErrorAction() noexcept {
  // A pass begins, and whatever was measured for another one need not hold for it.
  MemoryMeter::Process().ExpectChange();
  return TheSettings().onErrorAction.load(std::memory_order_relaxed);
}

int ORXPrintPropertiesManager::IsLowMemory(float threshold) noexcept {
  if (!hasGauge.load(std::memory_order_relaxed)) {
    return MemoryMeter::Process().IsAbove(threshold) ? 1 : 0;
  }
  try {
    return TheSettings().gauge(threshold);
  } catch (...) {
    return 0;
  }
}

void ORXPrintPropertiesManager::AddInfo(PrintInfoType type, ORXUnicodeString text) noexcept {
  const orxframework::ReportSink& sink = TheSettings().sink;
  if (!sink) return;
  try {
    sink(type, text);
  } catch (...) {
    // A report that cannot be kept must not stop the document.
    return;
  }
}

namespace orxframework {

void PropertiesControl::SetOnErrorAction(OnErrorAction action) noexcept {
  TheSettings().onErrorAction.store(action, std::memory_order_relaxed);
}

void PropertiesControl::SetMemoryLimit(std::uint64_t bytes) noexcept {
  MemoryMeter::Process().SetLimit(bytes);
}

void PropertiesControl::SetMemoryGauge(MemoryGauge gauge) noexcept {
  const bool isSet = static_cast<bool>(gauge);
  TheSettings().gauge = std::move(gauge);
  hasGauge.store(isSet, std::memory_order_relaxed);
}

void PropertiesControl::SetReportSink(ReportSink sink) noexcept {
  TheSettings().sink = std::move(sink);
}

void PropertiesControl::Reset() noexcept {
  SetOnErrorAction(OnErrorAction::GoOn);
  SetMemoryLimit(0);
  SetMemoryGauge({});
  SetReportSink({});
}

}  // namespace orxframework
