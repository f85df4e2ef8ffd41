#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// A function of a loaded library as a pointer of its real type; null when the library lacks it.
template<class Function>
Function* FunctionAddress(HMODULE library, const char* name) noexcept {
    // By way of void*: the compiler rightly warns of casts between function types, and here one is meant.
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

} // namespace quarn
