#pragma once

// A local date and time with a resolution of one second.
//
// Counted in seconds since 1899-12-30 00:00:00, the zero point of the platform's automation dates, so that
// seconds / 86400.0 is such a date. Zero stands for "no date".

#include <compare>
#include <cstdint>
#include <string>

namespace quarn {

struct CalendarTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

struct DateTime {
    std::int64_t seconds = 0;

    static DateTime From(const CalendarTime& calendar) noexcept;
    CalendarTime Calendar() const noexcept;

    bool IsZero() const noexcept { return seconds == 0; }
    auto operator<=>(const DateTime&) const = default;
};

// "mm/dd/yy hh:nn:ss": month/day/two-digit year and 24-hour time, the same in every locale.
std::string LogDateText(DateTime time);

// "YYYYMMDDHhNnSs": 14 digits that sort as the dates do.
std::string SortableDateText(DateTime time);

} // namespace quarn
