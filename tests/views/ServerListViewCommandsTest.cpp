// The user's commands on the server list: select, sort, copy, add, delete, clear, export.

#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"
#include "tests/views/ListedServersTest.h"
#include "views/ServerListView.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ServerListViewCommandsTest : public ListedServersTest {};

TEST_F(ServerListViewCommandsTest, ShowsTheDetailsOfTheRowThatIsClicked) {
    StartWith(3);
    ServerRecord& server = browser.program.Servers[2];
    server.Players = 1;
    server.PlayerList.Reset(1);
    server.PlayerList[1] = {7, 48, "Anna"};
    server.Variables = "\\a\\1";
    browser.ClickRow(2);
    EXPECT_EQ(browser.program.CurrentServer, 2);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("Anna|7|48"));
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), ElementsAre("a|1"));
    browser.ClickRow(1);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), IsEmpty());
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), IsEmpty());
}

TEST_F(ServerListViewCommandsTest, TakesTheFocusedRowAmongSeveral) {
    StartWith(4);
    browser.SelectRows({3, 1, 4});
    View().lvwServers_Click();
    EXPECT_EQ(browser.program.CurrentServer, 3);
    browser.Controls().lvwServers.NoteFocused(2); // not selected
    View().lvwServers_Click();
    EXPECT_EQ(browser.program.CurrentServer, 1);
}

TEST_F(ServerListViewCommandsTest, IgnoresAClickNextToTheRows) {
    StartWith(2);
    browser.ClickRow(2);
    browser.SelectRows({});
    View().lvwServers_Click();
    View().lvwServers_MouseUp();
    EXPECT_EQ(browser.program.CurrentServer, 2);
    EXPECT_EQ(browser.program.LastServer, 2);
}

TEST_F(ServerListViewCommandsTest, IgnoresAClickOnAnEmptyList) {
    StartWith(0);
    View().lvwServers_Click();
    View().lvwServers_KeyUp(40);
    View().lvwServers_MouseUp();
    EXPECT_EQ(browser.program.CurrentServer, 0);
    EXPECT_EQ(browser.program.LastServer, 0);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewCommandsTest, FollowsTheKeysThatMoveTheSelection) {
    StartWith(3);
    struct Case {
        std::int32_t keyCode;
        bool follows;
    };
    for (const Case& c :
         {Case{38, true}, Case{40, true}, Case{33, true}, Case{34, true}, Case{35, true}, Case{36, true},
          Case{37, false}, Case{39, false}, Case{32, false}, Case{41, false}, Case{13, false}, Case{9, false},
          Case{65, false}, Case{0, false}, Case{-38, false}}) {
        browser.ClickRow(2);
        browser.program.CurrentServer = 0;
        View().lvwServers_KeyUp(c.keyCode);
        EXPECT_EQ(browser.program.CurrentServer, c.follows ? 2 : 0) << c.keyCode;
    }
}

// As a letter does that begins a name.
TEST_F(ServerListViewCommandsTest, FollowsAnyKeyThatHasChangedTheSelection) {
    StartWith(3);
    browser.ClickRow(1);
    for (const std::int32_t keyCode : {65, 32, 37, 16, 107}) {
        browser.SelectRows({3});
        View().lvwServers_KeyUp(keyCode);
        EXPECT_EQ(browser.program.CurrentServer, 3) << keyCode;
        browser.SelectRows({1});
        View().lvwServers_KeyUp(keyCode);
        EXPECT_EQ(browser.program.CurrentServer, 1) << keyCode;
    }
}

// A scan selects each row in turn, and shows its details when they are there.
TEST_F(ServerListViewCommandsTest, FollowsNoKeyWhenTheProgramHasChangedTheSelection) {
    StartWith(3);
    browser.ClickRow(1);
    browser.Controls().lvwServers.SelectOnly(3);
    View().lvwServers_KeyUp(65);
    EXPECT_EQ(browser.program.CurrentServer, 1);
}

TEST_F(ServerListViewCommandsTest, RecordsTheRowOnReleaseOfTheMouseOnly) {
    StartWith(3);
    browser.SelectRows({3});
    View().lvwServers_Click();
    View().lvwServers_KeyUp(40);
    EXPECT_EQ(browser.program.LastServer, 0);
    View().lvwServers_MouseUp();
    EXPECT_EQ(browser.program.LastServer, 3);
}

