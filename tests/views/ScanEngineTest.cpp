// A scan without interruptions.

#include "views/ScanEngine.h"

#include "tests/views/ScanTest.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ScanEngineTest : public ScanTest {};

TEST_F(ScanEngineTest, QueriesEveryRowInTheOrderOfTheView) {
    StartWith(4);
    browser.Form().servers.lvwServers_ColumnClick(6); // by ping, descending
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(4, 3, 2, 1));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 4", "Live 3", "Live 2", "Live 1"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20", "20", "20"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
    ExpectIdle();
}

TEST_F(ScanEngineTest, ShowsItsProgressAndItsEnd) {
    StartWith(2);
    browser.network.whenAsked = [&](const std::string&) {
        EXPECT_EQ(browser.Message(), "Retrieving server stats, please wait.");
        EXPECT_EQ(browser.Controls().pbScanning.Maximum(), 2);
        EXPECT_TRUE(browser.Controls().tmrTimeout.Enabled());
    };
    browser.RefreshAll();
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_EQ(browser.Count(), "2 servers");
    EXPECT_EQ(browser.Controls().pbScanning.Value(), 1);
    EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
}

TEST_F(ScanEngineTest, CountsTheRowsAgainstTheWholeList) {
    StartWith(250);
    browser.ClickNode("png100"); // rows 1 to 100 remain
    ASSERT_EQ(browser.RowCount(), 100);
    for (auto& [address, server] : browser.network.servers)
        server.latency = 1; // done before the timer ticks
    std::vector<std::string> counts;
    std::vector<std::int32_t> progress;
    std::vector<std::int32_t> selected;
    browser.network.whenAsked = [&](const std::string&) {
        counts.push_back(browser.Count());
        progress.push_back(browser.Controls().pbScanning.Value());
        selected.push_back(browser.Controls().lvwServers.SelectedRow());
        EXPECT_EQ(browser.Controls().pbScanning.Maximum(), 250);
        EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().ensureVisible, selected.back());
    };
    browser.RefreshAll();
    ASSERT_THAT(counts, SizeIs(100));
    for (std::int32_t i = 1; i <= 100; ++i) {
        const std::size_t at = static_cast<std::size_t>(i) - 1;
        EXPECT_EQ(counts[at], std::to_string(i) + "/250");
        EXPECT_EQ(progress[at], i);
        EXPECT_EQ(selected[at], i);
    }
    EXPECT_EQ(browser.Count(), "250 servers");
}

TEST_F(ScanEngineTest, QueriesTheSelectedRowsAndLeavesSelectionAndCountAlone) {
    StartWith(8);
    browser.SelectRows({7, 3});
    browser.Controls().lvwServers.TakeChanges();
    std::vector<std::int32_t> progress;
    browser.network.whenAsked = [&](const std::string&) {
        progress.push_back(browser.Controls().pbScanning.Value());
        EXPECT_EQ(browser.Count(), "8 servers");
        EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().ensureVisible, 0);
    };
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(3, 7));
    EXPECT_THAT(progress, ElementsAre(3, 7));
    EXPECT_TRUE(browser.Controls().lvwServers.Row(3).selected);
    EXPECT_TRUE(browser.Controls().lvwServers.Row(7).selected);
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_EQ(browser.Count(), "8 servers");
    ExpectIdle();
}

TEST_F(ScanEngineTest, AsksTheRowsThatWereSelectedAtItsStart) {
    StartWith(4);
    browser.SelectRows({1, 2});
    browser.network.whenAsked = [&](const std::string& address) {
        if (address == Address(1))
            browser.SelectRows({4});
    };
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(1, 2));
}

TEST_F(ScanEngineTest, EndsAtOnceWhenThereIsNothingToQuery) {
    StartWith(0);
    browser.RefreshAll();
    EXPECT_EQ(browser.Count(), "0 servers");
    EXPECT_EQ(browser.Message(), "Ready.");
    browser.RefreshSelected();
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    EXPECT_THAT(browser.Errors(), IsEmpty());
    ExpectIdle();
}

