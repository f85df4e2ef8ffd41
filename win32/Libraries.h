#pragma once

// Libraries of the system that are loaded at run time, and the functions in them.

#include "win32/WindowsHeaders.h"

namespace quarn {

// After this call, libraries that are loaded by name come from the system folder only, never from the
// program's folder or the current one, where a download may have put anything. Call this first. Systems
// without the call behave as before.
void RestrictLibrarySearch() noexcept;

// Loads a library from the system folder by its full path; null if it does not exist. It is never unloaded.
HMODULE LoadSystemLibrary(const char* fileName) noexcept;

// A function of a loaded library as a pointer of its real type; null if library or function are missing.
template<class Function>
Function* FunctionAddress(HMODULE library, const char* name) noexcept {
    if (library == nullptr)
        return nullptr;
    // Through void*, because compilers warn of casts between function types.
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

template<class Function>
Function* SystemFunction(const char* fileName, const char* name) noexcept {
    return FunctionAddress<Function>(LoadSystemLibrary(fileName), name);
}

} // namespace quarn