TEST_F(ServerListViewCommandsTest, LogsARowWithoutARecord) {
    StartWith(2);
    browser.Controls().lvwServers.Edit(2).main.tag = "9";
    browser.ClickRow(2);
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;RefreshPlayers;9", "frmMain;RefreshVariables;9"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    View().mnuServCopyAddress_Click();
    EXPECT_EQ(browser.fake.shell.clipboard, std::nullopt);
}

TEST_F(ServerListViewCommandsTest, SortsByAHeaderAndRemembersIt) {
    StartWith(3);
    View().lvwServers_ColumnClick(6);
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("3", "2", "1"));
    EXPECT_EQ(browser.program.LastSortColumn, 6);
    EXPECT_EQ(browser.program.LastSortOrder, 1);
    View().lvwServers_ColumnClick(6);
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1", "2", "3"));
    EXPECT_EQ(browser.program.LastSortOrder, 0);
    View().lvwServers_ColumnClick(4);
    EXPECT_EQ(browser.program.LastSortColumn, 4);
    EXPECT_EQ(browser.program.LastSortOrder, 1);
}

TEST_F(ServerListViewCommandsTest, ShowsTheArrowOnlyWhileTheRowsAreInThatOrder) {
    StartWith(3);
    const auto arrow = [&] { return browser.Controls().lvwServers.columns[6].headerIcon; };
    View().lvwServers_ColumnClick(6);
    EXPECT_EQ(arrow(), "descending");
    View().AddServer("192.0.2.9", "1");
    EXPECT_EQ(arrow(), "");
    View().lvwServers_ColumnClick(6);
    EXPECT_EQ(arrow(), "ascending") << "the order flips at every click";
    browser.ClickNode("fltping");
    EXPECT_EQ(arrow(), "");
    View().lvwServers_ColumnClick(6);
    EXPECT_EQ(arrow(), "descending");
    browser.SelectRows({2});
    View().mnuServDelete_Click();
    EXPECT_EQ(arrow(), "descending") << "what is left is in order";
    browser.ClickNode("q3"); // saved, not listed again
    EXPECT_EQ(arrow(), "descending");
}

TEST_F(ServerListViewCommandsTest, LeavesTheRecordsInTheirOrderWhenItSorts) {
    StartWith(3);
    View().lvwServers_ColumnClick(6);
    EXPECT_THAT(Names(), ElementsAre("Server 1", "Server 2", "Server 3"));
    EXPECT_THAT(browser.Tags(), ElementsAre("3", "2", "1"));
    browser.ClickRow(1);
    EXPECT_EQ(browser.program.CurrentServer, 3);
    browser.ClickNode("q3");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")), HeadlessBrowser::ListFile(addresses));
}

TEST_F(ServerListViewCommandsTest, StaysUsableWhenItCannotSort) {
    StartWith(3);
    View().lvwServers_ColumnClick(9); // no server was ever visited
    EXPECT_THAT(browser.Errors(), ElementsAre("clsQuickList;SortList;13"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_THAT(browser.Column(LastVisitColumn), ElementsAre("", "", ""));
    EXPECT_FALSE(browser.Controls().lvwServers.updatesLocked);
    View().lvwServers_ColumnClick(6);
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("3", "2", "1"));
}

TEST_F(ServerListViewCommandsTest, SortsThePlayersByThemselves) {
    StartWith(1);
    ServerRecord& server = browser.program.Servers[1];
    server.Players = 3;
    server.PlayerList.Reset(3);
    server.PlayerList[1] = {7, 48, "b"};
    server.PlayerList[2] = {-10, 5, "A"};
    server.PlayerList[3] = {100, 120, "c"};
    browser.ClickRow(1);
    const std::int32_t column = browser.program.LastSortColumn;
    View().lvwPlayers_ColumnClick(2);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("c|100|120", "b|7|48", "A|-10|5"));
    View().lvwPlayers_ColumnClick(1);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("A|-10|5", "b|7|48", "c|100|120"));
    EXPECT_EQ(browser.program.LastSortColumn, column);
    for (const std::int32_t outside : {0, 4, 65537, -65535})
        View().lvwPlayers_ColumnClick(outside);
    EXPECT_THAT(browser.Errors(), SizeIs(4));
}

