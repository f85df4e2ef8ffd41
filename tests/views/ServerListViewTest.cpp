// What the server list shows and which records it leaves out.

#include "views/ServerListView.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

class ServerListViewTest : public ::testing::Test {
  protected:
    void StartWith(const std::vector<ServerRecord>& records) {
        ASSERT_TRUE(browser.Start());
        Replace(records);
    }
    void StartWith(std::int32_t count) {
        browser.PutList("q3", HeadlessBrowser::Addresses(count));
        ASSERT_TRUE(browser.Start());
    }

    // Puts these records in place of the list and lists them.
    void Replace(const std::vector<ServerRecord>& records) {
        ProgramState& program = browser.program;
        program.Servers.Reset(static_cast<std::int32_t>(records.size()));
        for (std::size_t i = 0; i < records.size(); ++i)
            program.Servers[static_cast<std::int32_t>(i) + 1] = records[i];
        View().ResetServerViews();
        View().ListServers();
    }

    static ServerRecord Record() {
        ServerRecord server;
        server.Address = "192.0.2.7";
        server.Port = 27960;
        server.Country = "DE";
        server.Name = "My server";
        server.Ping = 48;
        server.Players = 3;
        server.MaxPlayers = 16;
        server.ModName = "osp";
        server.Map = "q3dm17";
        return server;
    }
    static ServerRecord With(void (*change)(ServerRecord&)) {
        ServerRecord server = Record();
        change(server);
        return server;
    }

    ServerListView& View() { return browser.Form().servers; }
    const ListRow& Row(std::int32_t row) { return std::as_const(browser.Controls().lvwServers).Row(row); }

    HeadlessBrowser browser;
};

TEST_F(ServerListViewTest, ShowsARecordInItsCells) {
    StartWith({Record()});
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServers),
                ElementsAre("|192.0.2.7:27960|DE|My server|3 / 16|48|osp|q3dm17|"));
    EXPECT_EQ(Row(1).main.tag, "1");
    EXPECT_EQ(Row(1).smallIcon, "");
    EXPECT_EQ(Row(1).subItems[LocationColumn - 1].reportIcon, "DE");
    EXPECT_EQ(browser.Count(), "1 servers");
}

TEST_F(ServerListViewTest, ShowsNoFlagForAnUnknownCountry) {
    StartWith(
        {With([](ServerRecord& s) { s.Country = "--"; }), With([](ServerRecord& s) { s.Country = ""; })});
    EXPECT_EQ(browser.Cell(1, LocationColumn), "--");
    EXPECT_EQ(Row(1).subItems[LocationColumn - 1].reportIcon, "");
    EXPECT_EQ(Row(2).subItems[LocationColumn - 1].reportIcon, "");
}

TEST_F(ServerListViewTest, ShowsALockForAnyServerThatWantsAPassword) {
    StartWith({With([](ServerRecord& s) { s.Locked = 1; }), With([](ServerRecord& s) { s.Locked = -1; }),
               With([](ServerRecord& s) { s.Locked = 0; })});
    EXPECT_EQ(Row(1).smallIcon, "locked");
    EXPECT_EQ(Row(2).smallIcon, "locked");
    EXPECT_EQ(Row(3).smallIcon, "");
}

TEST_F(ServerListViewTest, ShowsTheLastVisitAsTheLocaleWritesIt) {
    StartWith({With([](ServerRecord& s) {
                   s.LastVisit = DateTime::From({2026, 11, 21, 20, 5, 0});
               }),
               With([](ServerRecord& s) {
                   s.LastVisit = DateTime::From({2026, 11, 21, 0, 0, 0});
               }),
               With([](ServerRecord& s) { s.LastVisit = {}; })});
    EXPECT_THAT(browser.Column(LastVisitColumn), ElementsAre("11/21/2026 8:05:00 PM", "11/21/2026", ""));
}

