#include "views/clsQuickList.h"

#include "tests/fakes/Errors.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

// A locale that counts its calls and fails on demand.
class WatchedLocale : public ClassicLocale {
  public:
    std::function<void()> whenAsked;

    std::string SortKey(const std::string& text) const override {
        return Watched(ClassicLocale::SortKey(text));
    }
    bool IsNumeric(const std::string& text) const override { return Watched(ClassicLocale::IsNumeric(text)); }

  private:
    template<class Result>
    Result Watched(Result result) const {
        if (whenAsked)
            whenAsked();
        return result;
    }
};

// Columns 1 to 4 are an icon, a text, a number and a date; column 5 has no sort type.
enum Column : std::int16_t { Picture = 1, Text, Number, Date, Plain };

class clsQuickListTest : public ::testing::Test {
  protected:
    clsQuickListTest() {
        list.columns.Reset(5);
        const char* const types[] = {"PICTURE", "STRING", "NUMBER", "DATE", ""};
        for (std::int32_t i = 1; i <= 5; ++i)
            list.columns[i].tag = types[i - 1];
        sorter.SetTargetList(list);
    }

    // Rows with these texts in the column, tagged "1", "2", ...
    void Fill(std::int32_t column, const Texts& texts) {
        list.Clear();
        for (const std::string& text : texts) {
            const std::int32_t row = list.Add();
            list.Edit(row).main.tag = std::to_string(row);
            list.Cell(row, column).text = text;
        }
    }
    Texts Column(std::int32_t column) const {
        Texts texts;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            texts.push_back(list.Cell(row, column).text);
        return texts;
    }
    Texts RowTags() const {
        Texts tags;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            tags.push_back(list.Row(row).main.tag);
        return tags;
    }
    Texts CellTags(std::int32_t column) const {
        Texts tags;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            tags.push_back(list.Cell(row, column).tag);
        return tags;
    }
    Texts Arrows() const {
        Texts arrows;
        for (std::int32_t i = 1; i <= list.columns.HighestIndex(); ++i)
            arrows.push_back(list.columns[i].headerIcon);
        return arrows;
    }
    Texts SortedAscending(std::int32_t column, const Texts& texts) {
        Fill(column, texts);
        list.sortOrder = SortOrder::Descending;
        sorter.SortList(static_cast<std::int16_t>(column));
        return Column(column);
    }
    Texts SortedDescending(std::int32_t column, const Texts& texts) {
        Fill(column, texts);
        list.sortOrder = SortOrder::Ascending;
        sorter.SortList(static_cast<std::int16_t>(column));
        return Column(column);
    }
    Texts Errors() const { return LoggedErrors(log); }

    FakeDesktop fake;
    WatchedLocale locale;
    Desktop desktop{fake.clock,    fake.events,        fake.files, fake.help,     fake.hosts,
                    locale,        fake.notifications, fake.peers, fake.profiles, fake.prompts,
                    fake.registry, fake.shell,         fake.system};
    clsAppLog log{desktop, "C:\\Quarn\\"};
    ListView list;
    clsQuickList sorter{log, desktop};
};

