// Services of the foundation library that reach outside the process: the environment and the
// locale.
//
// Interpreters look at one variable, "ORXPrintOpenPSToMM": exactly "0" makes their output units
// PostScript units instead of millimetres. They ask when they are built and again at each stroke,
// so a host does not change it while one lives. A host sets it through framework/Environment.h.
#pragma once

#include "host/ORXFrameworkApi.h"

// The value of an environment variable, or null when it is not set. The framework answers from a
// copy of the environment that it takes at the first question, so that asking is safe on any number
// of threads while others change the platform's environment. The text stays valid.
ORX_FRAMEWORK_API const char* ORXGetEnv(const char* name) noexcept;

// Writes the locale's decimal separator and returns 1; returns 0 and writes nothing when the
// locale names none or one of several bytes.
ORX_FRAMEWORK_API int ORXSysGetLocalDecimalChar(char* separator) noexcept;
