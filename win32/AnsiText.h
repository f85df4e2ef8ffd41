#pragma once

// Conversion between the program's text, bytes in the ANSI code page, and the wide characters of the few
// system calls without an ANSI form.

#include <optional>
#include <string>
#include <string_view>

namespace quarn {

std::wstring Widened(std::string_view text);

// Characters that are not in the code page become a similar one or "?".
std::string Narrowed(std::wstring_view text);

// In UTF-8, which holds every character. A byte that is none in the code page becomes a substitute.
std::string Utf8Of(std::string_view text);

// Nothing if a character is not in the code page.
std::optional<std::string> NarrowedExactly(std::wstring_view text);

// A path in the code page: its own name, or otherwise its short name. Error 52 if the file system has no
// short name for it either. The file or folder must exist.
std::string ExpressiblePath(const std::wstring& path);

} // namespace quarn
