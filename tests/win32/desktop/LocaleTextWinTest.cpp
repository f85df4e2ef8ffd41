#include "win32/desktop/LocaleTextWin.h"

#include "tests/fakes/Errors.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "views/GeneralDates.h"
#include "win32/Handles.h"

#include <cmath>
#include <cstdint>
#include <cwchar>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

// The expected texts are those of the test's locale.
class LocaleTextWinTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (GetUserDefaultLCID() != MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT))
            GTEST_SKIP() << "the user's locale is not that of the United States";
    }
    LocaleTextWin locale;
};

TEST_F(LocaleTextWinTest, RecognisesNumbers) {
    for (const char* text : {"5", "1.2", " -3 ", "1,000", ".5", "5.", "1e3", "1.5E-2", "+7", "0", "$5"})
        EXPECT_TRUE(locale.IsNumeric(text)) << text;
    for (const char* text : {"", " ", "-", "1.2.3", "127.0.0.1", "e3", "abc", "12x", ".", "27a", "1 2 3x",
                             "\xE4", "--1", "1..2", "play.example.org"})
        EXPECT_FALSE(locale.IsNumeric(text)) << text;
}

TEST_F(LocaleTextWinTest, ConvertsNumbers) {
    const struct {
        const char* text;
        double number;
        std::int32_t rounded;
    } good[] = {
        {"0", 0, 0},
        {" 42 ", 42, 42},
        {"-7", -7, -7},
        {"1,234", 1234, 1234},
        {"2.5", 2.5, 2},
        {"3.5", 3.5, 4},
        {"-2.5", -2.5, -2},
        {"1e3", 1000, 1000},
        {"2147483647", 2147483647, 2147483647},
        {"-2147483648", -2147483648.0, -2147483647 - 1},
    };
    for (const auto& line : good) {
        EXPECT_DOUBLE_EQ(locale.ToDouble(line.text), line.number) << line.text;
        EXPECT_EQ(locale.ToLong(line.text), line.rounded) << line.text;
    }
}

