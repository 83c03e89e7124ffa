// A dynamic library, opened and closed by the platform's own calls.
//
// For programs that must run where orxprint does not. Handles are the platform's; whoever opens a
// library closes it.
#pragma once

namespace orxtests {

// Null when there is no such library or it cannot be used.
[[nodiscard]] void* OpenLibrary(const char* file);
// Whether it could be closed.
[[nodiscard]] bool CloseLibrary(void* library);
// The address of an exported name, or null.
[[nodiscard]] void* FindSymbol(void* library, const char* name);

// Standard output takes bytes as they are from now on.
void WriteBytesToStandardOutput();

}  // namespace orxtests
