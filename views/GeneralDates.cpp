#include "views/GeneralDates.h"

#include "base/Conversions.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quarn {

namespace {

// All numbers of a sample differ, so that each identifies its field.
constexpr CalendarTime Afternoon = {1987, 12, 31, 23, 46, 59};
constexpr CalendarTime Morning = {1987, 12, 31, 11, 46, 59};
constexpr int HoursOfAHalf = 12;
constexpr int FirstYear = 1900;

// Consumes the digits, or the text up to the next digit, at the start.
std::string_view TakeRun(std::string_view& text) {
    const bool digits = !text.empty() && IsDigit(text.front());
    const auto end =
        std::find_if(text.begin(), text.end(), [&](char character) { return IsDigit(character) != digits; });
    const std::string_view run = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(run.size());
    return run;
}

// Consumes a number of exactly this many digits at the start; nothing if it has fewer or more.
std::optional<int> TakeNumber(std::string_view& text, std::size_t fewest, std::size_t most) {
    int number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && IsDigit(text[digits]); ++digits) {
        if (digits == most)
            return std::nullopt;
        number = number * 10 + (text[digits] - '0');
    }
    text.remove_prefix(digits);
    return digits >= fewest ? std::optional(number) : std::nullopt;
}

// Character by character, because they are few.
bool TakeText(std::string_view& text, std::string_view expected) {
    if (text.size() < expected.size())
        return false;
    for (std::size_t i = 0; i < expected.size(); ++i)
        if (text[i] != expected[i])
            return false;
    text.remove_prefix(expected.size());
    return true;
}

bool Exists(const CalendarTime& c) {
    constexpr std::array<int, 12> Days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (c.year < FirstYear || c.month < 1 || c.month > 12 || c.day < 1)
        return false;
    const bool isLeapYear = (c.year % 4 == 0 && c.year % 100 != 0) || c.year % 400 == 0;
    const int days = Days[static_cast<std::size_t>(c.month) - 1] + (isLeapYear && c.month == 2 ? 1 : 0);
    return c.day <= days && c.hour < 24 && c.minute < 60 && c.second < 60;
}

int CalendarTime::*FieldOfSample(int number) {
    for (const auto field : {&CalendarTime::year, &CalendarTime::month, &CalendarTime::day,
                             &CalendarTime::hour, &CalendarTime::minute, &CalendarTime::second})
        if (number == Afternoon.*field)
            return field;
    return number == Morning.hour ? &CalendarTime::hour : nullptr;
}

} // namespace

GeneralDates::GeneralDates(const LocaleText& locale) : locale_(locale) {
    LearnLayout();
    if (!ReadsWhatTheLocaleWrites())
        layout_.clear();
}

void GeneralDates::LearnLayout() {
    morningSample_ = locale_.FromDate(DateTime::From(Morning));
    afternoonSample_ = locale_.FromDate(DateTime::From(Afternoon));
    std::string_view morning = morningSample_;
    std::string_view afternoon = afternoonSample_;
    while (!afternoon.empty()) {
        const Part part = {nullptr, TakeRun(morning), TakeRun(afternoon)};
        layout_.push_back(part);
        if (IsDigit(part.afternoon.front()))
            layout_.back().number = FieldOfSample(std::stoi(std::string(part.afternoon)));
        else
            halvesOfTheDay_ = halvesOfTheDay_ || part.morning != part.afternoon;
    }
}

// Numbers with and without leading zeros, and both ends of the two halves of the day.
bool GeneralDates::ReadsWhatTheLocaleWrites() const {
    constexpr CalendarTime Dates[] = {Morning,
                                      Afternoon,
                                      {2031, 1, 2, 3, 4, 5},
                                      {2024, 2, 29, 12, 0, 1},
                                      {1999, 10, 11, 0, 30, 0},
                                      {2012, 8, 7, 13, 0, 0}};
    return std::all_of(std::begin(Dates), std::end(Dates), [&](const CalendarTime& calendar) {
        const DateTime date = DateTime::From(calendar);
        const std::string text = locale_.FromDate(date);
        return ReadInLayout(text) == date && locale_.ToDate(text) == date;
    });
}

std::optional<DateTime> GeneralDates::ReadInLayout(std::string_view text) const {
    CalendarTime c;
    bool afternoon = false;
    for (const Part& part : layout_) {
        if (part.number != nullptr) {
            const bool isYear = part.number == &CalendarTime::year;
            const std::optional<int> number = isYear ? TakeNumber(text, 4, 4) : TakeNumber(text, 1, 2);
            if (!number)
                return std::nullopt;
            c.*part.number = *number;
        } else if (!TakeText(text, part.morning)) {
            afternoon = TakeText(text, part.afternoon);
            if (!afternoon)
                return std::nullopt;
        }
    }
    if (halvesOfTheDay_) {
        if (c.hour < 1 || c.hour > HoursOfAHalf)
            return std::nullopt;
        c.hour = c.hour % HoursOfAHalf + (afternoon ? HoursOfAHalf : 0);
    }
    const bool isDate = text.empty() && !layout_.empty() && Exists(c);
    return isDate ? std::optional(DateTime::From(c)) : std::nullopt;
}

DateTime GeneralDates::Read(const std::string& text) {
    if (const std::optional<DateTime> date = ReadInLayout(text))
        return *date;
    if (lastText_.empty() || text != lastText_) {
        lastDate_ = locale_.ToDate(text);
        lastText_ = text;
    }
    return lastDate_;
}

} // namespace quarn