TEST_F(LocaleTextWinTest, RefusesTextsAndNumbersOutOfRange) {
    for (const char* text :
         {"", " ", "-", ".", "abc", "12x", "1.2.3", "127.0.0.1", "0x", "1e", "e1", "\xE4"}) {
        EXPECT_EQ(ErrorOf([&] { locale.ToLong(text); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(ErrorOf([&] { locale.ToDouble(text); }), ErrorNumber::TypeMismatch) << text;
    }
    for (const char* text : {"2147483648", "-2147483649", "99999999999", "1e10"})
        EXPECT_EQ(ErrorOf([&] { locale.ToLong(text); }), ErrorNumber::Overflow) << text;
}

TEST_F(LocaleTextWinTest, WritesAndReadsGeneralDates) {
    const struct {
        CalendarTime calendar;
        const char* text;
    } table[] = {
        {{2026, 11, 21, 8, 5, 0}, "11/21/2026 8:05:00 AM"},
        {{2026, 1, 2, 0, 0, 1}, "1/2/2026 12:00:01 AM"},
        {{2026, 1, 2, 12, 0, 0}, "1/2/2026 12:00:00 PM"},
        {{2026, 1, 2, 23, 59, 59}, "1/2/2026 11:59:59 PM"},
        {{2024, 2, 29, 0, 0, 0}, "2/29/2024"},
        {{1990, 1, 1, 0, 0, 0}, "1/1/1990"},
        {{1899, 12, 30, 0, 0, 0}, "12:00:00 AM"},
        {{1899, 12, 30, 15, 30, 0}, "3:30:00 PM"},
        {{1899, 12, 29, 6, 0, 0}, "12/29/1899 6:00:00 AM"},
        {{1899, 12, 29, 0, 0, 0}, "12/29/1899"},
        {{9999, 12, 31, 23, 59, 59}, "12/31/9999 11:59:59 PM"},
    };
    for (const auto& line : table) {
        EXPECT_EQ(locale.FromDate(DateTime::From(line.calendar)), line.text);
        EXPECT_EQ(locale.ToDate(line.text), DateTime::From(line.calendar)) << line.text;
    }
}

// The general date of a locale that puts the half of the day in front of the time, in letters that the
// Western code page lacks, and whose dates may have such letters as well.
template<bool LettersInDates>
HRESULT WINAPI KoreanDate(DATE date, LCID, ULONG flags, BSTR* text) {
    SYSTEMTIME time{};
    VariantTimeToSystemTime(date, &time);
    wchar_t buffer[64];
    int length = swprintf(buffer, 64, L"%d.%02d.%02d%ls", time.wYear, time.wMonth, time.wDay,
                          LettersInDates ? L" \u00B7\uC77C" : L"");
    if ((flags & VAR_DATEVALUEONLY) == 0 && date != std::floor(date))
        length += swprintf(buffer + length, 64, L" %ls %d:%02d:%02d",
                           time.wHour < 12 ? L"\uC624\uC804" : L"\uC624\uD6C4", (time.wHour + 11) % 12 + 1,
                           time.wMinute, time.wSecond);
    *text = SysAllocStringLen(buffer, static_cast<UINT>(length));
    return S_OK;
}

TEST_F(LocaleTextWinTest, DatesInLettersThatTheCodePageLacksAreWrittenInNumbers) {
    const ReplacedImport answer(&VarBstrFromDate, &KoreanDate<false>);
    EXPECT_EQ(locale.FromDate(DateTime::From({2026, 7, 1, 20, 5, 0})), "2026.07.01 20:05:00");
    EXPECT_EQ(locale.FromDate(DateTime::From({2026, 7, 1, 0, 0, 1})), "2026.07.01 00:00:01");
    EXPECT_EQ(locale.FromDate(DateTime::From({2026, 7, 1, 0, 0, 0})), "2026.07.01");
}

TEST_F(LocaleTextWinTest, SoAreDaysInSuchLettersAndCanBeReadBack) {
    const ReplacedImport answer(&VarBstrFromDate, &KoreanDate<true>);
    const struct {
        CalendarTime calendar;
        const char* text;
    } table[] = {
        {{2026, 7, 1, 20, 5, 0}, "2026-07-01 20:05:00"},
        {{2026, 7, 1, 0, 0, 0}, "2026-07-01"},
        {{1899, 12, 30, 0, 0, 0}, "00:00:00"},
        {{1899, 12, 30, 15, 30, 0}, "15:30:00"},
        {{1899, 12, 29, 6, 0, 0}, "1899-12-29 06:00:00"},
    };
    for (const auto& line : table) {
        EXPECT_EQ(locale.FromDate(DateTime::From(line.calendar)), line.text);
        EXPECT_EQ(locale.ToDate(line.text), DateTime::From(line.calendar)) << line.text;
    }
}

TEST_F(LocaleTextWinTest, EverySecondOfADaySurvivesTheConversionToADateAndBack) {
    const DateTime day = DateTime::From({2026, 6, 30, 0, 0, 0});
    for (std::int64_t second = 0; second < 86400; second += 997) {
        const DateTime time{day.seconds + second};
        EXPECT_EQ(locale.ToDate(locale.FromDate(time)), time) << second;
    }
}

TEST_F(LocaleTextWinTest, ReadsDatesInOtherForms) {
    for (const char* text : {"2/29/2024", "02/29/2024", "2024-02-29", "February 29, 2024", " 2/29/2024 "})
        EXPECT_EQ(locale.ToDate(text), DateTime::From({2024, 2, 29, 0, 0, 0})) << text;
}

// Counts how often the system had to read a date.
class CountingLocale : public LocaleText {
  public:
    mutable int dates = 0;

    bool IsNumeric(const std::string& text) const override { return system_.IsNumeric(text); }
    double ToDouble(const std::string& text) const override { return system_.ToDouble(text); }
    std::int32_t ToLong(const std::string& text) const override { return system_.ToLong(text); }
    std::string FromDate(DateTime date) const override { return system_.FromDate(date); }
    std::string SortKey(const std::string& text) const override { return system_.SortKey(text); }
    std::string ToUtf8(const std::string& text) const override { return system_.ToUtf8(text); }
    char LowerCase(char character) const override { return system_.LowerCase(character); }
    bool IsLeadByte(char byte) const override { return system_.IsLeadByte(byte); }
    DateTime ToDate(const std::string& text) const override {
        ++dates;
        return system_.ToDate(text);
    }

  private:
    LocaleTextWin system_;
};

TEST_F(LocaleTextWinTest, LowersLettersOfTheCodePage) {
    const struct {
        char character;
        char lower;
    } cases[] = {{'A', 'a'},       {'Z', 'z'},       {'a', 'a'},       {'@', '@'},       {'[', '['},
                 {'\0', '\0'},     {'1', '1'},       {'\xC4', '\xE4'}, {'\xE4', '\xE4'}, {'\xD7', '\xD7'},
                 {'\xDF', '\xDF'}, {'\x80', '\x80'}, {'\xFF', '\xFF'}};
    for (const auto& c : cases)
        EXPECT_EQ(locale.LowerCase(c.character), c.lower) << static_cast<int>(c.character);
}

UINT WINAPI Utf8IsTheCodePage() {
    return CP_UTF8;
}

TEST_F(LocaleTextWinTest, LeavesThePartsOfCharactersAlone) {
    const ReplacedImport codePage(&GetACP, &Utf8IsTheCodePage);
    for (const char part : {'\xC3', '\x84', '\xC4', '\xE2', '\xFF'})
        EXPECT_EQ(locale.LowerCase(part), part) << static_cast<int>(part);
    EXPECT_EQ(locale.LowerCase('A'), 'a');
}

TEST_F(LocaleTextWinTest, GeneralDatesReadsDatesLikeTheLocale) {
    const CountingLocale counting;
    GeneralDates dates(counting);
    const int before = counting.dates;
    const std::int64_t first = DateTime::From({1990, 1, 1, 0, 0, 1}).seconds;
    constexpr std::int64_t Step = 86400 * 3 + 3600 + 61;
    for (std::int64_t i = 0; i < 5000; ++i) {
        const std::string text = locale.FromDate(DateTime{first + i * Step});
        EXPECT_EQ(dates.Read(text), locale.ToDate(text)) << text;
    }
    EXPECT_EQ(counting.dates, before);
}

TEST_F(LocaleTextWinTest, RefusesTextThatIsNotADate) {
    for (const char* text : {"", " ", "abc", "2/30/2026", "99/99/9999", "1/2/2026x", "1/2/2026 25:00",
                             "never", "\xE4", "1/2/3/4/5", "8:60:00 AM", "27015"})
        EXPECT_NE(ErrorOf([&] { locale.ToDate(text); }), NoError) << text;
    EXPECT_EQ(ErrorOf([&] { locale.ToDate(""); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([&] { locale.ToDate("never"); }), ErrorNumber::TypeMismatch);
}

TEST_F(LocaleTextWinTest, RefusesADateOutsideTheCalendar) {
    EXPECT_NE(ErrorOf([&] { locale.FromDate({std::int64_t{3000000} * 86400}); }), NoError);
    EXPECT_NE(ErrorOf([&] { locale.FromDate({std::int64_t{-3000000} * 86400}); }), NoError);
}

TEST_F(LocaleTextWinTest, SortKeysHaveTheAlphabetsOrder) {
    // Each text sorts after the previous one.
    const std::vector<const char*> ordered = {"", "1", "10", "2", "a", "\xE4rger", "b", "Ba", "bb", "C", "z"};
    for (std::size_t i = 1; i < ordered.size(); ++i)
        EXPECT_LT(locale.SortKey(ordered[i - 1]), locale.SortKey(ordered[i]))
            << ordered[i - 1] << " before " << ordered[i];
}

TEST_F(LocaleTextWinTest, SortKeysIgnoreCaseAndNothingElse) {
    EXPECT_EQ(locale.SortKey("Arena Of War"), locale.SortKey("ARENA of wAR"));
    EXPECT_EQ(locale.SortKey("\xC4rger"), locale.SortKey("\xE4rger"));
    for (const char* other : {"arena of wa", "arena of war ", "arena of warz", "urena of war", ""})
        EXPECT_NE(locale.SortKey("arena of war"), locale.SortKey(other)) << other;
}

TEST_F(LocaleTextWinTest, ALongTextHasASortKey) {
    EXPECT_LT(locale.SortKey(std::string(100'000, 'a')), locale.SortKey(std::string(100'001, 'a')));
}

} // namespace
} // namespace quarn