TEST_F(ServerListViewTest, ShowsNumbersOfAnySize) {
    StartWith({With([](ServerRecord& s) {
        s.Port = Highest;
        s.Ping = Lowest;
        s.Players = -5;
        s.MaxPlayers = Highest;
    })});
    EXPECT_EQ(browser.Cell(1, AddressColumn), "192.0.2.7:2147483647");
    EXPECT_EQ(browser.Cell(1, PingColumn), "-2147483648");
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "-5 / 2147483647");
}

TEST_F(ServerListViewTest, PassesOnlyWhatEveryFilterLetsThrough) {
    struct Case {
        std::int32_t modFilter;
        std::int32_t filterLocked;
        std::int32_t filterPing;
        const char* modName;
        std::int32_t locked;
        std::int32_t ping;
        bool passes;
    };
    const Case cases[] = {
        {0, 0, 0, "x", 0, 9999, true},
        {0, 0, 0, "x", 1, 9999, true},
        {0, 1, 0, "x", 0, 9999, true},
        {1, 1, 50, "osp", 0, 50, true},
        {2, 0, 0, "ra3", 1, 1, true},
        // the MOD
        {1, 0, 0, "OSP", 0, 1, false},
        {1, 0, 0, "osp ", 0, 1, false},
        {1, 0, 0, "", 0, 1, false},
        {1, 0, 0, "ra3", 0, 1, false},
        // the password
        {0, 1, 0, "x", 1, 1, false},
        {0, 1, 0, "x", 2, 1, false},
        {0, 0, 0, "x", 2, 1, false}, // from a damaged file: the sum is tested
        {0, 0, 0, "x", Highest, 1, false},
        {0, 1, 0, "x", Highest, 1, false},
        {0, 7, 0, "x", 1, 1, false},
        {0, -7, 0, "x", 1, 1, false},
        {0, 1, 0, "x", Lowest, 1, true},
        {0, 1, 0, "x", -1, 1, true},
        // the ping
        {0, 0, 20, "x", 0, 20, true},
        {0, 0, 20, "x", 0, 21, false},
        {0, 0, 50, "x", 0, 51, false},
        {0, 0, 100, "x", 0, 100, true},
        {0, 0, 100, "x", 0, 101, false},
        {0, 0, 100, "x", 0, Highest, false},
        {0, 0, 100, "x", 0, 0, true},
        {0, 0, 100, "x", 0, -5, true},
        {0, 0, 1, "x", 0, 9999, true}, // not one of the limits that the tree offers
        {0, 0, 30, "x", 0, 31, true},
        {0, 0, -20, "x", 0, 9999, true},
        {0, 0, Highest, "x", 0, 9999, true},
    };
    ASSERT_TRUE(browser.Start());
    browser.program.Servers.Reset(1);
    for (const Case& c : cases) {
        View().ModFilter = c.modFilter;
        browser.program.FilterLocked = c.filterLocked;
        browser.program.FilterPing = c.filterPing;
        ServerRecord& server = browser.program.Servers[1];
        server.ModName = c.modName;
        server.Locked = c.locked;
        server.Ping = c.ping;
        EXPECT_EQ(View().ValidateFilter(1), c.passes)
            << c.modFilter << " " << c.filterLocked << " " << c.filterPing << ": '" << c.modName << "' "
            << c.locked << " " << c.ping;
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewTest, PassesNothingThatItCannotTest) {
    StartWith({Record()});
    // The MOD comes first: whatever another filter says, it is the one that cannot be tested.
    browser.program.FilterPing = 20;
    browser.program.FilterLocked = 1;
    browser.program.Servers[1].Locked = 1;
    for (const std::int32_t mod : {-1, 5, Highest, Lowest}) {
        View().ModFilter = mod;
        EXPECT_FALSE(View().ValidateFilter(1)) << mod;
        EXPECT_EQ(browser.Errors().back(), "frmMain;ValidateFilter;9");
    }
    View().ModFilter = 0;
    for (const std::int32_t index : {-1, 2, Highest, Lowest}) {
        EXPECT_FALSE(View().ValidateFilter(index)) << index;
        EXPECT_EQ(browser.Errors().back(), "frmMain;ValidateFilter;9");
    }
    EXPECT_THAT(browser.Errors(), SizeIs(8));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerListViewTest, ListsInTheOrderOfTheListAndCountsWhatItDoesNotShow) {
    std::vector<ServerRecord> records(57, Record());
    for (std::size_t i = 0; i < records.size(); ++i) {
        records[i].Port = static_cast<std::int32_t>(i) + 1;
        records[i].Locked = i % 3 == 0 ? 0 : 1;
    }
    browser.Set("Filter", "Locked", 1);
    StartWith(records);
    EXPECT_EQ(browser.RowCount(), 19);
    EXPECT_EQ(browser.Count(), "57 servers");
    EXPECT_EQ(browser.Tags().front(), "1");
    EXPECT_EQ(browser.Tags().back(), "55");
}

TEST_F(ServerListViewTest, ListsOnlyWhatIsNotListedYet) {
    StartWith({Record(), Record()});
    browser.program.AppendServer() = Record();
    browser.program.PreviousServerCount = 2;
    View().ListServers();
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(browser.Count(), "3 servers");
    browser.program.PreviousServerCount = 3;
    View().ListServers();
    EXPECT_EQ(browser.RowCount(), 3);
}

TEST_F(ServerListViewTest, ListsNeitherHolesNorWhatLiesBeyondTheList) {
    StartWith({Record(), ServerRecord(), Record()});
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "3"));
    EXPECT_EQ(browser.Count(), "3 servers");
    View().ResetServerViews();
    browser.program.ServerCount = 4; // as a short last record of a master leaves it
    View().ListServers();
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "3"));
    EXPECT_EQ(browser.Count(), "4 servers");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewTest, ShowsTheStoredCountryUnlessItIsToLookItUp) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n3221225984;3221226239;XX\r\n"); // 192.0.2.0/24
    StartWith({Record()});
    EXPECT_EQ(browser.Cell(1, LocationColumn), "DE");
    EXPECT_EQ(browser.fake.files.Reads("C:\\Quarn\\countryip.dat"), 0);
    View().AddServerListItem(1, true);
    EXPECT_EQ(browser.Cell(2, LocationColumn), "XX");
    EXPECT_EQ(browser.program.Servers[1].Country, "XX");
    EXPECT_EQ(Row(2).subItems[LocationColumn - 1].reportIcon, "XX");
}

