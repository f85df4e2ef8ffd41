#pragma once

#include "win32/Dpi.h"
#include "win32/Handles.h"

namespace quarn {

struct FontKind {
    using Type = HFONT;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DeleteObject(handle); }
};
using FontHandle = UniqueHandle<FontKind>;

// The font that the user chose for messages, which all controls wear. A control must not outlive it.
FontHandle MessageFont(Dpi dpi) noexcept;

} // namespace quarn
