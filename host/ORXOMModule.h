// How a dynamic library becomes a module of the framework, and how a host finds what it makes.
//
// A module holds one static ORXOMModule, built from the bounds of its registration table: an array
// of function pointers in a data section of its own. The framework calls every non-null entry of
// the table while the module object is constructed, that is while the library is loaded; the
// entries register the module's classes in the factory dictionary. The destructor of the module
// object, which runs while the library is unloaded, takes them out again. A module also exports the
// marker, a function named by ORX_MODULE_MARKER that takes nothing and returns 1.
//
// A host opens the library with the platform's loader, calls the marker if it wants to be sure, and
// asks the dictionary for the class. It keeps the library loaded while any object of it lives; a
// factory that was found before must not be called after it was unloaded.
//
//   if (!dlopen("ORXPrintEPSInterpreter.so", RTLD_NOW)) ...
//   ORXFactoryFunction factory = ORXFillDictionary::Find("ORXPrintEPSInterpreter");
//   PrintInputStream* input = &myStream;  // of exactly this type, before it becomes untyped
//   auto* interpreter = static_cast<ORXPrintInterpreter*>(factory(input));
//
// The dictionary may be used from any thread. Loading and unloading are the host's to order.
#pragma once

#include "host/ORXFrameworkApi.h"

#define ORX_MODULE_MARKER fctIsORXOMModule

class ORXOMModule;

// One entry of a registration table: registers what it registers and returns its module.
using ORXOMRegistrationFunction = ORXOMModule* (*)();

// The bounds of a registration table, which must stay where it is while the library is loaded.
struct ORXOMModuleInfo {
  const ORXOMRegistrationFunction* tableBegin;
  const ORXOMRegistrationFunction* tableEnd;
};

// One static object for each module.
class ORX_FRAMEWORK_API ORXOMModule {
public:
  // Calls the table's entries, in order, on this thread.
  explicit ORXOMModule(const ORXOMModuleInfo& info) noexcept;
  ORXOMModule(const ORXOMModule&) = delete;
  ORXOMModule& operator=(const ORXOMModule&) = delete;
  // Takes out what the table's entries have registered.
  ~ORXOMModule();
};

// Builds an object of a registered class around an untyped argument whose meaning is the class's
// own; null when it could not. The caller owns the object and deletes it through the class's base.
// For interpreters the argument is a PrintInputStream*, which may be null and is borrowed, and the
// result an ORXPrintInterpreter*. Nothing is thrown, and the input is not touched yet.
using ORXFactoryFunction = void* (*)(void* argument);

// The factory dictionary: class names and the factories that build their objects.
class ORX_FRAMEWORK_API ORXFillDictionary {
public:
  // Enters a factory, for the module whose table calls this. A class name has the factory entered
  // last; when that one's module goes, it has the one before again. The name is copied. Without
  // memory for it the class stays unknown.
  static void Register(const char* className, ORXFactoryFunction factory) noexcept;
  // The factory under a class name, or null.
  static ORXFactoryFunction Find(const char* className) noexcept;
};
