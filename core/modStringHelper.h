#pragma once

// Text operations on bytes, independent of any locale.

#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// The parts between separators, which point into the text; an empty text gives no part.
std::vector<std::string_view> Split(std::string_view text, char separator);

// Every occurrence replaced, left to right, without overlap.
void ReplaceAll(std::string& text, std::string_view what, std::string_view with);

// Lower-cases byte by byte in the Western code page (1252), so that the length never changes.
char LowerCase(char character) noexcept;
std::string LowerCase(std::string_view text);

} // namespace quarn