TEST_F(ServerListViewTest, LogsAListThatItCannotWalk) {
    StartWith({Record(), Record()});
    browser.Controls().SetStatus(CountPanel, "untouched");
    browser.program.PreviousServerCount = -2;
    View().ListServers();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;ListServers;9"));
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2"));
    EXPECT_EQ(browser.Count(), "untouched");
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerListViewTest, LogsARecordThatItCannotAdd) {
    StartWith({Record()});
    for (const std::int32_t index : {-1, 2, Highest}) {
        View().AddServerListItem(index, false);
        EXPECT_EQ(browser.Errors().back(), "frmMain;AddServerListItem;9") << index;
    }
    EXPECT_EQ(browser.RowCount(), 1);
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerListViewTest, UpdatesARowFromTheCurrentServer) {
    StartWith({Record(), With([](ServerRecord& s) {
                   s.Address = "192.0.2.8";
                   s.Country = "FR";
                   s.Name = "Other";
                   s.Ping = 1;
                   s.Players = 9;
                   s.MaxPlayers = 10;
                   s.ModName = "ra3";
                   s.Map = "ra3map1";
                   s.Locked = 1;
               })});
    browser.Controls().lvwServers.TakeChanges();
    browser.program.CurrentServer = 2;
    View().UpdateServerListItem(1);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServers),
                ElementsAre("|192.0.2.7:27960|DE|Other|9 / 10|1|ra3|ra3map1|12:00:00 AM",
                            "|192.0.2.8:27960|FR|Other|9 / 10|1|ra3|ra3map1|"));
    EXPECT_EQ(Row(1).smallIcon, "locked");
    EXPECT_EQ(Row(1).main.tag, "1");
    EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().firstDirty, 1);
    browser.program.CurrentServer = 1;
    View().UpdateServerListItem(1);
    EXPECT_EQ(Row(1).smallIcon, "");
}

