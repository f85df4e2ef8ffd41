#pragma once

// The driver's line format. A request is a line of words; a word with blanks is in double quotes, where \"
// and
// \\ are a quote and a backslash (any other backslash is itself, as in paths). Replies are plain ASCII: every
// other byte is written as \xNN, a line end as \r or \n, a tab as \t, a backslash as \\, so that no text
// breaks a line.

#include "tests/e2e/driver/Command.h"

#include <string>
#include <string_view>

namespace quarn::uidrive {

Words SplitWords(std::string_view line);
std::string Escaped(std::string_view text);

// Whole number in decimal, or in hexadecimal after 0x.
long ToNumber(const std::string& word);

// Whether a text matches a pattern in which "*" matches any characters.
bool Matches(std::string_view text, std::string_view pattern);

// Compares captions as a user reads them: without case and without the "&" of access keys.
std::string Caption(std::string_view text);

std::string Joined(const Lines& parts, std::string_view separator);

} // namespace quarn::uidrive
