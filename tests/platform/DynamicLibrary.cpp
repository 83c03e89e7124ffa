#include "tests/platform/DynamicLibrary.h"

#if defined(_WIN32)
#  include <fcntl.h>
#  include <io.h>
#  include <windows.h>

#  include <cstdio>
#else
#  include <dlfcn.h>
#endif

namespace orxtests {

#if defined(_WIN32)

void* OpenLibrary(const char* file) { return LoadLibraryA(file); }

bool CloseLibrary(void* library) { return FreeLibrary(static_cast<HMODULE>(library)) != 0; }

void* FindSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void WriteBytesToStandardOutput() { _setmode(_fileno(stdout), _O_BINARY); }

#else

void* OpenLibrary(const char* file) { return dlopen(file, RTLD_NOW | RTLD_LOCAL); }

bool CloseLibrary(void* library) { return dlclose(library) == 0; }

void* FindSymbol(void* library, const char* name) { return dlsym(library, name); }

void WriteBytesToStandardOutput() {}

#endif

}  // namespace orxtests
