#include "tests/e2e/driver/Words.h"

#include <cctype>
#include <cstdlib>

namespace quarn::uidrive {

namespace {

std::string EscapedByte(unsigned char byte) {
    static constexpr char Digits[] = "0123456789abcdef";
    return {'\\', 'x', Digits[byte >> 4], Digits[byte & 15]};
}

} // namespace

Words SplitWords(std::string_view line) {
    Words words;
    bool inWord = false;
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char character = line[at];
        const bool separates = !quoted && (character == ' ' || character == '\t' || character == '\r');
        if (separates) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            inWord = true;
        }
        const char next = at + 1 < line.size() ? line[at + 1] : '\0';
        const bool escape = quoted && character == '\\' && (next == '\\' || next == '"');
        if (escape)
            words.back() += line[++at];
        else if (character == '"')
            quoted = !quoted;
        else
            words.back() += character;
    }
    if (quoted)
        throw Failure("a quote is left open");
    return words;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\\')
            escaped += "\\\\";
        else if (character == '\t')
            escaped += "\\t";
        else if (character == '\n')
            escaped += "\\n";
        else if (character == '\r')
            escaped += "\\r";
        else if (byte < 32 || byte > 126)
            escaped += EscapedByte(byte);
        else
            escaped += character;
    }
    return escaped;
}

long ToNumber(const std::string& word) {
    char* end = nullptr;
    const int base = word.starts_with("0x") ? 16 : 10;
    const long number = std::strtol(word.c_str(), &end, base);
    if (word.empty() || *end != '\0')
        throw Failure("\"" + word + "\" is no number");
    return number;
}

bool Matches(std::string_view text, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos)
        return text == pattern;
    if (!text.starts_with(pattern.substr(0, star)))
        return false;
    const std::string_view rest = pattern.substr(star + 1);
    for (std::size_t at = star; at <= text.size(); ++at) {
        if (Matches(text.substr(at), rest))
            return true;
    }
    return false;
}

std::string Caption(std::string_view text) {
    std::string caption;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool doubled = text[at] == '&' && at + 1 < text.size() && text[at + 1] == '&';
        if (text[at] != '&' || doubled)
            caption += static_cast<char>(std::tolower(static_cast<unsigned char>(text[at])));
        at += doubled;
    }
    return caption;
}

std::string Joined(const Lines& parts, std::string_view separator) {
    std::string joined;
    for (const std::string& part : parts) {
        if (&part != &parts.front())
            joined += separator;
        joined += part;
    }
    return joined;
}

} // namespace quarn::uidrive
