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

// Nothing where the code page lacks a character.
std::optional<std::string> NarrowedExactly(std::wstring_view text);

} // namespace quarn
