// Replies that come after their query was finished: they reach the record that was asked, and no other.

#include "views/QueryResults.h"
#include "tests/views/ScanTest.h"
#include "views/ScanEngine.h"

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class QueryResultsTest : public ScanTest {
  protected:
    // Server 1 answers so late that a tick has cut it off: the answer comes when the others are asked
    // already.
    void StartWithALateServer(std::int32_t count, std::int32_t latency = 700) {
        StartWith(count);
        browser.network.servers.at(Address(1)).latency = latency;
        browser.In(1, [&] { browser.Form().scan.tmrTimeout_Timer(); });
    }
    std::int32_t RowOf(std::int32_t number) {
        for (std::int32_t row = 1; row <= browser.RowCount(); ++row)
            if (browser.Cell(row, AddressColumn) == Address(number))
                return row;
        return 0;
    }
};

TEST_F(QueryResultsTest, ALateReplyCompletesTheRowThatATickCutOff) {
    StartWithALateServer(2);
    browser.network.servers.at(Address(1)).status.players = {{"Anna", 1, 2, 0}};
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000"); // for now
    EXPECT_EQ(browser.Message(), "Ready.");
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.Cell(1, PingColumn), "700");
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "1 / 16");
    EXPECT_THAT(browser.Errors(), IsEmpty());
    ExpectIdle();
}

TEST_F(QueryResultsTest, HonestServersAreNeverShownDead) {
    for (const std::int32_t latency : {40, 120}) {
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(300);
        other.PutList("q3", servers);
        other.PutServers(servers);
        for (auto& [address, server] : other.network.servers)
            server.latency = latency;
        ASSERT_TRUE(other.Start());
        other.RefreshAll();
        other.fake.events.RunFor(Timeout);
        EXPECT_THAT(other.Column(PingColumn), Each(std::to_string(latency)));
        EXPECT_THAT(other.network.Asked(), SizeIs(300));
    }
}

TEST_F(QueryResultsTest, AHalfLifeRowIsCompleteThoughPlayersAndRulesComeLater) {
    StartWith(3, Family::HalfLife);
    browser.network.servers.at(Address(1)).status.players = {{"Gordon", 5, 0, 60}};
    std::int32_t requests = 0;
    Script(1, [&] {
        const char* const words[] = {"info", "players", "rules"};
        browser.sckServer.ReplyIn(requests == 0 ? 10 : 40,
                                  HonestReply(1, "\xFF\xFF\xFF\xFF"s + words[requests]));
        ++requests;
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 10 + 2 * Latency); // nothing is waited for
    browser.fake.events.RunFor(100);
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "1 / 16");
    EXPECT_NE(Server(1).Variables.find("mp_timelimit\\30"), std::string::npos);
    EXPECT_EQ(browser.Cell(1, PingColumn), "10"); // of the reply that finished the query
    EXPECT_EQ(Server(2).Players, 0);
}

TEST_F(QueryResultsTest, ALateReplyChangesNeitherTheOrderNorTheTimesOfTheRequests) {
    std::vector<std::vector<std::int32_t>> sentTicks;
    for (const bool late : {false, true}) {
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(20);
        other.PutList("q3", servers);
        other.PutServers(servers);
        other.network.servers.erase(servers[0]); // the timer comes
        if (late)
            other.network.scripts[servers[0]] = [&other](const SentDatagram& request) {
                request.socket->ReplyIn(1000, "\xFF\xFF\xFF\xFFstatusResponse\n\\sv_hostname\\Late\n");
            };
        ASSERT_TRUE(other.Start());
        other.RefreshAll();
        std::vector<std::int32_t> ticks;
        for (const SentDatagram& sent : other.sckServer.sent)
            ticks.push_back(sent.tick);
        sentTicks.push_back(ticks);
    }
    EXPECT_EQ(sentTicks[0], sentTicks[1]);
}

TEST_F(QueryResultsTest, ALateReplyLeavesSelectionAndCurrentServerAlone) {
    StartWithALateServer(5);
    browser.RefreshAll();
    browser.ClickRow(4);
    browser.Controls().lvwServers.TakeChanges();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.program.CurrentServer, 4);
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 4);
    const ListView::Changes changes = browser.Controls().lvwServers.TakeChanges();
    EXPECT_EQ(changes.ensureVisible, 0);
    EXPECT_FALSE(changes.selection);
    EXPECT_EQ(changes.firstDirty, 1);
    EXPECT_EQ(changes.lastDirty, 1);
}

TEST_F(QueryResultsTest, TheDetailsFollowWhereTheyShowTheServer) {
    StartWithALateServer(3);
    browser.network.servers.at(Address(1)).status.players = {{"Anna", 1, 2, 0}};
    browser.RefreshAll();
    browser.ClickRow(1);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), IsEmpty());
    browser.fake.events.RunFor(Timeout);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("Anna|1|2"));
}