TEST_F(ScanEngineTest, QueriesNothingWithoutASelection) {
    StartWith(3);
    browser.RefreshSelected();
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineTest, SendsEachFamilysRequestsToTheServersAddress) {
    struct Case {
        Family family;
        std::vector<std::string> requests;
    };
    using namespace std::string_literals;
    for (const Case& c :
         {Case{Family::Quake3, {"\xFF\xFF\xFF\xFFgetstatus"s}},
          Case{Family::Doom3, {"\xFF\xFFgetinfo\0\0\0\0"s}},
          Case{Family::HalfLife,
               {"\xFF\xFF\xFF\xFFinfo"s, "\xFF\xFF\xFF\xFFplayers"s, "\xFF\xFF\xFF\xFFrules"s}}}) {
        HeadlessBrowser other;
        const std::vector<std::string> server = {"127.0.9.9:28004"};
        const char* const shorts[] = {"q3", "d3", "hl"};
        other.PutList(shorts[static_cast<int>(c.family)], server);
        other.PutServers(server, c.family);
        other.Set("Selection", "LastGame", HeadlessBrowser::Q3 + static_cast<int>(c.family));
        ASSERT_TRUE(other.Start());
        other.RefreshAll();
        std::vector<std::string> requests;
        for (const SentDatagram& sent : other.sckServer.sent) {
            EXPECT_EQ(sent.host, "127.0.9.9");
            EXPECT_EQ(sent.port, 28004);
            requests.push_back(sent.bytes);
        }
        EXPECT_EQ(requests, c.requests);
        EXPECT_EQ(other.Cell(1, NameColumn), "Live 1");
        EXPECT_EQ(other.Cell(1, MapColumn), "q3dm17");
        EXPECT_EQ(other.Cell(1, GameColumn), "baseq3");
        EXPECT_EQ(other.Cell(1, PlayersColumn), "0 / 16");
    }
}

TEST_F(ScanEngineTest, UsesAPortOfItsOwnForEachQuery) {
    StartWith(3);
    browser.RefreshAll();
    ASSERT_THAT(browser.sckServer.sent, SizeIs(3));
    EXPECT_NE(browser.sckServer.sent[0].socket, browser.sckServer.sent[1].socket);
    EXPECT_NE(browser.sckServer.sent[1].socket, browser.sckServer.sent[2].socket);
    EXPECT_NE(browser.sckServer.sent[0].socket, browser.sckServer.sent[2].socket);
}

TEST_F(ScanEngineTest, ReadsTheClockBeforeItSends) {
    StartWith(1);
    browser.fake.clock.SetTickCount(70'000);
    std::int32_t sentTick = 0;
    browser.network.whenAsked = [&](const std::string&) {
        sentTick = browser.Form().scan.wait.QuerySentTick;
    };
    browser.RefreshAll();
    EXPECT_EQ(sentTick, 70'000);
}

TEST_F(ScanEngineTest, ReachesTheRecordThroughTheRowsTag) {
    StartWith(5);
    browser.SelectRows({2, 3});
    browser.Form().servers.mnuServDelete_Click(); // rows keep their tags 1, 4, 5
    browser.PutServers(addresses);
    browser.RefreshAll();
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "4", "5"));
    // The records are the former 1, 4 and 5: tags 4 and 5 are beyond them.
    EXPECT_THAT(Asked(), ElementsAre(1));
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;UpdateServer;9", "frmMain;UpdateServer;9"));
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    ExpectIdle();
}

