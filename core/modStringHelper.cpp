#include "core/modStringHelper.h"

#include <utility>

namespace quarn {

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    if (text.empty())
        return parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
    if (what.empty())
        return;
    std::size_t found = text.find(what);
    if (found == std::string::npos)
        return;
    std::string result;
    std::size_t copied = 0;
    for (; found != std::string::npos; found = text.find(what, copied)) {
        result.append(text, copied, found - copied).append(with);
        copied = found + what.size();
    }
    result.append(text, copied);
    text = std::move(result);
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& character : lower)
        character = LowerCase(character);
    return lower;
}

} // namespace quarn
