// Modules and the factory dictionary.
#include "host/ORXOMModule.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "framework/NeverDestroyed.h"

namespace {

struct Registration {
  std::string className;
  ORXFactoryFunction factory;
  const ORXOMModule* module;  // null: of nobody who could go
};

// There are a handful of classes, the newest at the end.
struct FactoryDictionary {
  std::mutex guard;
  std::vector<Registration> registrations;
};

// Built when the first module registers, which may be before this library's own statics are.
FactoryDictionary& Dictionary() noexcept {
  static orxframework::NeverDestroyed<FactoryDictionary> dictionary;
  return *dictionary;
}

// The module whose table is being called on this thread.
constinit thread_local const ORXOMModule* moduleAtWork = nullptr;

}  // namespace

ORXOMModule::ORXOMModule(const ORXOMModuleInfo& info) noexcept {
  moduleAtWork = this;
  for (const ORXOMRegistrationFunction* entry = info.tableBegin; entry != info.tableEnd; ++entry) {
    if (*entry) (*entry)();
  }
  moduleAtWork = nullptr;
}

ORXOMModule::~ORXOMModule() {
  FactoryDictionary& dictionary = Dictionary();
  const std::lock_guard lock(dictionary.guard);
  std::erase_if(dictionary.registrations,
                [this](const Registration& each) { return each.module == this; });
}

void ORXFillDictionary::Register(const char* className, ORXFactoryFunction factory) noexcept {
  try {
    FactoryDictionary& dictionary = Dictionary();
    const std::lock_guard lock(dictionary.guard);
    dictionary.registrations.push_back({className, factory, moduleAtWork});
  } catch (const std::exception&) {
    // Out of memory: the class stays unknown, and whoever asks for it gets null.
  }
}

ORXFactoryFunction ORXFillDictionary::Find(const char* className) noexcept {
  FactoryDictionary& dictionary = Dictionary();
  const std::lock_guard lock(dictionary.guard);
  const auto newest =
      std::find_if(dictionary.registrations.rbegin(), dictionary.registrations.rend(),
                   [className](const Registration& each) { return each.className == className; });
  return newest == dictionary.registrations.rend() ? nullptr : newest->factory;
}
