#include "support/MailLink.h"

#include "core/modStringHelper.h"

#include <string_view>
#include <vector>

namespace quarn {

namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string EscapedBody(std::string body) {
    ReplaceAll(body, " ", "%20");
    ReplaceAll(body, "&", "%26");
    ReplaceAll(body, "\r\n", "%0D%0A");
    return body;
}

std::string NoteOf(std::size_t lines, std::size_t allLines) {
    return "(The newest " + std::to_string(lines) + " of " + std::to_string(allLines) +
           " lines, as a message holds no more.)\r\n";
}

// Each line includes its end.
std::vector<std::string> LinesOf(const std::string& log) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < log.size();) {
        const std::size_t end = log.find(LineEnd, start);
        const std::size_t next = end == std::string::npos ? log.size() : end + LineEnd.size();
        lines.push_back(log.substr(start, next - start));
        start = next;
    }
    return lines;
}

} // namespace

std::string MailLink(const std::string& recipient, const std::string& subject, const std::string& body) {
    std::string link = "MailTo:" + recipient;
    if (!subject.empty())
        link += "&Subject=" + subject;
    if (!body.empty())
        link += "&Body=" + EscapedBody(body);
    return link;
}

std::string NewestLines(const std::string& log, std::size_t room) {
    if (EscapedBody(log).size() <= room)
        return log;
    const std::vector<std::string> lines = LinesOf(log);
    std::size_t taken = EscapedBody(NoteOf(lines.size(), lines.size())).size();
    std::string newest;
    std::size_t count = 0;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        taken += EscapedBody(*line).size();
        if (taken > room)
            break;
        newest.insert(0, *line);
        ++count;
    }
    return NoteOf(count, lines.size()) + newest;
}

} // namespace quarn
