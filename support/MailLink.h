#pragma once

#include <string>

namespace quarn {

// A "MailTo:" link that opens the user's mail program with a prepared message. The subject stands in it as
// it is; in the body blanks, "&" and CR LF pairs are escaped. An empty subject or body is left out. All
// parts are joined by "&", the first included.
std::string MailLink(const std::string& recipient, const std::string& subject, const std::string& body);

} // namespace quarn
