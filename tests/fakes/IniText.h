#pragma once

// The text of an INI file, read and changed like the platform's private-profile functions: names compare
// without case, the first of equal sections and of equal keys counts, lines that begin with ";" are comments,
// blanks around names and values are ignored, and one pair of equal quotes around a value is removed. A
// change keeps every other line byte for byte.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

// Nothing if there is no such section or key; the empty text if the key has no value.
std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key);

// The text with this value of the key: in the key's line if there is one, otherwise after the last line of
// the section, which is added at the end if it is missing.
std::string WithIniValue(std::string_view text, std::string_view section, std::string_view key,
                         std::string_view value);

// The text without the line of this key, if it has one.
std::string WithoutIniKey(std::string_view text, std::string_view section, std::string_view key);

// The number at the beginning of a value: blanks, a sign, digits; 0 without digits. It wraps around at 32
// bits.
std::int32_t LeadingInteger(std::string_view value) noexcept;

} // namespace quarn
