// The environment as the framework answers for it.
//
// What the platform offers cannot be read while another thread changes it. So the framework copies
// it once, at the first question, and answers from its copy ever after: the question is then safe
// on any number of threads, whatever they do to the platform's environment. The copy is taken from
// the platform, so the first question must not come while another thread changes variables there; a
// host of many threads asks once before it starts them.
#pragma once

#include "host/ORXFrameworkApi.h"

namespace orxframework {

// From now on ORXGetEnv answers `value` for this name, on all threads; with null, that the variable
// is not set. The platform's environment stays as it is. Safe at any time; interpreters notice at
// their next question. Returns whether there was the memory for it.
ORX_FRAMEWORK_API bool SetEnvironment(const char* name, const char* value) noexcept;

}  // namespace orxframework
