#pragma once

// The program's own resources.

#include "win32/Handles.h"

#include <string_view>

namespace quarn {

// Types of resources, in the form of the ANSI interfaces.
inline const char* const IconType = MAKEINTRESOURCEA(3);
inline const char* const DialogType = MAKEINTRESOURCEA(5);
inline const char* const DataType = MAKEINTRESOURCEA(10);
inline const char* const GroupIconType = MAKEINTRESOURCEA(14);

// The resource's bytes in the executable, valid while the program runs; empty if there is none.
std::string_view ResourceBytes(const char* type, const char* name) noexcept;

// An icon in a size; empty if there is none of this name.
IconHandle LoadIconOfSize(const char* name, int size) noexcept;

} // namespace quarn
