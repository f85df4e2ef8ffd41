// What the extras of the main form do, each alone and all together, and that nothing does it while they are
// off.

#include "tests/views/ScanTest.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Texts = std::vector<std::string>;

struct Extra {
    const char* key;
    std::int32_t value;
};

constexpr Extra Extras[] = {
    {"Simultaneous", 8}, {"SaveListAtExit", 1}, {"ListOnce", 1},       {"NaturalSort", 1}, {"KeepSorted", 1},
    {"ShowAtStart", 1},  {"SearchBox", 1},      {"AskMasterFirst", 1}, {"AskPassword", 1},
};

class frmMainExtrasTest : public ScanTest {
  protected:
    // A list of servers with these names; their pings are 1, 2, 3 ...
    void StartWithNames(const Texts& names) {
        std::string file = " " + std::to_string(names.size()) + "\r\n";
        std::int32_t number = 0;
        for (const std::string& name : names) {
            const std::string n = std::to_string(++number);
            file += "127.0.1." + n + ";27960;--;" + name + ";" + n + ";0;16;baseq3;q3dm1;0;;;\r\n";
        }
        addresses = HeadlessBrowser::Addresses(number);
        browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), file);
        ASSERT_TRUE(browser.Start());
    }

    // Sorts ascending, whatever the order was.
    void SortBy(std::int32_t subItem) {
        browser.Controls().lvwServers.sortOrder = SortOrder::Descending;
        browser.Form().servers.lvwServers_ColumnClick(subItem + 1);
    }
    std::string Arrow(std::int32_t subItem) {
        return browser.Controls().lvwServers.columns[subItem + 1].headerIcon;
    }
    Texts Names() { return browser.Column(NameColumn); }

    void Type(const std::string& text) {
        browser.Controls().txtSearch.text = text;
        browser.Form().servers.txtSearch_Change();
    }
    void Set(const char* extra, std::int32_t value = 1) { browser.Set("Extras", extra, value); }
    void Rest() { browser.fake.events.RunFor(200); }
};

TEST_F(frmMainExtrasTest, AFirstRunLeavesASettingsFileWithoutExtras) {
    browser.fake.files.Remove("C:\\Quarn\\Quarn.ini");
    ASSERT_TRUE(browser.Start());
    EXPECT_FALSE(browser.Controls().txtSearch.visible);
    browser.Form().Unload();
    const std::string settings = browser.fake.files.Get("C:\\Quarn\\Quarn.ini");
    std::string games;
    for (const char* const n : {"1", "2", "3", "4"})
        games +=
            std::string("Path") + n + "=\r\nConfig" + n + "=\r\nName" + n + "=\r\nVisible" + n + "=0\r\n";
    EXPECT_EQ(settings,
              "[General]\r\nMinToTray=1\r\nKeepOnTop=0\r\nRemWinPos=0\r\nWinTop=3300\r\nWinLeft=7650\r\n"
              "WinHeight=9600\r\nWinWidth=13500\r\nWinState=0\r\n"
              "[Selection]\r\nLastGame=1\r\nLastServer=1\r\nLastSortColumn=1\r\nLastSortOrder=1\r\n"
              "[Filter]\r\nLocked=1\r\nPing=1\r\n[Scanning]\r\nPingTimeout=1000\r\n"
              "[Favorites]\r\nNumber=2\r\nName1=\r\nName2=\r\nName3=\r\nName4=\r\nName5=\r\nName6=\r\n"
              "Name7=\r\nName8=\r\nName9=\r\n[Launcher]\r\nQuitAfterStart=0\r\n[Games]\r\n" +
                  games);
}

TEST_F(frmMainExtrasTest, ShowsAMinimizedWindowAtEveryStartIfWanted) {
    for (const std::int32_t show : {0, 1})
        for (const std::int32_t state : {0, 1, 2, 3, -1}) {
            HeadlessBrowser other;
            other.Set("General", "WinState", state);
            other.Set("Extras", "ShowAtStart", show);
            ASSERT_TRUE(other.Start());
            const WindowState expected = state == 2                ? WindowState::Maximized
                                         : state == 1 && show == 0 ? WindowState::Minimized
                                                                   : WindowState::Normal;
            EXPECT_EQ(other.window.state, expected) << state << ' ' << show;
        }
}

