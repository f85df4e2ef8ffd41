#pragma once

// Text operations on bytes, independent of any locale.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// The parts between separators, as views into the text; an empty text has no parts.
std::vector<std::string_view> Split(std::string_view text, char separator);

// Every occurrence replaced, left to right, without overlap.
void ReplaceAll(std::string& text, std::string_view what, std::string_view with);

// The lower case of every code of the Western code page (1252), as a lookup table, because a branch per
// character mispredicts.
inline constexpr std::array<char, 256> LowerCaseTable = [] {
    std::array<char, 256> table{};
    for (int code = 0; code < 256; ++code) {
        const bool latin = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
        const bool caron = code == 0x8A || code == 0x8C || code == 0x8E;
        const int lower = latin ? code + 0x20 : caron ? code + 0x10 : code == 0x9F ? 0xFF : code;
        table[static_cast<std::size_t>(code)] = static_cast<char>(lower);
    }
    return table;
}();

// Lower-cases each byte, so that the length never changes.
inline char LowerCase(char character) noexcept {
    return LowerCaseTable[static_cast<unsigned char>(character)];
}
std::string LowerCase(std::string_view text);

} // namespace quarn
