// Modules and the factory dictionary.
#include "host/ORXOMModule.h"

#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace {

struct FactoryDictionary {
  std::mutex guard;
  std::map<std::string, ORXFactoryFunction, std::less<>> factories;
};

// Built when the first module registers, which may be before this library's own statics are.
FactoryDictionary& Dictionary() {
  static FactoryDictionary dictionary;
  return dictionary;
}

}  // namespace

ORXOMModule::ORXOMModule(const ORXOMModuleInfo& info) noexcept {
  for (const ORXOMRegistrationFunction* entry = info.tableBegin; entry != info.tableEnd; ++entry) {
    if (*entry) (*entry)();
  }
}

void ORXFillDictionary::Register(const char* className, ORXFactoryFunction factory) noexcept {
  try {
    FactoryDictionary& dictionary = Dictionary();
    const std::lock_guard lock(dictionary.guard);
    dictionary.factories.insert_or_assign(className, factory);
  } catch (const std::exception&) {
    // Out of memory: the class stays unknown, and whoever asks for it gets null.
  }
}

ORXFactoryFunction ORXFillDictionary::Find(const char* className) noexcept {
  FactoryDictionary& dictionary = Dictionary();
  const std::lock_guard lock(dictionary.guard);
  const auto found = dictionary.factories.find(className);
  return found == dictionary.factories.end() ? nullptr : found->second;
}