TEST_F(frmMainExtrasTest, AWindowThatIsShownAtStartHasItsStoredPosition) {
    Set("ShowAtStart");
    browser.Set("General", "WinState", 1);
    browser.Set("General", "RemWinPos", 1);
    browser.Set("General", "WinLeft", 600);
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.window.bounds.left, 600);
    EXPECT_THAT(browser.window.statesSet, IsEmpty());
}

TEST_F(frmMainExtrasTest, SavesTheListShownAtTheEndIfWanted) {
    struct Case {
        const char* node;
        std::int32_t writes; // of servers-q3.dat
    };
    for (const Case& c : {Case{"q3", 1}, Case{"mod1", 0}, Case{"games", 0}, Case{"d3", 0}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(3));
        other.Set("Extras", "SaveListAtExit", 1);
        ASSERT_TRUE(other.Start());
        other.ClickNode(c.node);
        const std::int32_t before = other.fake.files.Writes(HeadlessBrowser::PathOf("q3"));
        if (other.program.Servers.HighestIndex() > 0)
            other.program.Servers[1].Name = "changed";
        other.Form().Unload();
        EXPECT_EQ(other.fake.files.Writes(HeadlessBrowser::PathOf("q3")) - before, c.writes) << c.node;
        EXPECT_EQ(other.fake.files.Get(HeadlessBrowser::PathOf("q3")).find("changed") != std::string::npos,
                  c.writes == 1);
        EXPECT_EQ(other.window.destroyCalls, 1);
    }
}

TEST_F(frmMainExtrasTest, SavesTheListAlsoAtTheEndOfTheSession) {
    Set("SaveListAtExit");
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    ASSERT_TRUE(browser.Start());
    browser.Form().EndSession();
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 1);
}

TEST_F(frmMainExtrasTest, AListThatCannotBeSavedAtTheEndIsToldAndTheProgramEnds) {
    Set("SaveListAtExit");
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    ASSERT_TRUE(browser.Start());
    const std::string before = browser.fake.files.Get(HeadlessBrowser::PathOf("q3"));
    browser.fake.files.FailWrites(HeadlessBrowser::PathOf("q3"), ErrorNumber::PermissionDenied);
    browser.Form().Unload();
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")), before);
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.Setting("Extras", "SaveListAtExit"), "1") << "the settings are saved all the same";
}

TEST_F(frmMainExtrasTest, ADamagedListIsKeptBeforeTheEndReplacesIt) {
    Set("SaveListAtExit");
    browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), "damaged");
    ASSERT_TRUE(browser.Start());
    browser.Form().Unload();
    EXPECT_EQ(browser.fake.files.Get("C:\\Quarn\\servers-q3.bak"), "damaged");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")), " 0\r\n");
}

TEST_F(frmMainExtrasTest, SortsPlayersByNumberOnlyIfWanted) {
    for (const std::int32_t natural : {0, 1}) {
        HeadlessBrowser other;
        other.fake.files.Put(HeadlessBrowser::PathOf("q3"),
                             " 3\r\n127.0.1.1;1;--;A;1;12;16;x;m;0;;;\r\n127.0.1.2;2;--;B;1;3;16;x;m;0;;;\r\n"
                             "127.0.1.3;3;--;C;1;3;8;x;m;0;;;\r\n");
        other.Set("Extras", "NaturalSort", natural);
        ASSERT_TRUE(other.Start());
        other.Controls().lvwServers.sortOrder = SortOrder::Descending;
        other.Form().servers.lvwServers_ColumnClick(PlayersColumn + 1);
        EXPECT_EQ(other.Column(NameColumn), natural != 0 ? (Texts{"C", "B", "A"}) : (Texts{"A", "B", "C"}));
    }
}

