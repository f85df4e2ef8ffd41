#pragma once

// The driver's line format. A request is a line of words; a word with blanks stands in double quotes, where
// \" and \\ are a quote and a backslash (any other backslash is itself, as in paths). Replies are plain
// ASCII: every other byte is written as \xNN, a line end as \r or \n, a tab as \t, a backslash as \\, so that
// no text on screen can break a line apart.

#include "tests/e2e/driver/Command.h"

#include <string>
#include <string_view>

namespace quarn::uidrive {

Words SplitWords(std::string_view line);
std::string Escaped(std::string_view text);

// Whole number in decimal, or in hexadecimal after 0x.
long ToNumber(const std::string& word);

// Whether a text matches a pattern in which "*" stands for any run of characters.
bool Matches(std::string_view text, std::string_view pattern);

// The same letters without regard to case and without the "&" of access keys, as a user reads a caption.
std::string Caption(std::string_view text);

std::string Joined(const Lines& parts, std::string_view separator);

} // namespace quarn::uidrive
