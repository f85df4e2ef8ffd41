#pragma once

#include "win32/Dpi.h"
#include "win32/Handles.h"

#include <string_view>

namespace quarn {

struct FontKind {
    using Type = HFONT;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DeleteObject(handle); }
};
using FontHandle = UniqueHandle<FontKind>;

// The font that the user has chosen for messages, in pixels of the system's DPI.
LOGFONTW MessageFontDescription() noexcept;

// The same for another DPI, for controls, which must not outlive it.
FontHandle MessageFont(Dpi dpi) noexcept;

bool IsSameFont(HFONT one, HFONT other) noexcept;

// In pixels, of a line and of a text in it. Null means the system's font.
int LineHeight(HFONT font) noexcept;
int TextWidth(HFONT font, std::string_view text) noexcept;

} // namespace quarn