TEST_F(frmMainExtrasTest, SortsNeverVisitedServersFirstIfWanted) {
    Set("NaturalSort");
    StartWithNames({"A", "B", "C"});
    browser.program.Servers[1].LastVisit = DateTime::From({2026, 11, 21, 0, 0, 0});
    browser.program.Servers[3].LastVisit = DateTime::From({2025, 11, 21, 0, 0, 0});
    browser.Form().servers.Relist();
    SortBy(LastVisitColumn);
    EXPECT_THAT(Names(), ElementsAre("B", "C", "A"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(frmMainExtrasTest, RowsKeepToTheSortOrderOnlyIfWanted) {
    for (const std::int32_t keep : {0, 1}) {
        HeadlessBrowser other;
        other.PutList("q3", {"127.0.1.5:1", "127.0.1.3:1"});
        other.Set("Extras", "KeepSorted", keep);
        ASSERT_TRUE(other.Start()); // sorts by address
        EXPECT_THAT(other.Column(AddressColumn), ElementsAre("127.0.1.3:1", "127.0.1.5:1"));
        other.Form().servers.AddServer("127.0.1.4", "1");
        const std::string arrow = other.Controls().lvwServers.columns[AddressColumn + 1].headerIcon;
        if (keep == 0) {
            EXPECT_THAT(other.Column(AddressColumn),
                        ElementsAre("127.0.1.3:1", "127.0.1.5:1", "127.0.1.4:1"));
            EXPECT_EQ(arrow, "");
        } else {
            EXPECT_THAT(other.Column(AddressColumn),
                        ElementsAre("127.0.1.3:1", "127.0.1.4:1", "127.0.1.5:1"));
            EXPECT_EQ(arrow, "ascending");
            EXPECT_EQ(other.Controls().lvwServers.TakeChanges().ensureVisible, 2) << "the added row";
        }
        EXPECT_FALSE(other.Controls().tmrSorting.Enabled());
    }
}

TEST_F(frmMainExtrasTest, ANewListIsSortedWhenItIsShown) {
    Set("KeepSorted");
    browser.PutList("d3", {"127.0.2.9:1", "127.0.2.2:1"});
    StartWithNames({"B", "A"});
    browser.ClickNode("d3");
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre("127.0.2.2:1", "127.0.2.9:1"));
    EXPECT_EQ(Arrow(AddressColumn), "ascending");
    SortBy(PingColumn);
    browser.ClickNode("fltkey");
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1", "2"));
    EXPECT_EQ(Arrow(PingColumn), "ascending");
}

TEST_F(frmMainExtrasTest, RowsThatAreScannedMoveWhenTheScanHasEnded) {
    for (const std::int32_t atOnce : {1, 8}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(3));
        other.PutServers(HeadlessBrowser::Addresses(3));
        other.Set("Extras", "KeepSorted", 1);
        other.Set("Extras", "Simultaneous", atOnce);
        ASSERT_TRUE(other.Start());
        const Texts names = {"Zed", "Mid", "Abc"};
        for (std::size_t i = 0; i < 3; ++i)
            other.network.servers[HeadlessBrowser::Addresses(3)[i]] =
                MakeServer(gamenet::Family::Quake3, names[i], "q3dm17", "baseq3");
        other.Controls().lvwServers.sortOrder = SortOrder::Descending;
        other.Form().servers.lvwServers_ColumnClick(NameColumn + 1);
        other.RefreshAll();
        EXPECT_THAT(other.Column(AddressColumn),
                    ElementsAre("127.0.1.1:27960", "127.0.1.2:27960", "127.0.1.3:27960"))
            << "the timer has not ticked since the scan ended";
        other.fake.events.RunFor(200);
        EXPECT_THAT(other.Column(NameColumn), ElementsAre("Abc", "Mid", "Zed"));
        EXPECT_EQ(other.Controls().lvwServers.columns[NameColumn + 1].headerIcon, "ascending");
        EXPECT_FALSE(other.Controls().tmrSorting.Enabled());
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

TEST_F(frmMainExtrasTest, RowsWaitWhileTheMouseIsDown) {
    Set("KeepSorted");
    StartWithNames({"B", "C"});
    SortBy(NameColumn);
    browser.window.mouseDown = true;
    browser.program.Servers[2].Name = "A";
    browser.Form().servers.UpdateServerListItem(2, 2);
    browser.fake.events.RunFor(1000);
    EXPECT_THAT(Names(), ElementsAre("B", "A"));
    browser.window.mouseDown = false;
    Rest();
    EXPECT_THAT(Names(), ElementsAre("A", "B"));
}

TEST_F(frmMainExtrasTest, TheSelectionMovesWithItsRow) {
    Set("KeepSorted");
    StartWithNames({"B", "C", "D"});
    SortBy(NameColumn);
    browser.ClickRow(3);
    browser.program.Servers[3].Name = "A";
    browser.Form().servers.UpdateServerListItem(3, 3);
    Rest();
    EXPECT_THAT(Names(), ElementsAre("A", "B", "C"));
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 1);
    EXPECT_EQ(browser.Controls().lvwServers.SelectedCount(), 1);
    EXPECT_EQ(browser.program.CurrentServer, 3);
}

TEST_F(frmMainExtrasTest, RowsStayWhereTheyAreWithoutAnArrow) {
    Set("KeepSorted");
    browser.Set("Selection", "LastSortColumn", 77);
    StartWithNames({"B", "A"});
    browser.Form().servers.AddServer("127.0.1.9", "1");
    browser.Form().servers.UpdateServerListItem(1, 1);
    Rest();
    EXPECT_THAT(Names(), ElementsAre("B", "A", ""));
    EXPECT_FALSE(browser.Controls().tmrSorting.Enabled());
}

TEST_F(frmMainExtrasTest, TheSearchBoxIsShownOnlyIfWantedAndAtOnce) {
    StartWithNames({"One", "Two"});
    EXPECT_FALSE(browser.Controls().txtSearch.visible);
    const auto choose = [&](std::int32_t on) {
        browser.dialogs.inOptions = [on](frmOptions& form) {
            form.chkSearchBox = on;
            form.cmdOK_Click();
        };
        browser.Form().dialogs.mnuExtrasOptions_Click();
    };
    choose(1);
    EXPECT_TRUE(browser.Controls().txtSearch.visible);
    Type("two");
    EXPECT_THAT(Names(), ElementsAre("Two"));
    choose(0);
    EXPECT_FALSE(browser.Controls().txtSearch.visible);
    EXPECT_EQ(browser.Controls().txtSearch.text, "");
    EXPECT_THAT(Names(), ElementsAre("One", "Two"));
}

TEST_F(frmMainExtrasTest, WithoutTheOptionATextFindsNothing) {
    StartWithNames({"One", "Two"});
    Type("two");
    EXPECT_THAT(Names(), ElementsAre("One", "Two"));
}

TEST_F(frmMainExtrasTest, TheSearchComesOnTopOfTheFilters) {
    Set("SearchBox");
    StartWithNames({"abc", "ABCD", "xyz"});
    browser.program.Servers[1].Ping = 80;
    browser.ClickNode("png50");
    Type("Bc");
    EXPECT_THAT(Names(), ElementsAre("ABCD"));
    browser.ClickNode("png50");
    EXPECT_THAT(Names(), ElementsAre("abc", "ABCD"));
    Type("");
    EXPECT_THAT(Names(), ElementsAre("abc", "ABCD", "xyz"));
    EXPECT_EQ(browser.Count(), "3 servers");
}

TEST_F(frmMainExtrasTest, TheSearchStaysWhenAnotherListIsShown) {
    Set("SearchBox");
    browser.PutList("d3", {"127.0.2.1:1", "127.0.2.2:1"});
    StartWithNames({"Server 2", "x"});
    Type("server 2");
    browser.ClickNode("d3");
    EXPECT_THAT(Names(), ElementsAre("Server 2"));
    Type("nothing of the kind");
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_EQ(browser.Count(), "2 servers");
}

TEST_F(frmMainExtrasTest, TheRowsKeepTheirOrderAndTheirArrowWhileTheUserTypes) {
    Set("SearchBox");
    StartWithNames({"b#", "c", "a#"});
    SortBy(NameColumn);
    Type("#");
    EXPECT_THAT(Names(), ElementsAre("a#", "b#"));
    EXPECT_EQ(Arrow(NameColumn), "ascending");
    Type("");
    EXPECT_THAT(Names(), ElementsAre("a#", "b#", "c"));
    EXPECT_EQ(Arrow(NameColumn), "ascending");
    browser.Form().servers.AddServer("127.0.1.9", "1");
    Type("#");
    EXPECT_EQ(Arrow(NameColumn), "") << "a row that was added without sorting took it away";
}

TEST_F(frmMainExtrasTest, TheSelectedServerStaysSelectedIfItIsFound) {
    Set("SearchBox");
    StartWithNames({"one", "two", "three"});
    browser.ClickRow(2);
    Type("t");
    EXPECT_THAT(Names(), ElementsAre("two", "three"));
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 1);
    EXPECT_EQ(browser.program.CurrentServer, 2);
    Type("three");
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 0);
    EXPECT_EQ(browser.program.CurrentServer, 0);
}

