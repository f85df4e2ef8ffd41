#pragma once

#include <cstddef>
#include <string>

namespace quarn {

// Windows' shell refuses links of more than 2,083 characters; the limit of some mail programs is a little
// lower.
inline constexpr std::size_t LongestMailLink = 2'000;

// A "MailTo:" link that opens the user's mail program with a prepared message. The subject is inserted as it
// is; in the body blanks, "&" and CR LF pairs are escaped. An empty subject or body is left out. All parts
// are joined by "&", including the first.
std::string MailLink(const std::string& recipient, const std::string& subject, const std::string& body);

// The log, or as many of its newest lines as need at most `room` characters in a link's body, after a first
// line that says how many there are.
std::string NewestLines(const std::string& log, std::size_t room);

} // namespace quarn
