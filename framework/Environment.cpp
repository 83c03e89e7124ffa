// The framework's own copy of the environment. It only ever grows: a reader needs no lock, and a
// value that was handed out stays where it is.
#include "framework/Environment.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <forward_list>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

#include "framework/NeverDestroyed.h"
#include "host/ORXSystem.h"

#if !defined(_WIN32)
extern "C" char** environ;  // NOLINT(readability-redundant-declaration): only GNU declares it
#endif

namespace orxframework {

namespace {

char** PlatformEnvironment() noexcept {
#if defined(_WIN32)
  return _environ;
#else
  return environ;
#endif
}

// Windows does not look at the case of names.
bool IsSameName(const char* a, const char* b) noexcept {
#if defined(_WIN32)
  return _stricmp(a, b) == 0;
#else
  return std::strcmp(a, b) == 0;
#endif
}

struct Variable {
  std::string name;
  std::atomic<const char*> value = nullptr;
  std::forward_list<std::string> valuesGivenOut;  // each text once, however often it comes back
  const Variable* next = nullptr;
};

class Environment {
public:
  Environment() noexcept {
    char** entry = PlatformEnvironment();
    for (; entry && *entry; ++entry) Add(*entry);
  }

  [[nodiscard]] const char* Value(const char* name) const noexcept {
    const Variable* variable = Find(name);
    return variable ? variable->value.load(std::memory_order_acquire) : nullptr;
  }

  void Set(const char* name, const char* value) {
    const std::lock_guard lock(guard);
    auto* variable = const_cast<Variable*>(Find(name));
    if (!variable) variable = MakeVariable(name);
    variable->value.store(value ? Keep(*variable, value) : nullptr, std::memory_order_release);
  }

private:
  // Enters NAME=VALUE; without memory for it the variable stays unknown. Windows has names that
  // begin with the separator.
  void Add(std::string_view entry) noexcept try {
    const std::size_t separator = entry.find('=', 1);
    if (separator == std::string_view::npos) return;
    const std::string name(entry.substr(0, separator));
    if (!Find(name.c_str())) Set(name.c_str(), std::string(entry.substr(separator + 1)).c_str());
  } catch (const std::bad_alloc&) {
    return;
  }

  static const char* Keep(Variable& variable, const char* value) {
    for (const std::string& kept : variable.valuesGivenOut) {
      if (kept == value) return kept.c_str();
    }
    return variable.valuesGivenOut.emplace_front(value).c_str();
  }

  Variable* MakeVariable(const char* name) {
    std::atomic<const Variable*>& first = chains[ChainOf(name)];
    auto* variable = new Variable;
    variable->name = name;
    variable->next = first.load(std::memory_order_relaxed);
    first.store(variable, std::memory_order_release);
    return variable;
  }

  [[nodiscard]] const Variable* Find(const char* name) const noexcept {
    const Variable* variable = chains[ChainOf(name)].load(std::memory_order_acquire);
    while (variable && !IsSameName(variable->name.c_str(), name)) variable = variable->next;
    return variable;
  }

  // Names differ at their ends more than anywhere. Case is left out, for Windows.
  static std::size_t ChainOf(const char* name) noexcept {
    const std::size_t length = std::strlen(name);
    const char last = length != 0 ? name[length - 1] : '\0';
    return (length * 7 + (static_cast<unsigned char>(last) & 0x1FU)) % kChains;
  }

  static constexpr std::size_t kChains = 128;

  std::mutex guard;  // held by those who change something
  std::array<std::atomic<const Variable*>, kChains> chains{};
};

Environment& TheEnvironment() noexcept {
  static NeverDestroyed<Environment> environment;
  return *environment;
}

}  // namespace

bool SetEnvironment(const char* name, const char* value) noexcept try {
  TheEnvironment().Set(name, value);
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace orxframework

const char* ORXGetEnv(const char* name) noexcept {
  return name ? orxframework::TheEnvironment().Value(name) : nullptr;
}
