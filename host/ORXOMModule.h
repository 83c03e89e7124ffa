// How a dynamic library becomes a module of the framework.
//
// A module holds one static ORXOMModule, built from the bounds of its registration table: an array
// of function pointers in a data section of its own. The framework calls every non-null entry of
// the table while the module object is constructed, that is while the library is loaded; the
// entries register the module's classes in the factory dictionary. The destructor of the module
// object, which runs while the library is unloaded, takes them out again. A module also exports the
// marker, a function named by ORX_MODULE_MARKER that takes nothing and returns 1.
#pragma once

#include "host/ORXFrameworkApi.h"

#define ORX_MODULE_MARKER fctIsORXOMModule

class ORXOMModule;

// One entry of a registration table: registers what it registers and returns its module.
using ORXOMRegistrationFunction = ORXOMModule* (*)();

struct ORXOMModuleInfo {
  const ORXOMRegistrationFunction* tableBegin;
  const ORXOMRegistrationFunction* tableEnd;
};

class ORX_FRAMEWORK_API ORXOMModule {
public:
  explicit ORXOMModule(const ORXOMModuleInfo& info) noexcept;
  ORXOMModule(const ORXOMModule&) = delete;
  ORXOMModule& operator=(const ORXOMModule&) = delete;
  ~ORXOMModule();
};

// Builds an object of a registered class around an untyped argument whose meaning is the class's
// own; null when it could not. The caller owns the object.
using ORXFactoryFunction = void* (*)(void* argument);

// The factory dictionary: class names and the factories that build their objects.
class ORX_FRAMEWORK_API ORXFillDictionary {
public:
  // Enters a factory, for the module whose table calls this. A class name has the factory entered
  // last; when that one's module goes, it has the one before again.
  static void Register(const char* className, ORXFactoryFunction factory) noexcept;
  // The factory under a class name, or null.
  static ORXFactoryFunction Find(const char* className) noexcept;
};
