#include "base/DateTime.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(DateTimeTest, CountsSecondsFromTheZeroDay) {
    const struct {
        CalendarTime calendar;
        std::int64_t seconds;
    } cases[] = {
        {{1899, 12, 30, 0, 0, 0}, 0},
        {{1899, 12, 30, 0, 0, 1}, 1},
        {{1899, 12, 31, 0, 0, 0}, 86400},
        {{1899, 12, 29, 23, 59, 59}, -1},
        {{1900, 1, 1, 0, 0, 0}, 2 * 86400},
        {{1900, 2, 28, 0, 0, 0}, 60LL * 86400},
        {{1900, 3, 1, 0, 0, 0}, 61LL * 86400}, // 1900 was not a leap year
        {{1970, 1, 1, 0, 0, 0}, 25569LL * 86400},
        {{1990, 1, 1, 0, 0, 0}, 32874LL * 86400},
        {{2000, 2, 29, 12, 0, 0}, 36585LL * 86400 + 43200},
        {{2026, 11, 21, 8, 5, 0}, 46347LL * 86400 + 29100},
        {{9999, 12, 31, 23, 59, 59}, 2958465LL * 86400 + 86399},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DateTime::From(c.calendar).seconds, c.seconds) << c.calendar.year;
}

TEST(DateTimeTest, ConvertsEveryDayToTheCalendarAndBack) {
    CalendarTime previous = DateTime{-800LL * 365 * 86400}.Calendar();
    for (std::int64_t day = -800 * 365 + 1; day < 500 * 365; ++day) {
        const CalendarTime c = DateTime{day * 86400 + 3661}.Calendar();
        ASSERT_EQ(DateTime::From(c).seconds, day * 86400 + 3661);
        ASSERT_EQ(c.hour * 10000 + c.minute * 100 + c.second, 10101);
        const bool nextDay =
            c.year == previous.year && c.month == previous.month && c.day == previous.day + 1;
        const bool nextMonth = c.year == previous.year && c.month == previous.month + 1 && c.day == 1;
        const bool nextYear =
            c.year == previous.year + 1 && c.month == 1 && c.day == 1 && previous.month == 12;
        ASSERT_TRUE(nextDay || nextMonth || nextYear) << c.year << '-' << c.month << '-' << c.day;
        previous = c;
    }
}

// A damaged file may contain any number of seconds.
TEST(DateTimeTest, ConvertsDatesFarFromThePresent) {
    for (const int years : {-300000, -20000, -4000, -1900, 8000, 300000}) {
        const DateTime time{years * 31556952LL + 7};
        const CalendarTime c = time.Calendar();
        EXPECT_NEAR(c.year, 1900 + years, 1);
        EXPECT_EQ(DateTime::From(c), time) << years;
    }
}

TEST(DateTimeTest, OrdersAsTimeDoes) {
    const DateTime earlier = DateTime::From({2025, 12, 31, 23, 59, 59});
    const DateTime later = DateTime::From({2026, 1, 1, 0, 0, 0});
    EXPECT_LT(earlier, later);
    EXPECT_EQ(later.seconds - earlier.seconds, 1);
    EXPECT_TRUE(DateTime{}.IsZero());
    EXPECT_FALSE(later.IsZero());
}

TEST(DateTimeTest, WritesLogDatesWithLeadingZeros) {
    EXPECT_EQ(LogDateText(DateTime::From({2005, 6, 21, 14, 3, 7})), "06/21/05 14:03:07");
    EXPECT_EQ(LogDateText(DateTime::From({2000, 1, 2, 0, 0, 0})), "01/02/00 00:00:00");
    EXPECT_EQ(LogDateText(DateTime::From({1999, 12, 31, 23, 59, 59})), "12/31/99 23:59:59");
    EXPECT_EQ(LogDateText(DateTime{}), "12/30/99 00:00:00");
}

TEST(DateTimeTest, WritesSortableDatesOfEqualLength) {
    EXPECT_EQ(SortableDateText(DateTime::From({2005, 6, 21, 14, 3, 7})), "20050621140307");
    EXPECT_EQ(SortableDateText(DateTime::From({9999, 12, 31, 23, 59, 59})), "99991231235959");
    EXPECT_EQ(SortableDateText(DateTime{}), "18991230000000");
    EXPECT_EQ(SortableDateText(DateTime::From({999, 1, 1, 0, 0, 0})), "09990101000000");
}

} // namespace
} // namespace quarn
