// Services of the foundation library that reach outside the process: the environment and the
// locale.
#pragma once

#include "host/ORXFrameworkApi.h"

// The value of an environment variable, or null when it is not set. The framework answers from a
// copy of the environment that it takes at the first question, so that asking is safe on any number
// of threads while others change the platform's environment. The text stays valid.
ORX_FRAMEWORK_API const char* ORXGetEnv(const char* name) noexcept;

// Writes the locale's decimal separator and returns 1; returns 0 and writes nothing when the
// locale names none or one of several bytes.
ORX_FRAMEWORK_API int ORXSysGetLocalDecimalChar(char* separator) noexcept;
