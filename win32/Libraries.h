#pragma once

// Libraries of the system that are loaded while the program runs, and the functions in them.

#include "win32/WindowsHeaders.h"

namespace quarn {

// From here on, libraries that are loaded by name come from the system folder only, never from the program's
// folder or the current one, where a download may have left anything. To be called before all else. Systems
// too old to know the call go on as they were.
void RestrictLibrarySearch() noexcept;

// Loads a library from the system folder by its full path; null when it is not there. It stays loaded.
HMODULE LoadSystemLibrary(const char* fileName) noexcept;

// A function of a loaded library as a pointer of its real type; null when library or function are missing.
template<class Function>
Function* FunctionAddress(HMODULE library, const char* name) noexcept {
    if (library == nullptr)
        return nullptr;
    // By way of void*, because compilers warn of casts between function types.
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

template<class Function>
Function* SystemFunction(const char* fileName, const char* name) noexcept {
    return FunctionAddress<Function>(LoadSystemLibrary(fileName), name);
}

} // namespace quarn
