#include "views/GeneralDates.h"

#include "tests/fakes/ClassicLocale.h"
#include "tests/fakes/Errors.h"

#include <array>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>

namespace quarn {
namespace {

// Counts how often it had to read a date.
class CountingLocale : public ClassicLocale {
  public:
    mutable std::int32_t reads = 0;

    DateTime ToDate(const std::string& text) const override {
        ++reads;
        return ClassicLocale::ToDate(text);
    }
};

// Writes dates in another way, and reads nothing but what the English locale writes.
class ForeignLocale : public CountingLocale {
  public:
    explicit ForeignLocale(std::function<std::string(const CalendarTime&)> write)
        : write_(std::move(write)) {}
    std::string FromDate(DateTime date) const override { return write_(date.Calendar()); }
    DateTime ToDate(const std::string& text) const override {
        ++reads;
        return DateTime{static_cast<std::int64_t>(text.size())};
    }

  private:
    std::function<std::string(const CalendarTime&)> write_;
};

DateTime AnyDate(std::mt19937& random) {
    return DateTime::From({static_cast<int>(1901 + random() % 150), static_cast<int>(1 + random() % 12),
                           static_cast<int>(1 + random() % 28), static_cast<int>(random() % 24),
                           static_cast<int>(random() % 60), static_cast<int>(1 + random() % 59)});
}

TEST(GeneralDates, ReadWhatTheLocaleWritesWithoutAskingIt) {
    for (const bool german : {false, true}) {
        CountingLocale locale;
        locale.german = german;
        GeneralDates dates(locale);
        const std::int32_t before = locale.reads;
        std::mt19937 random(7);
        for (int i = 0; i < 5000; ++i) {
            const DateTime date = AnyDate(random);
            ASSERT_EQ(dates.Read(locale.FromDate(date)), date) << locale.FromDate(date);
        }
        EXPECT_EQ(locale.reads, before);
    }
}

TEST(GeneralDates, ReadEveryTextAsTheLocaleDoes) {
    const std::array<const char*, 40> texts = {"11/21/2026 8:05:00 AM",
                                               "21.11.2026 08:05:00",
                                               "11/21/2026",
                                               "21.11.2026",
                                               "12:00:00 AM",
                                               "00:00:00",
                                               "2/29/2024 12:00:01 PM",
                                               "29.02.2024 12:00:01",
                                               "01/02/2026 08:05:00 AM",
                                               "1.2.2026 8:05:00",
                                               " 11/21/2026 8:05:00 AM ",
                                               "11/21/2026 8:05 AM",
                                               "",
                                               " ",
                                               "never",
                                               "2/29/2026 1:00:00 AM",
                                               "29.02.2026 01:00:00",
                                               "2/30/2024 1:00:00 AM",
                                               "13/1/2026 1:00:00 AM",
                                               "0/1/2026 1:00:00 AM",
                                               "1/0/2026 1:00:00 AM",
                                               "1/32/2026 1:00:00 AM",
                                               "11/21/2026 0:05:00 AM",
                                               "11/21/2026 13:05:00 AM",
                                               "11/21/2026 8:60:00 AM",
                                               "11/21/2026 8:05:60 PM",
                                               "11/21/2026 8:05:00",
                                               "11/21/2026 8:05:00 XM",
                                               "11/21/2026 8:05:00 AMx",
                                               "x11/21/2026 8:05:00 AM",
                                               "11/21/2026 8:05:00  AM",
                                               "11//2026 8:05:00 AM",
                                               "11/21/26 8:05:00 AM",
                                               "11/21/0026 8:05:00 AM",
                                               "11/21/20266 8:05:00 AM",
                                               "111/21/2026 8:05:00 AM",
                                               "21.11.2026 24:00:00",
                                               "21.11.2026 08:05:000",
                                               "32.11.2026 08:05:00",
                                               "21.11.2026 08:05:00 PM"};
    for (const bool german : {false, true}) {
        ClassicLocale locale;
        locale.german = german;
        GeneralDates dates(locale);
        for (const char* text : texts) {
            DateTime expected;
            DateTime read;
            const auto error = ErrorOf([&] { expected = locale.ToDate(text); });
            EXPECT_EQ(ErrorOf([&] { read = dates.Read(text); }), error) << text;
            EXPECT_EQ(read, expected) << text;
        }
    }
}

TEST(GeneralDates, AskForATextThatComesAgainOnlyOnce) {
    CountingLocale locale;
    GeneralDates dates(locale);
    const std::int32_t before = locale.reads;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(dates.Read("12:00:00 AM"), DateTime{});
    EXPECT_EQ(locale.reads, before + 1);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(ErrorOf([&] { dates.Read(""); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(locale.reads, before + 3);
}

TEST(GeneralDates, LeaveWhatTheyDoNotUnderstandToTheLocale) {
    const auto day = [](int first, int second, int year) {
        return std::to_string(first) + "/" + std::to_string(second) + "/" + std::to_string(year);
    };
    const auto time = [](const CalendarTime& c) {
        return " " + std::to_string(c.hour) + ":" + std::to_string(c.minute) + ":" + std::to_string(c.second);
    };
    const std::function<std::string(const CalendarTime&)> writers[] = {
        // A short year; no seconds; years of another era; what the locale itself reads in another way.
        [&](const CalendarTime& c) { return day(c.month, c.day, c.year % 100) + time(c); },
        [&](const CalendarTime& c) { return day(c.month, c.day, c.year) + " " + std::to_string(c.hour); },
        [&](const CalendarTime& c) { return day(c.month, c.day, c.year + 543) + time(c); },
        [&](const CalendarTime& c) { return day(c.day, c.month, c.year) + time(c); },
        [](const CalendarTime&) { return std::string("some day"); },
        [](const CalendarTime&) { return std::string(); },
    };
    for (const auto& write : writers) {
        const ForeignLocale locale(write);
        GeneralDates dates(locale);
        const std::string text = write({2020, 3, 4, 15, 6, 7});
        EXPECT_EQ(dates.Read(text + "x"), DateTime{static_cast<std::int64_t>(text.size()) + 1});
        EXPECT_EQ(dates.Read(text), DateTime{static_cast<std::int64_t>(text.size())}) << text;
    }
}

} // namespace
} // namespace quarn