TEST_F(ServerListViewTest, RemovesARowWhoseRecordDoesNotPassAnyMore) {
    StartWith({Record(), Record(), Record()});
    browser.program.FilterPing = 50;
    browser.program.Servers[2].Ping = 51;
    browser.program.CurrentServer = 1; // the row's own record is tested
    View().UpdateServerListItem(2);
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "3"));
    browser.program.CurrentServer = 2;
    View().UpdateServerListItem(1);
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "3"));
}

TEST_F(ServerListViewTest, LogsARowThatItCannotUpdate) {
    StartWith({Record()});
    struct Case {
        std::int32_t row;
        const char* error;
    };
    for (const Case& c : {Case{0, "35600"}, Case{-1, "35600"}, Case{2, "35600"}, Case{Highest, "35600"}}) {
        View().UpdateServerListItem(c.row);
        EXPECT_EQ(browser.Errors().back(), std::string("frmMain;UpdateServerListItem;") + c.error) << c.row;
    }
    browser.program.CurrentServer = 7;
    View().UpdateServerListItem(1);
    EXPECT_EQ(browser.Errors().back(), "frmMain;UpdateServerListItem;9");
    browser.Controls().lvwServers.Edit(1).main.tag = "x";
    View().UpdateServerListItem(1);
    EXPECT_EQ(browser.Errors().back(), "frmMain;UpdateServerListItem;13");
    EXPECT_EQ(browser.RowCount(), 1);
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerListViewTest, LogsAClickOnARowThatNamesNoRecord) {
    StartWith({Record()});
    browser.program.CurrentServer = 1;
    browser.Controls().lvwServers.Edit(1).main.tag = "x";
    browser.ClickRow(1);
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;lvwServers_Click;13"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_EQ(browser.program.CurrentServer, 1);
}

TEST_F(ServerListViewTest, KeepsTheListWhenItsQuestionFails) {
    StartWith({Record()});
    browser.fake.prompts.whileOpen = [&] {
        if (browser.fake.prompts.shown.back().kind == FakePrompts::Kind::YesNo)
            throw RunTimeError(ErrorNumber::OutOfMemory);
    };
    View().mnuServerListClear_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServerListClear_Click;7"));
    EXPECT_EQ(browser.fake.prompts.shown.size(), 2U);
    EXPECT_EQ(browser.program.ServerCount, 1);
    EXPECT_EQ(browser.RowCount(), 1);
}

TEST_F(ServerListViewTest, ResetsItsViewsToTheListAsItIs) {
    StartWith(3);
    browser.ClickRow(2);
    browser.program.Servers[2].PlayerList.Reset(1);
    browser.program.Servers[2].Players = 1;
    browser.program.Servers[2].Variables = "\\a\\1";
    browser.Form().servers.lvwServers_Click();
    ASSERT_EQ(browser.Controls().lvwPlayers.RowCount(), 1);
    browser.program.ServerCount = 77;
    browser.program.PreviousServerCount = 77;
    View().ResetServerViews();
    EXPECT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(browser.Controls().lvwServVars.RowCount(), 0);
    EXPECT_EQ(browser.Controls().lvwPlayers.RowCount(), 0);
    EXPECT_EQ(browser.program.ServerCount, 3);
    EXPECT_EQ(browser.program.PreviousServerCount, 0);
    EXPECT_EQ(browser.program.CurrentServer, 0);
}

} // namespace
} // namespace quarn
