#include "core/modCommonSubs.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace quarn {
namespace {

using namespace std::string_literals;

class modCommonSubsExtractStringTest : public ::testing::Test {
  protected:
    FakeDesktop fake;
    clsAppLog log{fake.desktop, "C:\\Quarn\\"};
};

TEST_F(modCommonSubsExtractStringTest, ReturnsTheFieldBeforeTheSeparator) {
    const struct {
        std::string text;
        std::string separator;
        std::string field;
        std::string rest;
    } cases[] = {
        {"a\\b", "\\", "a", "b"},
        {"\\a\\b", "\\", "\\a", "b"}, // one at the beginning is not found
        {"\\\\a", "\\", "\\", "a"},
        {"a\\\\b", "\\", "a", "\\b"},
        {"a\\", "\\", "a", ""},
        {"name\\map\\x", "\\", "name", "map\\x"},
        {"a\0b"s, "\0"s, "a", "b"},
        {"ab\0\1\0cd"s, "\0\1\0"s, "ab", "\1\0cd"s}, // the rest of a long separator stays
        {"a\r\nb", "\r\n", "a", "\nb"},
        {"\xFF\xFEz", "\xFE", "\xFF", "z"},
        {"aXbxc", "x", "aXb", "c"},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(ExtractString(log, text, c.separator), c.field) << c.text;
        EXPECT_EQ(text, c.rest) << c.text;
    }
    EXPECT_EQ(log.HistoryLog(), "");
}

TEST_F(modCommonSubsExtractStringTest, WithoutTheSeparatorLogsAndLeavesTheText) {
    const struct {
        std::string text;
        std::string separator;
    } cases[] = {
        {"", "\\"},       {"a", "\\"},    {"ab", "\\"}, {"\\", "\\"},   {"\\ab", "\\"},   {"abc", "abc"},
        {"aab", "ab\1"s}, {"xab", "abc"}, {"abX", "x"}, {"\0"s, "\0"s}, {"\0\1"s, "\0"s}, {"a\0"s, "\0\1"s},
    };
    std::size_t failures = 0;
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(ExtractString(log, text, c.separator), "") << c.text;
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(LoggedEntries(log.HistoryLog()).size(), ++failures);
    }
    EXPECT_EQ(log.ErrorCount(), 0); // datagrams cause it
    EXPECT_TRUE(log.HistoryLog().starts_with(
        "modCommonSubs;ExtractString;11/21/26 08:05:00.000;5;Invalid procedure call or argument\r\n"));
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST(modCommonSubsTakeLeftTest, TakesCharactersOffALongerText) {
    std::string text = "abcdef";
    EXPECT_EQ(TakeLeft(text, 4), "abcd");
    EXPECT_EQ(text, "ef");
    EXPECT_EQ(TakeLeft(text, 0), "");
    EXPECT_EQ(text, "ef");
    std::string bytes = "\0\xFFz"s;
    EXPECT_EQ(TakeLeft(bytes, 2), "\0\xFF"s);
    EXPECT_EQ(bytes, "z");
}

TEST(modCommonSubsTakeLeftTest, LeavesATextThatIsNoLonger) {
    for (const char* original : {"abcd", "abc", "a", ""}) {
        std::string text = original;
        EXPECT_EQ(TakeLeft(text, 4), original);
        EXPECT_EQ(text, original);
    }
}

TEST(modCommonSubsTakeLeftTest, RefusesANegativeCount) {
    std::string text = "abc";
    EXPECT_EQ(ErrorOf([&] { TakeLeft(text, -1); }), ErrorNumber::InvalidProcedureCall);
    EXPECT_EQ(text, "abc");
}

class modCommonSubsGameLookUpTest : public ::testing::Test {
  protected:
    modCommonSubsGameLookUpTest() {
        program.GameNum = 3;
        program.Games.Reset(3);
        program.Games[1].GameShort = "arena";
        program.Games[1].Engine = "q3";
        program.Games[2].GameShort = "same";
        program.Games[2].Engine = "d3";
        program.Games[3].GameShort = "same";
        program.Games[3].Engine = "hl";
    }
    ProgramState program;
};

TEST_F(modCommonSubsGameLookUpTest, FindsTheFirstGameOfAShortName) {
    EXPECT_EQ(GameIndexOfShort(program, "arena"), 1);
    EXPECT_EQ(GameIndexOfShort(program, "same"), 2);
    EXPECT_EQ(EngineOfShort(program, "arena"), "q3");
    EXPECT_EQ(EngineOfShort(program, "same"), "d3");
}

TEST_F(modCommonSubsGameLookUpTest, FindsNothingElse) {
    for (const char* gameShort : {"", "Arena", "ARENA", "aren", "arena ", " arena", "arenas", "q3", "fav1"}) {
        EXPECT_EQ(GameIndexOfShort(program, gameShort), 0) << gameShort;
        EXPECT_EQ(EngineOfShort(program, gameShort), "") << gameShort;
    }
}

TEST_F(modCommonSubsGameLookUpTest, AServersOwnGameComesBeforeThatOfTheList) {
    const struct {
        const char* list;
        std::int32_t own;
        std::int32_t game;
    } cases[] = {{"arena", 0, 1}, {"same", 0, 2}, {"fav1", 0, 0},
                 {"", 0, 0},      {"fav1", 3, 3}, {"arena", 2, 2}};
    for (const auto& c : cases) {
        ServerRecord server;
        program.CurrentGame = c.list;
        server.Game = c.own;
        EXPECT_EQ(GameIndexOf(program, server), c.game) << c.list;
    }
}

TEST_F(modCommonSubsGameLookUpTest, FindsNothingWithoutGames) {
    const ProgramState empty;
    EXPECT_EQ(GameIndexOfShort(empty, ""), 0);
    EXPECT_EQ(EngineOfShort(program, ""), "");
}

TEST(modCommonSubsListFileDatesTest, AreSecondsSince1900) {
    const struct {
        CalendarTime calendar;
        const char* seconds;
    } cases[] = {
        {{1990, 1, 1, 0, 0, 0}, "2840140800"},      {{1990, 1, 1, 0, 0, 1}, "2840140801"},
        {{1989, 12, 31, 23, 59, 59}, "2840140799"}, {{2026, 11, 21, 8, 5, 0}, "4004237100"},
        {{2000, 2, 29, 12, 0, 0}, "3160814400"},    {{1922, 1, 1, 0, 0, 0}, "694224000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DateToSeconds(DateTime::From(c.calendar)), c.seconds);
    EXPECT_EQ(DateToSeconds(DateTime{}), "");
}

TEST(modCommonSubsListFileDatesTest, SurviveARoundTrip) {
    for (const CalendarTime& calendar :
         {CalendarTime{1990, 1, 1, 0, 0, 0}, CalendarTime{2026, 11, 21, 8, 5, 0},
          CalendarTime{2024, 2, 29, 23, 59, 59}, CalendarTime{1922, 1, 1, 0, 0, 0},
          CalendarTime{2058, 1, 18, 0, 0, 0}}) {
        const DateTime date = DateTime::From(calendar);
        EXPECT_EQ(SecondsToDate(std::stod(DateToSeconds(date))), date) << calendar.year;
    }
}

TEST(modCommonSubsListFileDatesTest, AreWrittenAsDatesThatCanBeRead) {
    const struct {
        CalendarTime written;
        CalendarTime read;
    } cases[] = {
        {{2058, 1, 19, 3, 14, 7}, {2058, 1, 19, 3, 14, 7}},
        {{2058, 1, 19, 3, 14, 8}, {2058, 1, 19, 3, 14, 7}},
        {{2058, 1, 20, 0, 0, 0}, {2058, 1, 19, 3, 14, 7}},
        {{2100, 1, 1, 0, 0, 0}, {2058, 1, 19, 3, 14, 7}},
        {{9999, 12, 31, 23, 59, 59}, {2058, 1, 19, 3, 14, 7}},
        {{1921, 12, 13, 20, 45, 52}, {1921, 12, 13, 20, 45, 52}},
        {{1921, 12, 13, 20, 45, 51}, {1921, 12, 13, 20, 45, 52}},
        {{1900, 1, 1, 0, 0, 0}, {1921, 12, 13, 20, 45, 52}},
        {{1899, 12, 30, 0, 0, 1}, {1921, 12, 13, 20, 45, 52}},
        {{100, 1, 1, 0, 0, 0}, {1921, 12, 13, 20, 45, 52}},
    };
    for (const auto& c : cases) {
        const std::string written = DateToSeconds(DateTime::From(c.written));
        EXPECT_EQ(SecondsToDate(std::stod(written)), DateTime::From(c.read)) << written;
    }
    for (const std::int64_t seconds :
         {std::numeric_limits<std::int64_t>::max() / 4, std::numeric_limits<std::int64_t>::min() / 4})
        EXPECT_EQ(ErrorOf([&] { SecondsToDate(std::stod(DateToSeconds(DateTime{seconds}))); }), NoError);
}

TEST(modCommonSubsListFileDatesTest, RoundToWholeSeconds) {
    const DateTime start = DateTime::From({1990, 1, 1, 0, 0, 0});
    EXPECT_EQ(SecondsToDate(2840140800.5), start);
    EXPECT_EQ(SecondsToDate(2840140801.5).seconds, start.seconds + 2);
}

TEST(modCommonSubsListFileDatesTest, RefuseSecondsBeyond32Bits) {
    EXPECT_EQ(ErrorOf([] { SecondsToDate(2840140800.0 + 2147483647.0); }), NoError);
    EXPECT_EQ(ErrorOf([] { SecondsToDate(2840140800.0 - 2147483648.0); }), NoError);
    for (const double seconds : {2840140800.0 + 2147483648.0, 2840140800.0 - 2147483649.0, 1e300, -1e300})
        EXPECT_EQ(ErrorOf([&] { SecondsToDate(seconds); }), ErrorNumber::Overflow) << seconds;
}

TEST(modCommonSubsVersionTest, JoinsTheDigitsOfItsParts) {
    const struct {
        FileVersion version;
        std::int32_t number;
    } cases[] = {
        {{2, 1, 5}, 215},
        {{0, 0, 0}, 0},
        {{0, 1, 5}, 15},
        {{1, 0, 0}, 100},
        {{1, 10, 3}, 1103},
        {{11, 0, 3}, 1103},
        {{10, 0, 19041}, 10019041},
        {{21, 4748, 3647}, 2147483647},
    };
    FakeDesktop fake;
    for (const auto& c : cases) {
        fake.peers.versions["C:\\a.exe"] = c.version;
        EXPECT_EQ(GetFileVersionNumber(fake.desktop, "C:\\a.exe"), c.number);
    }
}

TEST(modCommonSubsVersionTest, PropagatesErrors) {
    FakeDesktop fake;
    fake.peers.versions["C:\\big.exe"] = {65535, 65535, 65535};
    fake.peers.versions["C:\\one-more.exe"] = {21, 4748, 3648};
    fake.peers.unversioned = {"C:\\plain.exe"};
    const struct {
        const char* path;
        ErrorNumber error;
    } cases[] = {
        {"", ErrorNumber::FileNotFound},
        {"C:\\missing.exe", ErrorNumber::FileNotFound},
        {"C:\\plain.exe", ErrorNumber::InvalidProcedureCall},
        {"C:\\big.exe", ErrorNumber::Overflow},
        {"C:\\one-more.exe", ErrorNumber::Overflow},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { GetFileVersionNumber(fake.desktop, c.path); }), c.error) << c.path;
}

TEST(modCommonSubsSendCopyDataTest, SendsTheTextWithItsNulToTheWindow) {
    FakeDesktop fake;
    fake.peers.openWindows = {"Monitor"};
    SendCopyData(fake.desktop, "Monitor", "Text");
    ASSERT_EQ(fake.peers.received.size(), 1U);
    EXPECT_EQ(fake.peers.received[0].windowTitle, "Monitor");
    EXPECT_EQ(fake.peers.received[0].identifier, 3U);
    EXPECT_EQ(fake.peers.received[0].payload, "Text\0"s);
}

TEST(modCommonSubsSendCopyDataTest, SendsNothingWithoutAWindow) {
    FakeDesktop fake;
    fake.peers.openWindows = {"Monitor 2", "monitor"};
    SendCopyData(fake.desktop, "Monitor", "Text");
    EXPECT_EQ(fake.peers.searched, std::vector<std::string>{"Monitor"});
    EXPECT_TRUE(fake.peers.received.empty());
}

TEST(modCommonSubsSendCopyDataTest, DoesNotEvenSearchWithoutTitleOrText) {
    FakeDesktop fake;
    fake.peers.openWindows = {"", "Monitor"};
    SendCopyData(fake.desktop, "", "Text");
    SendCopyData(fake.desktop, "Monitor", "");
    SendCopyData(fake.desktop, "", "");
    EXPECT_TRUE(fake.peers.searched.empty());
}

class modCommonSubsPlaceInStatusPanelTest : public ::testing::Test {
  protected:
    modCommonSubsPlaceInStatusPanelTest() {
        statusBar.panels.Reset(2);
        statusBar.panels[2].left = 3000;
        statusBar.panels[2].width = 2000;
        statusBar.top = 7000;
        statusBar.height = 375;
    }
    StatusBar statusBar;
    ProgressBar bar;
};

TEST_F(modCommonSubsPlaceInStatusPanelTest, PutsTheBarInsideThePanelsFrame) {
    PlaceInStatusPanel(bar, statusBar, 2);
    EXPECT_EQ(bar.bounds, (TwipsRect{3025, 7045, 1955, 300}));
    EXPECT_TRUE(bar.inFront);
    EXPECT_TRUE(bar.flat);
    EXPECT_TRUE(statusBar.redraw);
}

TEST_F(modCommonSubsPlaceInStatusPanelTest, RefusesAPanelThatDoesNotExist) {
    for (const std::int32_t panel : {-1, 3, 2147483647})
        EXPECT_EQ(ErrorOf([&] { PlaceInStatusPanel(bar, statusBar, panel); }),
                  ErrorNumber::SubscriptOutOfRange);
    EXPECT_FALSE(statusBar.redraw);
}

} // namespace
} // namespace quarn