TEST_F(ServerListViewCommandsTest, CopiesAddressAndPort) {
    StartWith(3);
    browser.fake.shell.clipboard = "before";
    browser.SelectRows({2});
    View().mnuServCopyAddress_Click();
    EXPECT_EQ(browser.fake.shell.clipboard, addresses[1]);
    EXPECT_EQ(browser.program.CurrentServer, 2);
}

TEST_F(ServerListViewCommandsTest, CopiesNothingWithoutASelection) {
    StartWith(2);
    browser.program.CurrentServer = 1;
    View().mnuServCopyAddress_Click();
    EXPECT_EQ(browser.fake.shell.clipboard, std::nullopt);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewCommandsTest, ShowsAnErrorIfTheClipboardIsInUse) {
    StartWith(1);
    browser.SelectRows({1});
    browser.fake.shell.clipboardBlocked = true;
    View().mnuServCopyAddress_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServCopyAddress_Click;521"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
}

TEST_F(ServerListViewCommandsTest, AddsAServerAtTheEndOfListAndView) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n3221225984;3221226239;XX\r\n");
    StartWith(2);
    View().AddServer("192.0.2.9", "27961");
    View().AddServer("192.0.2.9", " 27961 ");
    EXPECT_EQ(browser.program.ServerCount, 4);
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(Names(), ElementsAre("Server 1", "Server 2", "", ""));
    EXPECT_EQ(browser.Cell(3, AddressColumn), "192.0.2.9:27961");
    EXPECT_EQ(browser.Cell(4, AddressColumn), "192.0.2.9:27961");
    EXPECT_EQ(browser.program.Servers[4].Country, "XX");
    EXPECT_EQ(browser.program.Servers[4].PlayerList.HighestIndex(), 0);
    View().AddServer("1.1.1.1", "1"); // sorted in by the next click on a header only
    EXPECT_EQ(browser.Cell(5, AddressColumn), "1.1.1.1:1");
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
}

TEST_F(ServerListViewCommandsTest, AddsNothingWithAMalformedPort) {
    StartWith(2);
    struct Case {
        const char* port;
        const char* error;
    };
    for (const Case& c :
         {Case{"", "13"}, Case{"x", "13"}, Case{"27a", "13"}, Case{"2147483648", "6"},
          Case{"-2147483649", "6"}, Case{"1e300", "6"}, Case{"1 2", "13"}, Case{"0x10", "13"}}) {
        View().AddServer("192.0.2.9", c.port);
        EXPECT_EQ(browser.Errors().back(), std::string("frmMain;AddServer;") + c.error) << c.port;
        EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)) << c.port;
        browser.fake.prompts.shown.clear();
    }
    EXPECT_EQ(browser.program.ServerCount, 2);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 2);
    EXPECT_EQ(browser.RowCount(), 2);
    View().AddServer("192.0.2.9", "-1"); // kept as typed
    EXPECT_EQ(browser.program.Servers[3].Port, -1);
}

TEST_F(ServerListViewCommandsTest, AddsNoMoreThanAListMayHold) {
    StartWith(0);
    browser.program.ServerCount = MaxServers;
    View().AddServer("192.0.2.9", "1");
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;AddServer;7"));
    EXPECT_EQ(browser.program.ServerCount, MaxServers);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 0);
}

TEST_F(ServerListViewCommandsTest, AddsAfterTheGapThatAMasterLeft) {
    StartWith(2);
    browser.program.ServerCount = 3;
    View().AddServer("192.0.2.9", "1");
    EXPECT_EQ(browser.program.ServerCount, 4);
    EXPECT_EQ(browser.program.Servers[3].Address, "");
    EXPECT_EQ(browser.program.Servers[4].Address, "192.0.2.9");
    EXPECT_EQ(browser.Tags().back(), "4");
}