TEST_F(ScanEngineTest, ContinuesAfterARowThatFails) {
    StartWith(4);
    for (const char* damaged : {"", "x", "99", "-1", "2147483648"}) {
        browser.Controls().lvwServers.Edit(2).main.tag = damaged;
        browser.network.ForgetAsked();
        const std::size_t errors = browser.Errors().size();
        browser.RefreshAll();
        EXPECT_THAT(Asked(), ElementsAre(1, 3, 4)) << damaged;
        EXPECT_EQ(browser.Errors().size(), errors + 1) << damaged;
        EXPECT_EQ(browser.Errors().back().rfind("frmMain;UpdateServer;", 0), 0U) << damaged;
        EXPECT_EQ(browser.Message(), "Ready.");
    }
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ScanEngineTest, ShowsTheDetailsOfTheServerItHasJustQueried) {
    StartWith(2);
    gamenet::ServerStatus& status = browser.network.servers.at(Address(1)).status;
    status.players = {{"Anna", 12, 48, 0}, {"Bert", -3, 0, 0}};
    std::vector<std::string> players;
    std::vector<std::string> variables;
    browser.network.whenAsked = [&](const std::string& address) {
        if (address != Address(2))
            return;
        players = browser.Texts(browser.Controls().lvwPlayers);
        variables = browser.Texts(browser.Controls().lvwServVars);
        EXPECT_EQ(browser.program.CurrentServer, 2);
    };
    browser.RefreshAll();
    EXPECT_THAT(players, ElementsAre("Anna|12|48", "Bert|-3|0"));
    EXPECT_THAT(variables, ElementsAre("g_gametype|4"));
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), IsEmpty());
}

TEST_F(ScanEngineTest, ShowsTheVariablesBeforeItTestsTheRow) {
    StartWith(1);
    Script(1, [&] {
        browser.sckServer.ReplyIn(10, "\xFF\xFF\xFF\xFFstatusResponse\n\\name\\value\\without\n");
    });
    browser.Form().servers.ModFilter = 99; // not a MOD
    browser.RefreshAll();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;RefreshVariables;9", "frmMain;ValidateFilter;9"));
}

TEST_F(ScanEngineTest, ParsesNothingForAnUnknownEngine) {
    browser.fake.files.Put("C:\\Quarn\\Games.ini",
                           "[General]\nGameNum=1\n[Game1]\nGameShort=q3\nEngine=Q3\nDescription=x\n");
    StartWith(2);
    browser.RefreshAll();
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1", "Server 2"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "1000"));
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ScanEngineTest, ContinuesAfterServersItCannotSendTo) {
    browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), "4\r\n127.0.1.1;0;--;a;1;9;16;;;0;;\r\n"
                                                          "127.0.1.1;65536;--;b;1;9;16;;;0;;\r\n"
                                                          "127.0.1.1;-1;--;c;1;9;16;;;0;;\r\n"
                                                          "nowhere.example;27960;--;d;1;9;16;;;0;;\r\n");
    ASSERT_TRUE(browser.Start());
    browser.RefreshAll();
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "1000", "1000", "1000"));
    EXPECT_THAT(browser.Column(PlayersColumn), ElementsAre("0 / 16", "0 / 16", "0 / 16", "0 / 16"));
    EXPECT_EQ(browser.program.Servers[2].Port, 65536);
}

TEST_F(ScanEngineTest, LogsATimerThatCannotBeSwitched) {
    StartWith(2);
    Timer& timer = browser.Controls().tmrTimeout;
    for (const bool switchedOn : {true, false}) {
        timer.Changed = [&] {
            if (timer.Enabled() == switchedOn)
                throw RunTimeError(ErrorNumber::OutOfMemory);
        };
        browser.RefreshAll();
        browser.SelectRows({1});
        browser.RefreshSelected();
    }
    EXPECT_THAT(browser.Errors(),
                ElementsAre("frmMain;PrepareForScan;7", "frmMain;PrepareForScan;7",
                            "frmMain;mnuServRefreshAll_Click;7", "frmMain;mnuServRefresh_Click;7"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_EQ(Asked(), (std::vector<std::int32_t>{1, 2, 1, 1, 2, 1}));
}

TEST_F(ScanEngineTest, SleepsWhileItWaits) {
    StartWith(3);
    browser.RefreshAll();
    EXPECT_EQ(browser.fake.events.waitCalls, 3); // one event, the reply, for each server
}

} // namespace
} // namespace quarn