TEST_F(QueryResultsTest, ALateReplyFindsItsRecordAfterASort) {
    StartWithALateServer(5);
    browser.RefreshAll();
    browser.Form().servers.lvwServers_ColumnClick(2); // by address, descending
    ASSERT_EQ(RowOf(1), 5);
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.Cell(5, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 5");
}

TEST_F(QueryResultsTest, ALateReplyFindsItsRecordAfterOthersWereDeleted) {
    StartWith(5);
    browser.network.servers.at(Address(4)).latency = 700;
    browser.network.whenAsked = [&](const std::string& address) {
        if (address == Address(4))
            browser.In(1, [&] { browser.Form().scan.tmrTimeout_Timer(); });
    };
    browser.RefreshAll();
    browser.SelectRows({1, 2});
    browser.Form().servers.mnuServDelete_Click();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(Server(2).Address + ":27960", Address(4));
    EXPECT_EQ(Server(2).Name, "Live 4");
    EXPECT_EQ(browser.Cell(RowOf(4), NameColumn), "Live 4");
    EXPECT_EQ(browser.Cell(RowOf(3), NameColumn), "Live 3");
    EXPECT_EQ(browser.Cell(RowOf(5), NameColumn), "Live 5");
}

TEST_F(QueryResultsTest, ALateReplyOfADeletedServerIsDropped) {
    StartWithALateServer(3);
    browser.RefreshAll();
    browser.SelectRows({1});
    browser.Form().servers.mnuServDelete_Click();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.program.ServerCount, 2);
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 2", "Live 3"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(QueryResultsTest, ALateReplyBringsBackTheRowThatItsTimeOutTookAway) {
    StartWith(3);
    browser.ClickNode("png100");
    browser.network.servers.at(Address(1)).latency = 50;
    browser.In(1, [&] { browser.Form().scan.tmrTimeout_Timer(); });
    browser.RefreshAll();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_EQ(browser.Cell(RowOf(1), PingColumn), "50");
    // One that the filter hides for good is not listed.
    browser.network.servers.at(Address(1)).latency = 150;
    browser.In(1, [&] { browser.Form().scan.tmrTimeout_Timer(); });
    browser.SelectRows({RowOf(1)});
    browser.RefreshSelected();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.RowCount(), 2);
    EXPECT_EQ(Server(1).Ping, 150);
}

TEST_F(QueryResultsTest, ALateReplyIsNotReadIntoAListThatReplacedItsOwn) {
    for (const char* how : {"another game", "a MOD", "clear", "renew", "add to favorites"}) {
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(3);
        other.PutList("q3", servers);
        other.PutList("d3", {"127.0.3.1:27666", "127.0.3.2:27666"});
        other.PutServers(servers);
        other.network.servers.at(servers[0]).latency = 700;
        ASSERT_TRUE(other.Start());
        other.In(1, [&] { other.Form().scan.tmrTimeout_Timer(); });
        other.RefreshAll();
        other.SelectRows({2});
        other.fake.prompts.yesNoAnswers = {true};
        const std::string command = how;
        if (command == "another game")
            other.ClickNode("d3");
        else if (command == "a MOD")
            other.ClickNode("mod1");
        else if (command == "clear")
            other.Form().servers.mnuServerListClear_Click();
        else if (command == "renew")
            other.Form().master.mnuServerListGet_Click();
        else
            other.Form().tree.mnuServAddToFavorites_Click(1);
        EXPECT_EQ(other.sckServer.OpenCount(), 0) << how;
        other.fake.events.RunFor(2000);
        for (std::int32_t i = 1; i <= other.program.Servers.HighestIndex(); ++i)
            EXPECT_NE(other.program.Servers[i].Ping, 700) << how;
        EXPECT_THAT(other.Errors(), IsEmpty()) << how;
    }
}

TEST_F(QueryResultsTest, ALateReplyIsDroppedWhenItsServerIsAskedAgain) {
    StartWithALateServer(2, 300);
    browser.RefreshAll();
    browser.network.servers.at(Address(1)).latency = 30;
    browser.network.servers.at(Address(1)).status.map = "later";
    browser.SelectRows({1});
    browser.RefreshSelected();
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(browser.Cell(1, PingColumn), "30");
    ExpectIdle();
}

TEST_F(QueryResultsTest, RowsWaitForALateReplyWhileTheListIsSorted) {
    StartWithALateServer(4);
    browser.RefreshAll();
    std::vector<std::string> names;
    browser.fake.events.whenYielding = [&](std::int32_t) {
        browser.fake.events.whenYielding = nullptr;
        browser.fake.events.RunFor(Timeout); // the reply comes in the middle
        names = browser.Column(NameColumn);
    };
    browser.Form().servers.lvwServers_ColumnClick(4); // by name
    EXPECT_THAT(names, ::testing::Contains("Server 1"));
    EXPECT_EQ(browser.Cell(RowOf(1), NameColumn), "Live 1");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(QueryResultsTest, ALateReplyDoesNothingAfterTheEnd) {
    StartWithALateServer(2);
    browser.RefreshAll();
    browser.Form().Unload();
    EXPECT_EQ(browser.sckServer.OpenCount(), 0);
    browser.fake.events.RunFor(Timeout);
    EXPECT_EQ(Server(1).Name, "Server 1");
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(QueryResultsTest, TheDetailsOfAListAreBounded) {
    StartWith(1'200, Family::HalfLife);
    const std::string rules = "\xFF\xFF\xFF\xFF"
                              "E" +
                              std::string(65'000, 'x');
    for (std::int32_t n = 1; n <= 1'200; ++n)
        Script(n, [&] {
            for (int i = 0; i < 4; ++i)
                browser.sckServer.ReplyIn(1, rules);
        });
    browser.RefreshAll();
    std::size_t bytes = 0;
    for (std::int32_t i = 1; i <= 1'200; ++i)
        bytes += Server(i).Variables.size();
    EXPECT_LE(bytes, QueryResults::MostDetailBytes);
    EXPECT_GT(bytes, QueryResults::MostDetailBytes / 2);
    EXPECT_THAT(browser.LogFile(), ::testing::Contains("frmMain;sckServer_DataArrival;7"));
    EXPECT_EQ(browser.program.AppLog->ErrorCount(), 0);
}

} // namespace
} // namespace quarn
