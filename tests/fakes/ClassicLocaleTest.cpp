#include "tests/fakes/ClassicLocale.h"
#include "base/RunTimeError.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

TEST(ClassicLocale, TellsNumbersOfTheEnglishLocale) {
    const ClassicLocale locale;
    for (const char* text : {"5", "1.2", " -3 ", "1,000", "1,2,3", ".5", "5.", "1e3", "1.5E-2"})
        EXPECT_TRUE(locale.IsNumeric(text)) << text;
    for (const char* text :
         {"", " ", "-", "1.2.3", "127.0.0.1", "1 2", "e3", "1e", "1e+", "abc", "12x", ".", ",5", "1.5,0"})
        EXPECT_FALSE(locale.IsNumeric(text)) << text;
}

TEST(ClassicLocale, TakesPointsForGroupingInTheGermanLocale) {
    ClassicLocale locale;
    locale.german = true;
    for (const char* text : {"1.2.3", "10.0.300.1", "1,5", "1.000,25"})
        EXPECT_TRUE(locale.IsNumeric(text)) << text;
    for (const char* text : {"1,2,3", "1,5.0", ".5", "a.b"})
        EXPECT_FALSE(locale.IsNumeric(text)) << text;
    EXPECT_EQ(locale.ToLong("1.2.3"), 123);
    EXPECT_DOUBLE_EQ(locale.ToDouble("1,5"), 1.5);
}

TEST(ClassicLocale, RoundsAndChecksTheRange) {
    const ClassicLocale locale;
    EXPECT_EQ(locale.ToLong("2.5"), 2);
    EXPECT_EQ(locale.ToLong("3.5"), 4);
    EXPECT_EQ(locale.ToLong("1,234"), 1234);
    EXPECT_EQ(locale.ToLong("2147483647"), 2147483647);
    EXPECT_THROW(locale.ToLong("2147483648"), RunTimeError);
    EXPECT_THROW(locale.ToLong("abc"), RunTimeError);
    EXPECT_THROW(locale.ToDouble("1e999"), RunTimeError);
}

TEST(ClassicLocale, WritesAndReadsGeneralDates) {
    const struct {
        CalendarTime calendar;
        const char* english;
        const char* german;
    } cases[] = {
        {{2026, 11, 21, 8, 5, 0}, "11/21/2026 8:05:00 AM", "21.11.2026 08:05:00"},
        {{2026, 1, 2, 0, 0, 1}, "1/2/2026 12:00:01 AM", "02.01.2026 00:00:01"},
        {{2026, 1, 2, 12, 0, 0}, "1/2/2026 12:00:00 PM", "02.01.2026 12:00:00"},
        {{2026, 1, 2, 23, 59, 59}, "1/2/2026 11:59:59 PM", "02.01.2026 23:59:59"},
        {{2024, 2, 29, 0, 0, 0}, "2/29/2024", "29.02.2024"},
        {{1899, 12, 30, 0, 0, 0}, "12:00:00 AM", "00:00:00"},
    };
    ClassicLocale german;
    german.german = true;
    for (const auto& c : cases) {
        const DateTime date = DateTime::From(c.calendar);
        EXPECT_EQ(ClassicLocale().FromDate(date), c.english);
        EXPECT_EQ(german.FromDate(date), c.german);
        EXPECT_EQ(ClassicLocale().ToDate(c.english), date) << c.english;
        EXPECT_EQ(german.ToDate(c.german), date) << c.german;
    }
}

TEST(ClassicLocale, RefusesWhatIsNoDate) {
    for (const char* text :
         {"", " ", "abc", "13/1/2026", "2/30/2026", "1/0/2026", "1/2/2026x", "1/2/2026 25:00",
          "1/2/2026 8:60:00 AM", "13:00:00 PM", "8:05:00 XM", "8:", "8:05:", "21.11.2026"})
        EXPECT_THROW(ClassicLocale().ToDate(text), RunTimeError) << text;
}

TEST(ClassicLocale, SortsWithoutCase) {
    EXPECT_EQ(ClassicLocale().SortKey("aBC\xC4"), "abc\xC4");
}

} // namespace
} // namespace quarn
