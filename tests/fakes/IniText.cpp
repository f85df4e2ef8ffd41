#include "tests/fakes/IniText.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr auto Nowhere = std::string_view::npos;

bool IsBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool SameName(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::string_view> SectionNameOf(std::string_view line) {
    line = Trimmed(line);
    const std::size_t end = line.find(']');
    if (line.empty() || line.front() != '[' || end == Nowhere)
        return std::nullopt;
    return Trimmed(line.substr(1, end - 1));
}

// Iterates over the lines of a text; each keeps its line end.
class Lines {
  public:
    explicit Lines(std::string_view text) : text_(text) {}

    bool Next() {
        position_ = next_;
        if (position_ == text_.size())
            return false;
        const std::size_t end = text_.find('\n', position_);
        next_ = end == Nowhere ? text_.size() : end + 1;
        return true;
    }
    std::string_view Line() const { return text_.substr(position_, next_ - position_); }
    std::size_t Begin() const { return position_; }
    std::size_t End() const { return next_; }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t next_ = 0;
};

struct Place {
    bool sectionFound = false;
    std::size_t sectionEnd = 0; // after the section's last line that is not blank
    bool keyFound = false;
    std::size_t lineBegin = 0; // of the key's line
    std::size_t lineEnd = 0;
};

Place Find(std::string_view text, std::string_view section, std::string_view key) {
    Place place;
    for (Lines lines(text); lines.Next();) {
        const std::string_view line = Trimmed(lines.Line());
        if (const auto name = SectionNameOf(line)) {
            if (place.sectionFound)
                break;
            place.sectionFound = SameName(*name, Trimmed(section));
        }
        if (!place.sectionFound || line.empty())
            continue;
        place.sectionEnd = lines.End();
        const bool isKey = line.front() != '[' && line.front() != ';';
        if (!isKey || !SameName(Trimmed(line.substr(0, line.find('='))), Trimmed(key)))
            continue;
        place.keyFound = true;
        place.lineBegin = lines.Begin();
        place.lineEnd = lines.End();
        break;
    }
    return place;
}

std::string_view LineEndOf(std::string_view line) {
    const std::size_t last = line.find_last_not_of("\r\n");
    return last == Nowhere ? line : line.substr(last + 1);
}

} // namespace

std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key) {
    const Place place = Find(text, section, key);
    if (!place.keyFound)
        return std::nullopt;
    const std::string_view line = text.substr(place.lineBegin, place.lineEnd - place.lineBegin);
    const std::size_t equals = line.find('=');
    std::string_view value = equals == Nowhere ? std::string_view() : Trimmed(line.substr(equals + 1));
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    if (quoted)
        value = value.substr(1, value.size() - 2);
    return std::string(value);
}

std::string WithIniValue(std::string_view text, std::string_view section, std::string_view key,
                         std::string_view value) {
    const Place place = Find(text, section, key);
    std::string entry(key);
    entry.append("=").append(value);

    std::string result(text);
    if (place.keyFound) {
        const std::size_t length = place.lineEnd - place.lineBegin;
        entry += LineEndOf(text.substr(place.lineBegin, length));
        return result.replace(place.lineBegin, length, entry);
    }
    std::size_t position = place.sectionFound ? place.sectionEnd : result.size();
    entry += "\r\n";
    if (!place.sectionFound)
        entry.insert(0, "[" + std::string(section) + "]\r\n");
    if (position > 0 && result[position - 1] != '\n')
        entry.insert(0, "\r\n");
    return result.insert(position, entry);
}

std::string WithoutIniKey(std::string_view text, std::string_view section, std::string_view key) {
    const Place place = Find(text, section, key);
    std::string result(text);
    return place.keyFound ? result.erase(place.lineBegin, place.lineEnd - place.lineBegin) : result;
}

std::int32_t LeadingInteger(std::string_view value) noexcept {
    value = Trimmed(value);
    const bool negative = !value.empty() && value.front() == '-';
    if (negative || (!value.empty() && value.front() == '+'))
        value.remove_prefix(1);
    std::uint32_t number = 0;
    for (const char c : value) {
        if (c < '0' || c > '9')
            break;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return static_cast<std::int32_t>(negative ? 0 - number : number);
}

} // namespace quarn
