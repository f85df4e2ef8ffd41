#include "base/DateTime.h"

#include <cstdio>

namespace quarn {

namespace {

constexpr std::int64_t SecondsPerDay = 86400;

// Days from 1970-01-01 to a day of the proleptic Gregorian calendar. A year is counted from March, so that
// the leap day is its last; 400 years (an era) always have 146,097 days.
constexpr std::int64_t DaysFromCivil(std::int64_t year, int month, int day) noexcept {
    year -= month <= 2;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

constexpr std::int64_t ZeroDay = DaysFromCivil(1899, 12, 30);
static_assert(ZeroDay == -25569);

} // namespace

DateTime DateTime::From(const CalendarTime& c) noexcept {
    const std::int64_t days = DaysFromCivil(c.year, c.month, c.day) - ZeroDay;
    return {days * SecondsPerDay + c.hour * 3600LL + c.minute * 60LL + c.second};
}

CalendarTime DateTime::Calendar() const noexcept {
    std::int64_t days = seconds / SecondsPerDay;
    std::int64_t rest = seconds % SecondsPerDay;
    if (rest < 0) {
        rest += SecondsPerDay;
        --days;
    }
    const std::int64_t sinceEraZero = days + ZeroDay + 719468;
    const std::int64_t era = (sinceEraZero >= 0 ? sinceEraZero : sinceEraZero - 146096) / 146097;
    const std::int64_t dayOfEra = sinceEraZero - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthIndex = (5 * dayOfYear + 2) / 153;

    CalendarTime c;
    c.day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
    c.month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
    c.year = static_cast<int>(yearOfEra + era * 400 + (c.month <= 2));
    c.hour = static_cast<int>(rest / 3600);
    c.minute = static_cast<int>(rest / 60 % 60);
    c.second = static_cast<int>(rest % 60);
    return c;
}

std::string LogDateText(DateTime time) {
    const CalendarTime c = time.Calendar();
    char text[80];
    std::snprintf(text, sizeof text, "%02d/%02d/%02d %02d:%02d:%02d", c.month, c.day, c.year % 100, c.hour,
                  c.minute, c.second);
    return text;
}

std::string SortableDateText(DateTime time) {
    const CalendarTime c = time.Calendar();
    std::string text(14, '0');
    std::size_t end = text.size();
    for (int number : {c.second, c.minute, c.hour, c.day, c.month, c.year % 100, c.year / 100}) {
        text[--end] = static_cast<char>('0' + number % 10);
        text[--end] = static_cast<char>('0' + number / 10);
    }
    return text;
}

} // namespace quarn
