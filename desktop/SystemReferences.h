#pragma once

// Windows and icons of the system, as plain numbers that portable code only stores and passes on. 0: none.

#include <cstdint>

namespace quarn {

using WindowReference = std::uintptr_t;
using IconReference = std::uintptr_t;

} // namespace quarn