TEST_F(clsQuickListTest, OrdersNumbersByTheirValue) {
    struct Case {
        Texts texts;
        Texts ascending;
    };
    const Case cases[] = {
        {{"5", "120", "40"}, {"5", "40", "120"}},
        {{"-2", "-10", "3"}, {"-10", "-2", "3"}},
        {{"3", "-1", "0", "-3", "1"}, {"-3", "-1", "0", "1", "3"}},
        {{"-1", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9", "-10"},
         {"-10", "-9", "-8", "-7", "-6", "-5", "-4", "-3", "-2", "-1"}},
        {{"0.5", "0.25", "-0.5", "-0.25"}, {"-0.5", "-0.25", "0.25", "0.5"}},
        {{"0", "-0", "+0"}, {"0", "-0", "+0"}},
        {{" 7 ", "6"}, {"6", " 7 "}},
        {{"1e3", "999", "1001"}, {"999", "1e3", "1001"}},
        {{"2147483647", "-2147483648", "0"}, {"-2147483648", "0", "2147483647"}},
        {{"0.0000000002", "0.0000000001"}, {"0.0000000001", "0.0000000002"}},
        {{"0.00000000002", "0.00000000001"}, {"0.00000000002", "0.00000000001"}}, // equal to ten decimals
        {{"0", "-0.00000000001", "-1"}, {"-1", "-0.00000000001", "0"}},
        {{"99999999999999999999", "9"}, {"9", "99999999999999999999"}},
        {{"5", "abc", "-1"}, {"abc", "-1", "5"}},
        {{"5", "", "-1"}, {"", "-1", "5"}},
        {{"1", "--", "1.2.3", "0x10", "1e", "Inf", "NaN"}, {"--", "1.2.3", "0x10", "1e", "Inf", "NaN", "1"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(SortedAscending(Number, c.texts), c.ascending);
        EXPECT_THAT(Errors(), IsEmpty());
    }
}

TEST_F(clsQuickListTest, SortsNumbersInTheOtherDirection) {
    EXPECT_THAT(SortedDescending(Number, {"-2", "x", "-10", "3", "0", "y"}),
                ElementsAre("3", "0", "-2", "-10", "x", "y"));
}

TEST_F(clsQuickListTest, PlayersAndMaximumAreNotANumber) {
    EXPECT_THAT(SortedAscending(Number, {"9 / 16", "3 / 16", "12 / 16"}),
                ElementsAre("9 / 16", "3 / 16", "12 / 16"));
}

TEST_F(clsQuickListTest, ReadsNumbersAsTheUsersLocaleWritesThem) {
    locale.german = true;
    EXPECT_THAT(SortedAscending(Number, {"1,5", "1.200", "1,25"}), ElementsAre("1,25", "1,5", "1.200"));
}

TEST_F(clsQuickListTest, OrdersPlainNumbersAmongThoseOnlyTheLocaleReads) {
    EXPECT_THAT(SortedAscending(Number, {"1234567890123456", "10.5", "999999999999999", "010", "+11", "9",
                                         "-1", "1,000", "", "00000000000000000000000"}),
                ElementsAre("", "-1", "00000000000000000000000", "9", "010", "10.5", "+11", "1,000",
                            "999999999999999", "1234567890123456"));
}

TEST_F(clsQuickListTest, OrdersDatesByTime) {
    EXPECT_THAT(SortedAscending(Date, {"11/21/2026 8:05:00 AM", "1/2/2027", "11/21/2026",
                                       "12/31/1999 11:59:59 PM", "11/21/2026 8:04:59 AM", "12:00:00 AM"}),
                ElementsAre("12:00:00 AM", "12/31/1999 11:59:59 PM", "11/21/2026", "11/21/2026 8:04:59 AM",
                            "11/21/2026 8:05:00 AM", "1/2/2027"));
}

TEST_F(clsQuickListTest, KeepsTheListIfACellIsNotADate) {
    for (const char* damaged :
         {"", " ", "never", "13/45/2026", "11/21", "11/21/2026 25:00:00", "2026-11-21", "0", "x11/21/2026"}) {
        Fill(Date, {"11/21/2026", "1/2/2025", damaged});
        list.sortOrder = SortOrder::Descending;
        const std::size_t errorsBefore = Errors().size();
        sorter.SortList(Date);
        ASSERT_EQ(Errors().size(), errorsBefore + 1) << damaged;
        EXPECT_EQ(Errors().back(), "clsQuickList;SortList;13");
        EXPECT_THAT(Column(Date), ElementsAre("11/21/2026", "1/2/2025", damaged));
        EXPECT_THAT(CellTags(Date), Each(""));
        EXPECT_EQ(list.sortOrder, SortOrder::Descending);
        EXPECT_THAT(Arrows(), Each(""));
        EXPECT_FALSE(list.updatesLocked);
    }
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
    EXPECT_THAT(SortedAscending(Date, {"1/2/2025", "1/1/2025"}), ElementsAre("1/1/2025", "1/2/2025"));
}

TEST_F(clsQuickListTest, OrdersTextsWithoutCaseAndKeepsEqualOnesInPlace) {
    EXPECT_THAT(SortedAscending(Text, {"beta", "Alpha", "alpha", "BETA", ""}),
                ElementsAre("", "Alpha", "alpha", "beta", "BETA"));
    EXPECT_THAT(SortedDescending(Text, {"beta", "Alpha", "alpha", "BETA", "10", "9"}),
                ElementsAre("beta", "BETA", "Alpha", "alpha", "9", "10"));
}

TEST_F(clsQuickListTest, OrdersIconsAndShowsNoTextAfterwards) {
    Fill(Picture, {"", "", "", ""});
    for (const std::int32_t row : {1, 3})
        list.Edit(row).smallIcon = "locked";
    list.sortOrder = SortOrder::Descending;
    sorter.SortList(Picture);
    EXPECT_THAT(RowTags(), ElementsAre("2", "4", "1", "3"));
    EXPECT_THAT(Column(Picture), Each(""));
    sorter.SortList(Picture);
    EXPECT_THAT(RowTags(), ElementsAre("1", "3", "2", "4"));
    EXPECT_THAT(Column(Picture), Each(""));
}

TEST_F(clsQuickListTest, SortsByIconsInTheFirstColumnOnly) {
    list.columns[Text].tag = "PICTURE";
    Fill(Text, {"b", "a"});
    sorter.SortList(Text);
    EXPECT_THAT(Column(Text), ElementsAre("b", "a"));
    EXPECT_THAT(Arrows(), Each(""));
    EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(clsQuickListTest, DoesNothingForAColumnWithoutASortType) {
    Fill(Plain, {"b", "a"});
    sorter.SortList(Plain);
    list.columns[Plain].tag = "string";
    sorter.SortList(Plain);
    EXPECT_THAT(Column(Plain), ElementsAre("b", "a"));
    EXPECT_EQ(list.sortOrder, SortOrder::Ascending);
    EXPECT_THAT(Arrows(), Each(""));
}

TEST_F(clsQuickListTest, FlipsTheOrderAtEverySortWhateverTheColumn) {
    Fill(Text, {"b", "a"});
    sorter.SortList(Text);
    EXPECT_EQ(list.sortOrder, SortOrder::Descending);
    EXPECT_THAT(Arrows(), ElementsAre("", "descending", "", "", ""));
    sorter.SortList(Text);
    EXPECT_EQ(list.sortOrder, SortOrder::Ascending);
    EXPECT_THAT(Arrows(), ElementsAre("", "ascending", "", "", ""));
    EXPECT_EQ(list.sortKey, Text - 1);
    sorter.SortList(Number);
    EXPECT_EQ(list.sortOrder, SortOrder::Descending);
    EXPECT_THAT(Arrows(), ElementsAre("", "", "descending", "", ""));
    EXPECT_EQ(list.sortKey, Number - 1);
    sorter.SortList(Picture);
    EXPECT_THAT(Arrows(), ElementsAre("ascending", "", "", "", ""));
    EXPECT_EQ(list.sortKey, 0);
}

TEST_F(clsQuickListTest, SortsAnEmptyListAndStoresTheOrder) {
    for (const std::int16_t column : {Picture, Text, Number, Date})
        sorter.SortList(column);
    EXPECT_THAT(Arrows(), ElementsAre("", "", "", "ascending", ""));
    EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(clsQuickListTest, LogsAColumnThatDoesNotExist) {
    Fill(Text, {"b", "a"});
    for (const int column : {0, -1, 6, 32767, -32768}) {
        const std::size_t errorsBefore = Errors().size();
        sorter.SortList(static_cast<std::int16_t>(column));
        ASSERT_EQ(Errors().size(), errorsBefore + 1) << column;
        EXPECT_EQ(Errors().back(), "clsQuickList;SortList;9");
        EXPECT_FALSE(list.updatesLocked);
    }
    EXPECT_THAT(Column(Text), ElementsAre("b", "a"));
    EXPECT_EQ(list.sortOrder, SortOrder::Ascending);
}

TEST_F(clsQuickListTest, LogsThatItHasNoList) {
    clsQuickList unbound(log, desktop);
    unbound.SortList(1);
    EXPECT_THAT(Errors(), ElementsAre("clsQuickList;SortList;91"));
    EXPECT_EQ(ErrorOf([&] { unbound.SaveListToFile("C:\\list.txt"); }), ErrorNumber::ObjectVariableNotSet);
}

TEST_F(clsQuickListTest, RestoresTheTextAndTagOfEveryCell) {
    const Texts tags = {"x", "", "a\0b"s, "\0"s, "99"};
    for (const std::int32_t column : {+Number, +Date}) {
        const Texts texts = column == Number
                                ? Texts{"3", "-1", "", "2", "x"}
                                : Texts{"1/3/2020", "1/1/2020", "1/5/2020", "1/2/2020", "1/4/2020"};
        Fill(column, texts);
        std::vector<std::pair<std::string, std::string>> before;
        for (std::int32_t row = 1; row <= 5; ++row) {
            list.Cell(row, column).tag = tags[static_cast<std::size_t>(row) - 1];
            before.emplace_back(texts[static_cast<std::size_t>(row) - 1],
                                tags[static_cast<std::size_t>(row) - 1]);
        }
        sorter.SortList(static_cast<std::int16_t>(column));
        for (std::int32_t row = 1; row <= 5; ++row) {
            const auto& [text, tag] = before[std::stoul(list.Row(row).main.tag) - 1];
            EXPECT_EQ(std::as_const(list).Cell(row, column).text, text);
            EXPECT_EQ(std::as_const(list).Cell(row, column).tag, tag);
        }
    }
}

// A NUL in a text is the first NUL of the tag in which the text is parked.
TEST_F(clsQuickListTest, SplitsAParkedTextAtItsFirstNul) {
    Fill(Number, {"7", "5\0six"s, "\0"s});
    for (std::int32_t row = 1; row <= 3; ++row)
        list.Cell(row, Number).tag = "x";
    list.sortOrder = SortOrder::Descending;
    sorter.SortList(Number);
    EXPECT_THAT(Column(Number), ElementsAre("5", "", "7"));
    EXPECT_THAT(CellTags(Number), ElementsAre("six\0x"s, "\0x"s, "x"));
    Fill(Text, {"b\0"s, "a\0c"s});
    list.sortOrder = SortOrder::Descending;
    sorter.SortList(Text); // does not park its texts
    EXPECT_THAT(Column(Text), ElementsAre("a\0c"s, "b\0"s));
}

TEST_F(clsQuickListTest, KeepsTheRowsTagsThoughItSortsByTheirOwnCell) {
    list.columns[Picture].tag = "NUMBER";
    Fill(Picture, {"3", "1", "2"});
    list.sortOrder = SortOrder::Descending;
    sorter.SortList(Picture);
    EXPECT_THAT(Column(Picture), ElementsAre("1", "2", "3"));
    EXPECT_THAT(RowTags(), ElementsAre("2", "3", "1"));
}

TEST_F(clsQuickListTest, LocksTheWindowsUpdatesWhileItSorts) {
    std::vector<bool> locked;
    locale.whenAsked = [&] { locked.push_back(list.updatesLocked); };
    SortedAscending(Number, {"2.5", "1.5"});
    SortedAscending(Text, {"2", "1"});
    EXPECT_THAT(locked, ElementsAre(true, true, true, true));
    EXPECT_FALSE(list.updatesLocked);
}

TEST_F(clsQuickListTest, LocksTheWindowsUpdatesAgainAfterEvents) {
    std::vector<bool> locked;
    locale.whenAsked = [&] { locked.push_back(list.updatesLocked); };
    clsQuickList patient(log, desktop, [&] { EXPECT_FALSE(list.updatesLocked); });
    patient.SetTargetList(list);
    Fill(Number, {"2.5", "1.5", "3.5"});
    list.sortOrder = SortOrder::Descending;
    patient.SortList(Number);
    EXPECT_THAT(locked, ElementsAre(true, true, true));
    EXPECT_FALSE(list.updatesLocked);
}

TEST_F(clsQuickListTest, EventsRunWhileNoCellHoldsAKey) {
    for (const std::int32_t column : {+Text, +Number, +Date}) {
        const Texts texts = {"2/2/2020", "1/1/2020", "3/3/2020"};
        std::vector<Texts> shown;
        clsQuickList patient(log, desktop, [&] {
            EXPECT_FALSE(list.updatesLocked);
            shown.push_back(Column(column));
        });
        patient.SetTargetList(list);
        Fill(column, texts);
        list.sortOrder = SortOrder::Descending;
        patient.SortList(static_cast<std::int16_t>(column));
        EXPECT_THAT(shown, ElementsAre(texts, texts, texts));
        EXPECT_FALSE(list.updatesLocked);
        EXPECT_EQ(list.sortOrder, SortOrder::Ascending);
    }
    EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(clsQuickListTest, KeepsTheListIfTheSystemFails) {
    Fill(Text, {"b", "a"});
    sorter.SortList(Text);
    std::int32_t calls = 0;
    locale.whenAsked = [&] {
        if (++calls % 2 == 0)
            throw RunTimeError(ErrorNumber::OutOfMemory);
    };
    for (const std::int16_t column : {Text, Number}) {
        sorter.SortList(column);
        EXPECT_EQ(Errors().back(), "clsQuickList;SortList;7");
        EXPECT_THAT(Column(Text), ElementsAre("b", "a"));
        EXPECT_EQ(list.sortOrder, SortOrder::Descending);
        EXPECT_EQ(list.sortKey, Text - 1);
        EXPECT_THAT(Arrows(), ElementsAre("", "descending", "", "", ""));
        EXPECT_FALSE(list.updatesLocked);
    }
}

TEST_F(clsQuickListTest, OrdersCountsByBothNumbersInNaturalOrder) {
    sorter.naturalOrder = true;
    struct Case {
        Texts texts;
        Texts ascending;
    };
    const Case cases[] = {
        {{"9 / 16", "3 / 16", "12 / 16"}, {"3 / 16", "9 / 16", "12 / 16"}},
        {{"3 / 16", "3 / 8", "3 / 100"}, {"3 / 8", "3 / 16", "3 / 100"}},
        {{"0 / 0", "-1 / 5", "0 / -5"}, {"-1 / 5", "0 / -5", "0 / 0"}},
        {{"-2 / 1", "-10 / 1", "-2 / -1"}, {"-10 / 1", "-2 / -1", "-2 / 1"}},
        {{"2147483647 / 1", "-2147483648 / 1"}, {"-2147483648 / 1", "2147483647 / 1"}},
        {{"5", "120", "40", "-1", "x"}, {"x", "-1", "5", "40", "120"}},
        {{"3/16", "2/16"}, {"3/16", "2/16"}},
        {{"1 / x", "1 / 2", " / "}, {" / ", "1 / x", "1 / 2"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(SortedAscending(Number, c.texts), c.ascending);
        EXPECT_THAT(Errors(), IsEmpty());
    }
    EXPECT_THAT(SortedDescending(Number, {"3 / 8", "12 / 16", "3 / 16"}),
                ElementsAre("12 / 16", "3 / 16", "3 / 8"));
}

TEST_F(clsQuickListTest, OrdersAnEmptyOrZeroDateFirstInNaturalOrder) {
    sorter.naturalOrder = true;
    EXPECT_THAT(SortedAscending(Date, {"1/2/2027", "", "11/21/2026", "12:00:00 AM", ""}),
                ElementsAre("", "12:00:00 AM", "", "11/21/2026", "1/2/2027"));
    EXPECT_THAT(SortedDescending(Date, {"", "11/21/2026", "1/2/2027"}),
                ElementsAre("1/2/2027", "11/21/2026", ""));
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_THAT(SortedAscending(Date, {"1/2/2027", "never", "1/1/2027"}),
                ElementsAre("1/2/2027", "never", "1/1/2027"));
    EXPECT_THAT(Errors(), ElementsAre("clsQuickList;SortList;13"));
}

TEST_F(clsQuickListTest, SortsAgainInTheSameOrder) {
    for (const SortOrder order : {SortOrder::Ascending, SortOrder::Descending}) {
        const bool ascending = order == SortOrder::Ascending;
        Fill(Number, {"2", "3"});
        list.sortOrder = ascending ? SortOrder::Descending : SortOrder::Ascending;
        sorter.SortList(Number);
        const Texts arrows = Arrows();
        list.Cell(list.Add(), Number).text = "1";
        sorter.SortAgain();
        EXPECT_EQ(Column(Number), ascending ? (Texts{"1", "2", "3"}) : (Texts{"3", "2", "1"}));
        sorter.SortAgain();
        EXPECT_EQ(Column(Number), ascending ? (Texts{"1", "2", "3"}) : (Texts{"3", "2", "1"}));
        EXPECT_EQ(list.sortOrder, order);
        EXPECT_EQ(Arrows(), arrows);
    }
}

TEST_F(clsQuickListTest, SortsAgainOnlyWhatHasAnArrow) {
    Fill(Text, {"b", "a"});
    sorter.SortAgain();
    EXPECT_THAT(Column(Text), ElementsAre("b", "a"));
    sorter.SortList(Text);
    sorter.ClearArrow();
    list.Cell(list.Add(), Text).text = "c";
    sorter.SortAgain();
    EXPECT_THAT(Column(Text), ElementsAre("b", "a", "c"));
    EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(clsQuickListTest, ASortAgainThatFailsTakesTheArrowAway) {
    Fill(Date, {"1/2/2025", "11/21/2026"});
    sorter.SortList(Date);
    ASSERT_THAT(Arrows(), ElementsAre("", "", "", "descending", ""));
    list.Add();
    sorter.SortAgain();
    EXPECT_THAT(Column(Date), ElementsAre("11/21/2026", "1/2/2025", ""));
    EXPECT_THAT(Arrows(), Each(""));
    EXPECT_EQ(list.sortOrder, SortOrder::Descending);
    EXPECT_THAT(Errors(), ElementsAre("clsQuickList;SortList;13"));
}

TEST_F(clsQuickListTest, SavesTheMainTextsInDisplayOrder) {
    fake.files.Put("C:\\list.txt", "what stood there before, longer than what comes");
    Fill(Picture, {"b", "", "a"});
    sorter.SaveListToFile("C:\\list.txt");
    EXPECT_EQ(fake.files.Get("C:\\list.txt"), "b\r\n\r\na\r\n");
    list.columns[Picture].tag = "STRING";
    sorter.SortList(Picture);
    sorter.SaveListToFile("C:\\list.txt");
    EXPECT_EQ(fake.files.Get("C:\\list.txt"), "b\r\na\r\n\r\n");
    list.Clear();
    sorter.SaveListToFile("C:\\list.txt");
    EXPECT_EQ(fake.files.Get("C:\\list.txt"), "");
}

TEST_F(clsQuickListTest, PropagatesAnErrorOfSaving) {
    Fill(Picture, {"b"});
    fake.files.FailWrites("C:\\list.txt", ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { sorter.SaveListToFile("C:\\list.txt"); }), ErrorNumber::PermissionDenied);
    EXPECT_THAT(Errors(), IsEmpty());
}

} // namespace
} // namespace quarn
