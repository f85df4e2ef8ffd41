#pragma once

// Between the program's text, bytes in the ANSI code page, and the wide characters of the few interfaces that
// have no other form.

#include <optional>
#include <string>
#include <string_view>

namespace quarn {

std::wstring Widened(std::string_view text);

// Characters that the code page lacks become their nearest likeness or "?".
std::string Narrowed(std::wstring_view text);

// In UTF-8, which holds every character. A byte that is none in the code page becomes a substitute.
std::string Utf8Of(std::string_view text);

// Nothing if the code page lacks a character.
std::optional<std::string> NarrowedExactly(std::wstring_view text);

// A path by a name that the code page can express: its own, or else its short one. Error 52 when the file
// system keeps no short name for it either. The file or folder must exist.
std::string ExpressiblePath(const std::wstring& path);

} // namespace quarn