TEST_F(frmMainExtrasTest, AScanAsksTheServersThatAreFound) {
    Set("SearchBox");
    StartWith(3);
    Type("127.0.1.2");
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(2));
    EXPECT_THAT(Names(), ElementsAre("Live 2"));
    ExpectIdle();
}

TEST_F(frmMainExtrasTest, AServerWhoseAnswerIsNotFoundLeavesTheList) {
    Set("SearchBox");
    StartWith(2);
    Type("server");
    browser.RefreshAll();
    EXPECT_THAT(Names(), IsEmpty()) << "their names are Live 1 and Live 2 now";
    Type("live");
    EXPECT_THAT(Names(), ElementsAre("Live 1", "Live 2"));
}

TEST_F(frmMainExtrasTest, TypingDuringAScanNarrowsItAndHarmsNothing) {
    for (const std::int32_t atOnce : {1, 8}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(20));
        other.PutServers(HeadlessBrowser::Addresses(20));
        other.Set("Extras", "SearchBox", 1);
        other.Set("Extras", "Simultaneous", atOnce);
        ASSERT_TRUE(other.Start());
        const auto type = [&](const std::string& text) {
            other.Controls().txtSearch.text = text;
            other.Form().servers.txtSearch_Change();
        };
        other.In(50, [&] { type("live"); });
        other.In(130, [&] { type(""); });
        other.In(170, [&] { type(":2"); });
        other.RefreshAll();
        type("");
        EXPECT_EQ(other.RowCount(), 20);
        EXPECT_EQ(other.Message(), "Ready.");
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

TEST_F(frmMainExtrasTest, AllTogetherStartScanSearchAndEnd) {
    for (const Extra& extra : Extras)
        Set(extra.key, extra.value);
    browser.Set("General", "WinState", 1);
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    StartWith(5);
    EXPECT_EQ(browser.window.state, WindowState::Normal);
    SortBy(PlayersColumn);
    browser.RefreshAll();
    Rest();
    EXPECT_EQ(Arrow(PlayersColumn), "ascending");
    Type("LIVE 3");
    EXPECT_THAT(Names(), ElementsAre("Live 3"));
    browser.Form().servers.AddServer("127.0.1.99", "27960");
    Type("");
    EXPECT_THAT(Names(), SizeIs(6));
    Rest();
    SortBy(LastVisitColumn);
    EXPECT_THAT(browser.Errors(), IsEmpty());
    browser.Form().Unload();
    EXPECT_NE(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")).find("Live 3"), std::string::npos);
    for (const Extra& extra : Extras)
        EXPECT_EQ(browser.Setting("Extras", extra.key), std::to_string(extra.value));
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

} // namespace
} // namespace quarn
