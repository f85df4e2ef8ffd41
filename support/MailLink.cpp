#include "support/MailLink.h"

#include "core/modStringHelper.h"

namespace quarn {

std::string MailLink(const std::string& recipient, const std::string& subject, const std::string& body) {
    std::string link = "MailTo:" + recipient;
    if (!subject.empty())
        link += "&Subject=" + subject;
    if (!body.empty()) {
        std::string escaped = body;
        ReplaceAll(escaped, " ", "%20");
        ReplaceAll(escaped, "&", "%26");
        ReplaceAll(escaped, "\r\n", "%0D%0A");
        link += "&Body=" + escaped;
    }
    return link;
}

} // namespace quarn