TEST_F(ServerListViewCommandsTest, ClearsTheListOnlyAfterConfirmation) {
    StartWith(3);
    browser.ClickRow(1);
    browser.fake.prompts.yesNoAnswers = {false, true};
    View().mnuServerListClear_Click();
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_EQ(browser.program.ServerCount, 3);
    EXPECT_EQ(browser.program.CurrentServer, 1);
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].kind, FakePrompts::Kind::YesNo);
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Clear server list");
    EXPECT_EQ(
        browser.fake.prompts.shown[0].text,
        "This will delete your current server list. All servers and scanning data in it will be lost.\r\n"
        "Are you sure you want to proceed?");
    View().mnuServerListClear_Click();
    EXPECT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(browser.program.ServerCount, 0);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 0);
    EXPECT_EQ(browser.program.CurrentServer, 0);
    EXPECT_EQ(browser.Controls().lvwServVars.RowCount(), 0);
    // The file is written when another list is shown.
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 0);
    browser.ClickNode("d3");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")), " 0\r\n");
}

TEST_F(ServerListViewCommandsTest, ReturnsWhetherItCleared) {
    StartWith(1);
    browser.fake.prompts.yesNoAnswers = {false, true};
    EXPECT_FALSE(View().ConfirmClearServerList());
    EXPECT_TRUE(View().ConfirmClearServerList());
}

TEST_F(ServerListViewCommandsTest, ExportsAnEmptyLineForEachRow) {
    StartWith(3);
    browser.fake.prompts.fileAnswers = {"C:\\out.txt"};
    View().mnuServerListExport_Click();
    EXPECT_EQ(browser.fake.files.Get("C:\\out.txt"), "\r\n\r\n\r\n");
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].kind, FakePrompts::Kind::SaveFile);
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Save serverlist as...");
    EXPECT_EQ(browser.fake.prompts.shown[0].text, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
}

TEST_F(ServerListViewCommandsTest, ExportsNoServerThatIsFilteredOut) {
    StartWith(3);
    browser.program.Servers[2].Locked = 1;
    browser.ClickNode("fltkey");
    browser.fake.prompts.fileAnswers = {"C:\\out.txt"};
    View().mnuServerListExport_Click();
    EXPECT_EQ(browser.fake.files.Get("C:\\out.txt"), "\r\n\r\n");
}

TEST_F(ServerListViewCommandsTest, ExportsATableUnderANameForOne) {
    StartWith(2);
    browser.program.Servers[2].Name = "=cmd|'/c calc'!A1";
    browser.ClickNode("fltping"); // lists the servers again
    browser.fake.prompts.fileAnswers = {"C:\\out.CSV"};
    View().mnuServerListExport_Click();
    const std::string csv = browser.fake.files.Get("C:\\out.CSV");
    EXPECT_TRUE(
        csv.starts_with("\xEF\xBB\xBF,IP Address,Location,Name,Players,Ping,Game,Map,Last Visit\r\n,"))
        << csv;
    EXPECT_NE(csv.find(", =cmd|'/c calc'!A1,"), std::string::npos) << csv;
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 3);
    EXPECT_EQ(browser.fake.prompts.shown[0].text, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
}

TEST_F(ServerListViewCommandsTest, AFullDiskLeavesTheTableThatWasThere) {
    StartWith(3);
    browser.fake.files.Put("C:\\out.csv", "old");
    browser.fake.files.freeBytes = 20;
    browser.fake.prompts.fileAnswers = {"C:\\out.csv"};
    View().mnuServerListExport_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServerListExport_Click;61"));
    ASSERT_GE(browser.fake.prompts.shown.size(), 2U);
    EXPECT_NE(browser.fake.prompts.shown[1].text.find("Disk full"), std::string::npos);
    EXPECT_EQ(browser.fake.files.Get("C:\\out.csv"), "old");
}

TEST_F(ServerListViewCommandsTest, ExportsNothingWhenCancelled) {
    StartWith(3);
    const std::int32_t writes = browser.fake.files.TotalWrites();
    browser.fake.prompts.fileAnswers = {""};
    View().mnuServerListExport_Click();
    EXPECT_EQ(browser.fake.files.TotalWrites(), writes);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewCommandsTest, ShowsAnErrorIfItCannotExport) {
    StartWith(3);
    browser.fake.files.Put("C:\\out.txt", "old");
    browser.fake.files.FailWrites("C:\\out.txt", ErrorNumber::PermissionDenied);
    browser.fake.prompts.fileAnswers = {"C:\\out.txt"};
    View().mnuServerListExport_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServerListExport_Click;70"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(2));
    EXPECT_EQ(browser.fake.files.Get("C:\\out.txt"), "old");
}

} // namespace
} // namespace quarn
