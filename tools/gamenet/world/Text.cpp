#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace quarn::gamenet {
namespace {

constexpr std::string_view Blanks = " \t\r\n";

// In the order in which a reader must decode them: "$10" before "$1".
const std::array<std::pair<std::string, std::string>, 5> IniEscapes = {{
    {"$255", std::string(1, '\xFF')},
    {"$32", " "},
    {"$10", "\n"},
    {"$1", "\x01"},
    {"$0", std::string(1, '\0')},
}};

char Lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

template<class Number>
bool ParsesWhole(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// The length of the colour code at `at`; 0 if there is none.
std::size_t ColourCodeLength(std::string_view text, std::size_t at) {
    if (text[at] != '^' || at + 1 == text.size())
        return 0;
    const char code = Lowered(text[at + 1]);
    if (code == 'x')
        return std::min<std::size_t>(8, text.size() - at);
    return code == 'n' || code == 'b' || (code >= '0' && code <= '9') ? 2 : 0;
}

} // namespace

std::string Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(Blanks) - first + 1));
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = Lowered(c);
    return result;
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view start) {
    return LowerCase(text.substr(0, start.size())) == LowerCase(start);
}

std::vector<std::string> SplitText(std::string_view text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::vector<std::string> ParseList(std::string_view text) {
    std::vector<std::string> parts = SplitText(text, ',');
    for (std::string& part : parts) {
        part = Trimmed(part);
        if (part.empty())
            throw BadSetting("an empty entry in the list: " + std::string(text));
    }
    return parts;
}

long long ParseWhole(std::string_view text, long long low, long long high) {
    long long number = 0;
    if (!ParsesWhole(text, number))
        throw BadSetting("not a whole number: " + std::string(text));
    if (number < low || number > high)
        throw BadSetting("not from " + std::to_string(low) + " to " + std::to_string(high) + ": " +
                         std::string(text));
    return number;
}

double ParseNumber(std::string_view text, double low, double high) {
    double number = 0;
    if (!ParsesWhole(text, number))
        throw BadSetting("not a number: " + std::string(text));
    if (!(number >= low && number <= high))
        throw BadSetting("out of range: " + std::string(text));
    return number;
}

std::string WithoutColours(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t code = ColourCodeLength(text, at);
        if (code == 0 && text[at] != '"')
            result += text[at];
        at += code == 0 ? 1 : code;
    }
    return result;
}

std::string TruthEscaped(std::string_view text) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 32 && code <= 126 && c != '\\' && c != '|') {
            result += c;
            continue;
        }
        result += "\\x";
        result += Digits[code >> 4];
        result += Digits[code & 15];
    }
    return result;
}

std::string IniUnescaped(std::string_view text) {
    std::string result(text);
    for (const auto& [escape, byte] : IniEscapes)
        ReplaceAll(result, escape, byte);
    return result;
}

std::string IniEscaped(std::string_view bytes) {
    std::string result;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const bool atEdge = at == 0 || at + 1 == bytes.size();
        std::string piece(1, bytes[at]);
        for (const auto& [escape, byte] : IniEscapes)
            if (piece == byte && (piece != " " || atEdge)) {
                piece = escape;
                break;
            }
        result += piece;
    }
    if (IniUnescaped(result) != bytes)
        throw BadSetting("bytes that the escapes of Games.ini cannot express: " + TruthEscaped(bytes));
    return result;
}

} // namespace quarn::gamenet
