#include "tests/fakes/ClassicLocale.h"

#include "base/RunTimeError.h"
#include "core/modStringHelper.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace quarn {

namespace {

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The number in the notation of the C library; nothing if the text is not a number in this locale.
std::optional<std::string> PlainNumber(const std::string& text, char group, char point) {
    std::string plain;
    bool digits = false;
    bool pointSeen = false;
    std::size_t i = 0;
    const std::string number = Trimmed(text);
    if (i < number.size() && (number[i] == '-' || number[i] == '+'))
        plain += number[i++];
    for (; i < number.size(); ++i) {
        const char c = number[i];
        if (c >= '0' && c <= '9') {
            digits = true;
            plain += c;
        } else if (c == point && !pointSeen) {
            pointSeen = true;
            plain += '.';
        } else if (c != group || !digits || pointSeen) {
            break;
        }
    }
    if (!digits)
        return std::nullopt;
    if (i < number.size() && (number[i] == 'e' || number[i] == 'E')) {
        plain += number[i++];
        if (i < number.size() && (number[i] == '-' || number[i] == '+'))
            plain += number[i++];
        const std::size_t exponent = i;
        while (i < number.size() && number[i] >= '0' && number[i] <= '9')
            plain += number[i++];
        if (i == exponent)
            return std::nullopt;
    }
    return i == number.size() ? std::optional(plain) : std::nullopt;
}

bool IsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

bool IsDay(const CalendarTime& c) {
    constexpr std::array<int, 13> Days = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (c.year < 100 || c.year > 9999 || c.month < 1 || c.month > 12 || c.day < 1)
        return false;
    return c.day <= Days[static_cast<std::size_t>(c.month)] + (c.month == 2 && IsLeapYear(c.year));
}

bool IsTime(const CalendarTime& c) {
    return c.hour >= 0 && c.hour < 24 && c.minute >= 0 && c.minute < 60 && c.second >= 0 && c.second < 60;
}

// Reads h:mm[:ss] and, in English, AM or PM after it.
bool ReadTime(const std::string& text, bool german, CalendarTime& c) {
    int used = 0;
    if (std::sscanf(text.c_str(), "%2d:%2d%n", &c.hour, &c.minute, &used) < 2)
        return false;
    std::string rest = text.substr(static_cast<std::size_t>(used));
    int usedBySeconds = 0;
    if (!rest.empty() && rest[0] == ':' &&
        (std::sscanf(rest.c_str(), ":%2d%n", &c.second, &usedBySeconds) < 1))
        return false;
    rest.erase(0, static_cast<std::size_t>(usedBySeconds));
    if (!german && (rest == " AM" || rest == " PM")) {
        if (c.hour < 1 || c.hour > 12)
            return false;
        c.hour = c.hour % 12 + (rest == " PM" ? 12 : 0);
        rest.clear();
    }
    return rest.empty() && IsTime(c);
}

} // namespace

bool ClassicLocale::IsNumeric(const std::string& text) const {
    return PlainNumber(text, german ? '.' : ',', german ? ',' : '.').has_value();
}

double ClassicLocale::ToDouble(const std::string& text) const {
    const auto plain = PlainNumber(text, german ? '.' : ',', german ? ',' : '.');
    if (!plain)
        throw RunTimeError(ErrorNumber::TypeMismatch);
    const double value = std::strtod(plain->c_str(), nullptr);
    if (!std::isfinite(value))
        throw RunTimeError(ErrorNumber::Overflow);
    return value;
}

std::int32_t ClassicLocale::ToLong(const std::string& text) const {
    const double value = std::nearbyint(ToDouble(text));
    if (value < -2147483648.0 || value > 2147483647.0)
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(value);
}

std::string ClassicLocale::FromDate(DateTime date) const {
    const CalendarTime c = date.Calendar();
    std::array<char, 80> day{};
    std::array<char, 80> time{};
    if (german) {
        std::snprintf(day.data(), day.size(), "%02d.%02d.%04d", c.day, c.month, c.year);
        std::snprintf(time.data(), time.size(), "%02d:%02d:%02d", c.hour, c.minute, c.second);
    } else {
        std::snprintf(day.data(), day.size(), "%d/%d/%04d", c.month, c.day, c.year);
        std::snprintf(time.data(), time.size(), "%d:%02d:%02d %s", (c.hour + 11) % 12 + 1, c.minute, c.second,
                      c.hour < 12 ? "AM" : "PM");
    }
    const bool onZeroDay = c.year == 1899 && c.month == 12 && c.day == 30;
    const bool midnight = c.hour == 0 && c.minute == 0 && c.second == 0;
    if (onZeroDay)
        return time.data();
    return midnight ? std::string(day.data()) : std::string(day.data()) + " " + time.data();
}

DateTime ClassicLocale::ToDate(const std::string& text) const {
    CalendarTime c;
    const std::string trimmed = Trimmed(text);
    std::string rest = trimmed;
    int used = 0;
    const int fields = german
                           ? std::sscanf(trimmed.c_str(), "%2d.%2d.%4d%n", &c.day, &c.month, &c.year, &used)
                           : std::sscanf(trimmed.c_str(), "%2d/%2d/%4d%n", &c.month, &c.day, &c.year, &used);
    if (fields == 3) {
        if (!IsDay(c))
            throw RunTimeError(ErrorNumber::TypeMismatch);
        rest = trimmed.substr(static_cast<std::size_t>(used));
        if (rest.empty())
            return DateTime::From(c);
        if (rest[0] != ' ')
            throw RunTimeError(ErrorNumber::TypeMismatch);
        rest = Trimmed(rest);
    } else {
        c = CalendarTime{};
    }
    if (!ReadTime(rest, german, c))
        throw RunTimeError(ErrorNumber::TypeMismatch);
    return DateTime::From(c);
}

std::string ClassicLocale::SortKey(const std::string& text) const {
    std::string key = text;
    for (char& c : key) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return key;
}

std::string ClassicLocale::ToUtf8(const std::string& text) const {
    // The codes 80 to 9F of code page 1252; those that it leaves free are control characters.
    constexpr std::array<char16_t, 32> Specials = {
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const unsigned code = byte >= 0x80 && byte <= 0x9F ? Specials[byte - 0x80U] : byte;
        if (code < 0x80) {
            utf8 += c;
        } else if (code < 0x800) {
            utf8 += static_cast<char>(0xC0 | (code >> 6));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | (code >> 12));
            utf8 += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return utf8;
}

char ClassicLocale::LowerCase(char character) const {
    return quarn::LowerCase(character);
}

bool ClassicLocale::IsLeadByte(char byte) const {
    const auto code = static_cast<unsigned char>(byte);
    return japaneseCodePage && ((code >= 0x81 && code <= 0x9F) || (code >= 0xE0 && code <= 0xFC));
}

} // namespace quarn
