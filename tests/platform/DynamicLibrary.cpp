#include "tests/platform/DynamicLibrary.h"

#if defined(_WIN32)
#  include <fcntl.h>
#  include <io.h>
#  include <windows.h>

#  include <cstdio>
#elif defined(__EMSCRIPTEN__)
#  include <cstring>
#else
#  include <dlfcn.h>
#endif

#if defined(__EMSCRIPTEN__)
extern "C" void* fctCreateORXPrintEPSInterpreter(void* input) noexcept;
extern "C" int fctIsORXOMModule() noexcept;
#endif

namespace orxtests {

#if defined(_WIN32)

void* OpenLibrary(const char* file) { return LoadLibraryA(file); }

bool CloseLibrary(void* library) { return FreeLibrary(static_cast<HMODULE>(library)) != 0; }

void* FindSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void WriteBytesToStandardOutput() { _setmode(_fileno(stdout), _O_BINARY); }

#elif defined(__EMSCRIPTEN__)

// There everything is one program, and the module in it is registered from its start to its end.
void* OpenLibrary(const char* file) { return const_cast<char*>(file); }

bool CloseLibrary(void* /*library*/) { return true; }

void* FindSymbol(void* /*library*/, const char* name) {
  return std::strcmp(name, "fctIsORXOMModule") == 0
             ? reinterpret_cast<void*>(fctIsORXOMModule)
             : reinterpret_cast<void*>(fctCreateORXPrintEPSInterpreter);
}

void WriteBytesToStandardOutput() {}

#else

void* OpenLibrary(const char* file) { return dlopen(file, RTLD_NOW | RTLD_LOCAL); }

bool CloseLibrary(void* library) { return dlclose(library) == 0; }

void* FindSymbol(void* library, const char* name) { return dlsym(library, name); }

void WriteBytesToStandardOutput() {}

#endif

}  // namespace orxtests
