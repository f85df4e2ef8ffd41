#pragma once

// The text of an INI file, read and changed as the platform's private-profile calls do it: names compare
// without case, the first of equal sections and of equal keys counts, lines that begin with ";" are
// comments, blanks around names and values do not count, and a value loses one pair of equal quotes around
// it. A change leaves every other line byte for byte.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

// Nothing when there is no such section or key; the empty text when the key stands there without a value.
std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key);

// The text with this value of the key, in the key's line when it has one, else behind the last line of the
// section, which is added at the end when it is missing.
std::string WithIniValue(std::string_view text, std::string_view section, std::string_view key,
                         std::string_view value);

// The number in front of a value: blanks, a sign, digits; 0 without digits. It wraps around at 32 bits.
std::int32_t LeadingInteger(std::string_view value) noexcept;

} // namespace quarn
