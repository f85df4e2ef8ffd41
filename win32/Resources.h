#pragma once

// The program's own resources.

#include "win32/Handles.h"

#include <string_view>

namespace quarn {

// Types of resources, as the ANSI interfaces want them.
inline const char* const IconType = MAKEINTRESOURCEA(3);
inline const char* const DialogType = MAKEINTRESOURCEA(5);
inline const char* const DataType = MAKEINTRESOURCEA(10);
inline const char* const GroupIconType = MAKEINTRESOURCEA(14);

// As the resource lies in the executable, for as long as the program runs; empty where there is none.
std::string_view ResourceBytes(const char* type, const char* name) noexcept;

// An icon in a size; empty where there is none of this name.
IconHandle LoadIconOfSize(const char* name, int size) noexcept;

} // namespace quarn
