// Services of the foundation library that reach outside the process: the environment, the locale
// and the hash that all text types share.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/ORXFrameworkApi.h"

// The value of an environment variable, or null when it is not set. The framework answers from a
// copy of the environment that it takes at the first question, so that asking is safe on any number
// of threads while others change the platform's environment. The text stays valid.
ORX_FRAMEWORK_API const char* ORXGetEnv(const char* name) noexcept;

// Writes the locale's decimal separator and returns 1; returns 0 and writes nothing when the
// locale names none or one of several bytes.
ORX_FRAMEWORK_API int ORXSysGetLocalDecimalChar(char* separator) noexcept;

// A hash of `length` bytes. Equal bytes give equal hashes within one process; the values differ
// from process to process, so that nobody can write a document whose names all collide.
ORX_FRAMEWORK_API std::uint32_t ORXHashText(const char* text, std::size_t length) noexcept;
