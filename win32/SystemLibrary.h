#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// Loads a library of the system that few sessions need, for good; null when it is not there. It is found by
// its full path: nothing in another folder can pass itself off as the library.
HMODULE LoadSystemLibrary(const char* fileName) noexcept;

} // namespace quarn
