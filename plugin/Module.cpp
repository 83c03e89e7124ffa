// The library's face to the framework's loader: the registration table, the module object, the
// factory and the module marker. Loading the library does nothing but register the class name.

#include <new>

#include "host/ORXOMModule.h"
#include "plugin/ORXPrintEPSInterpreter.h"

#if defined(_WIN32)
#  define ORX_EXPORT __declspec(dllexport)
#else
#  define ORX_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

// Builds an interpreter around the document's input, a PrintInputStream that stays the caller's.
// Returns an ORXPrintInterpreter that the caller deletes; null when memory runs out.
ORX_EXPORT void* fctCreateORXPrintEPSInterpreter(void* input) noexcept {
  try {
    ORXPrintInterpreter* interpreter =
        new orxeps::ORXPrintEPSInterpreter(static_cast<PrintInputStream*>(input));
    return interpreter;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// The framework's marker: this library is one of its modules.
ORX_EXPORT int ORX_MODULE_MARKER() noexcept { return 1; }

}  // extern "C"

namespace {

ORXOMModule* RegisterInterpreter();

// The registration table has a data section to itself: a null entry, then the library's one
// registration function.
#if defined(_MSC_VER)
#  pragma section("orxreg", read, write)
#  define ORX_REGISTRATION_SECTION __declspec(allocate("orxreg"))
#else
#  define ORX_REGISTRATION_SECTION __attribute__((section("orxreg"), used))
#endif

ORX_REGISTRATION_SECTION constinit ORXOMRegistrationFunction registrationTable[] = {
    nullptr,
    &RegisterInterpreter,
};

ORXOMModule module(ORXOMModuleInfo{std::begin(registrationTable), std::end(registrationTable)});

ORXOMModule* RegisterInterpreter() {
  ORXFillDictionary::Register("ORXPrintEPSInterpreter", &fctCreateORXPrintEPSInterpreter);
  return &module;
}

}  // namespace
