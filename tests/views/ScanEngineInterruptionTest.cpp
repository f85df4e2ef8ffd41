// A scan during which the user does something else, stops it or closes the program.

#include "tests/views/ScanTest.h"
#include "views/ScanEngine.h"

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Aborted = "Scanning aborted by user.";

class ScanEngineInterruptionTest : public ScanTest {};

TEST_F(ScanEngineInterruptionTest, StopsAfterTheCurrentServer) {
    StartWith(5);
    During(2, [&] {
        browser.Stop();
        EXPECT_EQ(browser.Message(), "Retrieving server stats, please wait.");
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2));
    EXPECT_EQ(browser.Cell(2, NameColumn), "Live 2");
    EXPECT_EQ(browser.Message(), Aborted);
    EXPECT_EQ(browser.Count(), "5 servers");
    ExpectIdle();
    browser.network.whenAsked = nullptr;
    browser.RefreshAll();
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ScanEngineInterruptionTest, StopsAScanOfSelectedRowsToo) {
    StartWith(5);
    browser.SelectRows({1, 3, 5});
    During(3, [&] { browser.Stop(); });
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(1, 3));
    EXPECT_EQ(browser.Message(), Aborted);
}

TEST_F(ScanEngineInterruptionTest, WaitsForASilentServersTickBeforeItStops) {
    StartWith(2);
    Silence(1);
    During(1, [&] { browser.Stop(); });
    browser.RefreshAll();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 1000);
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
    EXPECT_THAT(Asked(), ElementsAre(1));
    EXPECT_EQ(browser.Message(), Aborted);
}

TEST_F(ScanEngineInterruptionTest, IgnoresAStopWhileNoScanRuns) {
    StartWith(3);
    browser.Stop();
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3));
    EXPECT_EQ(browser.Message(), "Ready.");
    browser.Stop();
    browser.SelectRows({2});
    browser.network.ForgetAsked();
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(2));
    EXPECT_EQ(browser.Message(), "Ready.");
}

// A list that is loaded is busy, but it is no scan.
TEST_F(ScanEngineInterruptionTest, IgnoresAStopWhileAScanWaitsForAList) {
    StartWith(3);
    browser.PutList("d3", addresses);
    browser.PutServers(addresses, Family::Doom3);
    browser.fake.events.Post([&] {
        browser.RefreshAll();
        browser.Stop();
    });
    browser.ClickNode("d3");
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3));
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ScanEngineInterruptionTest, NestsSixteenScansAndRefusesAFurtherOne) {
    StartWith(1);
    struct Case {
        const char* button;
        const char* entry;
    };
    for (const Case& c : {Case{"refreshall", "frmMain;mnuServRefreshAll_Click;0"},
                          Case{"refresh", "frmMain;mnuServRefresh_Click;0"}}) {
        std::int32_t started = 0;
        browser.network.whenAsked = [&](const std::string&) {
            ++started;
            browser.In(1, [&] { browser.Form().tbMain_ButtonClick(c.button); });
        };
        // The scans that waited while another one ran inside them have lost their timer and their reply.
        for (std::int32_t scan = 1; scan < 16; ++scan)
            browser.In(2000 + scan, [&] { browser.Stop(); });
        browser.SelectRows({1});
        browser.Form().tbMain_ButtonClick(c.button);
        EXPECT_EQ(started, 16) << c.button;
        EXPECT_EQ(browser.LogFile().back(), c.entry);
        EXPECT_THAT(browser.Errors(), IsEmpty());
        ExpectIdle();
    }
}

TEST_F(ScanEngineInterruptionTest, SkipsRowsThatAFilterRemoved) {
    StartWith(4);
    browser.ClickNode("png100");
    browser.network.servers.at(Address(2)).latency = 150; // above the limit: its row is removed
    std::vector<std::string> counts;
    std::vector<std::int32_t> progress;
    browser.network.whenAsked = [&](const std::string&) {
        counts.push_back(browser.Count());
        progress.push_back(browser.Controls().pbScanning.Value());
    };
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(counts, ElementsAre("1/4", "2/4", "3/4", "4/4"));
    EXPECT_THAT(progress, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 3", "Live 4"));
    EXPECT_EQ(Server(2).Name, "Live 2");
}

TEST_F(ScanEngineInterruptionTest, QueriesEachRowOnceThoughAllAreRemoved) {
    StartWith(6);
    browser.ClickNode("png20");
    for (auto& [address, server] : browser.network.servers)
        server.latency = 21;
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ScanEngineInterruptionTest, QueriesEachRowOnceThoughASortMovesThem) {
    StartWith(5);
    During(2, [&] { browser.Form().servers.lvwServers_ColumnClick(4); }); // by name, descending
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20", "20", "20", "20"));
    EXPECT_THAT(browser.Tags(), ElementsAre("5", "4", "3", "2", "1"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 5", "Live 4", "Live 3", "Live 2", "Live 1"));
}

TEST_F(ScanEngineInterruptionTest, ContinuesWithTheRowsThatAFilterListsAgain) {
    StartWith(5);
    Server(4).Locked = 1;
    During(2, [&] { browser.ClickNode("fltkey"); });
    std::vector<std::string> counts;
    const auto before = browser.network.whenAsked;
    browser.network.whenAsked = [&](const std::string& address) {
        counts.push_back(browser.Count());
        before(address);
    };
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 5));
    EXPECT_THAT(counts, ElementsAre("1/5", "2/5", "3/5", "5/5"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3", "Live 5"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20", "20", "20"));
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ScanEngineInterruptionTest, QueriesNoServerThatAppearsMeanwhile) {
    StartWith(3);
    Server(2).Locked = 1;
    browser.ClickNode("fltkey");
    ASSERT_EQ(browser.RowCount(), 2);
    During(1, [&] {
        browser.ClickNode("fltkey"); // all three are listed again
        browser.Form().servers.AddServer("127.0.1.77", "27960");
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 3));
    EXPECT_EQ(browser.RowCount(), 4);
    EXPECT_EQ(browser.Count(), "4 servers");
}

TEST_F(ScanEngineInterruptionTest, KeepsAReplyWithItsServerWhateverRowIsClicked) {
    StartWith(3);
    Server(3).PlayerList.Reset(1);
    Server(3).PlayerList[1].Name = "Somebody";
    Server(3).Players = 1;
    browser.SelectRows({1});
    During(1, [&] {
        browser.ClickRow(3);
        EXPECT_EQ(browser.program.CurrentServer, 3);
        EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("Somebody|0|0"));
    });
    browser.RefreshSelected();
    EXPECT_EQ(Server(1).Name, "Live 1");
    EXPECT_EQ(Server(1).Ping, 20);
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_THAT(Asked(), ElementsAre(1));
}

TEST_F(ScanEngineInterruptionTest, KeepsATimeOutWithItsServerWhateverRowIsClicked) {
    StartWith(3);
    Silence(1);
    Server(1).Players = 4;
    Server(3).Players = 9;
    During(1, [&] { browser.ClickRow(3); });
    browser.SelectRows({1});
    browser.RefreshSelected();
    EXPECT_EQ(Server(1).Ping, 1000);
    EXPECT_EQ(Server(1).Players, 0);
    EXPECT_EQ(browser.Cell(1, NameColumn), "Server 1");
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
    EXPECT_EQ(Server(3).Name, "Server 3");
    EXPECT_EQ(Server(3).Players, 9);
}

TEST_F(ScanEngineInterruptionTest, CommandsUseTheServerThatTheUserSelected) {
    StartWith(3);
    browser.SelectRows({1});
    During(1, [&] {
        browser.ClickRow(3);
        browser.sckServer.ReplyIn(0, HonestReply(1));
        browser.fake.events.DoEvents();
        EXPECT_EQ(browser.program.CurrentServer, 1);
        browser.Form().servers.mnuServCopyAddress_Click();
    });
    browser.RefreshSelected();
    EXPECT_EQ(browser.fake.shell.clipboard, Address(3));
    EXPECT_EQ(Server(1).Name, "Live 1");
}

TEST_F(ScanEngineInterruptionTest, RunsASecondScanInsideTheFirst) {
    StartWith(4);
    browser.SelectRows({4, 1, 2});
    bool nested = false;
    During(2, [&] {
        if (std::exchange(nested, true))
            return;
        browser.SelectRows({4});
        browser.RefreshSelected();
        EXPECT_EQ(browser.Message(), "Ready.");
        EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
        EXPECT_EQ(Server(4).Name, "Live 4");
        EXPECT_EQ(Server(2).Name, "Live 2"); // it answered meanwhile, at a port of its own
        browser.SelectRows({2, 3});
    });
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 4, 4)); // the rows that were selected when each scan was started
    EXPECT_EQ(Server(2).Ping, Latency);
    EXPECT_EQ(Server(3).Name, "Server 3");
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, RunsAScanOfAllRowsInsideAnother) {
    StartWith(2);
    bool nested = false;
    During(1, [&] {
        if (std::exchange(nested, true))
            return;
        browser.RefreshAll();
        EXPECT_THAT(Asked(), ElementsAre(1, 1, 2));
        EXPECT_EQ(browser.Message(), "Ready.");
    });
    browser.RefreshAll();
    // The second scan has asked server 1 again, so the first does not wait for it any longer.
    EXPECT_THAT(Asked(), ElementsAre(1, 1, 2, 2));
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, TheFirstScanHasNoTimeOutAfterASecond) {
    StartWith(3);
    Silence(3);
    bool nested = false;
    browser.network.whenAsked = [&](const std::string& address) {
        if (address == Address(1) && !std::exchange(nested, true))
            browser.In(Latency + 5, [&] {
                browser.SelectRows({1});
                browser.RefreshSelected();
            });
        if (address == Address(3))
            browser.In(9000, [&] { browser.Stop(); });
    };
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 1, 3));
    EXPECT_EQ(Server(2).Name, "Live 2");
    EXPECT_EQ(Server(3).Ping, 3); // no tick, so no time-out was stored
    EXPECT_GE(browser.fake.clock.Elapsed(), 9000);
    EXPECT_EQ(browser.Message(), Aborted);
    browser.fake.events.RunFor(10);
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, ContinuesThroughCommandsThatKeepTheList) {
    StartWith(3);
    browser.fake.prompts.textAnswers = {"Renamed"};
    browser.fake.prompts.fileAnswers = {"C:\\out.txt"};
    During(2, [&] {
        browser.Controls().trvGames.Select("fav1");
        browser.Form().tree.mnuTreeRename_Click();
        EXPECT_EQ(browser.program.FavoriteNames[1], "Renamed");
        browser.Form().servers.mnuServerListExport_Click();
        EXPECT_TRUE(browser.fake.files.Has("C:\\out.txt"));
        browser.Form().countries.mnuRecheckCountries_Click();
        DialogCommands& dialogs = browser.Form().dialogs;
        dialogs.mnuServSetPass_Click();
        dialogs.mnuServAdd_Click();
        dialogs.mnuExtrasGameSetup_Click();
        dialogs.mnuExtrasOptions_Click();
        dialogs.mnuInfoAbout_Click();
        EXPECT_THAT(browser.dialogs.shown, SizeIs(5));
        browser.Form().servers.mnuServCopyAddress_Click();
        EXPECT_EQ(browser.fake.shell.clipboard, Address(2));
        browser.Form().game.mnuServMonitor_Click();
        EXPECT_THAT(browser.fake.shell.opened, SizeIs(1));
        browser.Form().game.mnuServConnectPlay_Click(); // no executable: the game setup
        EXPECT_THAT(browser.dialogs.shown, SizeIs(6));
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3"));
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, EndsTheScanBeforeTheListIsReplaced) {
    struct Case {
        const char* name;
        std::function<void(HeadlessBrowser&)> command;
        std::string list;
        std::int32_t rows;
    };
    const Case cases[] = {
        {"another game", [](HeadlessBrowser& b) { b.ClickNode("d3"); }, "d3", 2},
        {"a MOD", [](HeadlessBrowser& b) { b.ClickNode("mod1"); }, "q3", 0},
        {"a folder", [](HeadlessBrowser& b) { b.ClickNode("games"); }, "games", 0},
        {"clear", [](HeadlessBrowser& b) { b.Form().servers.mnuServerListClear_Click(); }, "q3", 0},
        {"renew", [](HeadlessBrowser& b) { b.Form().tbMain_ButtonClick("querymaster"); }, "q3", 0},
        {"delete", [](HeadlessBrowser& b) { b.Form().servers.mnuServDelete_Click(); }, "q3", 4},
        {"add to favorites", [](HeadlessBrowser& b) { b.Form().tree.mnuServAddToFavorites_Click(1); }, "q3",
         5},
    };
    for (const Case& c : cases) {
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(5);
        other.PutList("q3", servers);
        other.PutList("d3", {"127.0.3.1:27666", "127.0.3.2:27666"});
        other.PutServers(servers);
        other.fake.prompts.yesNoAnswers = {true};
        ASSERT_TRUE(other.Start());
        other.network.whenAsked = [&](const std::string& address) {
            if (address == servers[1])
                other.In(10, [&] {
                    c.command(other);
                    EXPECT_EQ(other.RowCount(), 5) << c.name << ": not before the scan has ended";
                    EXPECT_EQ(other.program.CurrentGame, "q3") << c.name;
                });
        };
        other.RefreshAll();
        EXPECT_THAT(other.network.Asked(), ElementsAre(servers[0], servers[1])) << c.name;
        EXPECT_EQ(other.program.CurrentGame, c.list) << c.name;
        EXPECT_EQ(other.RowCount(), c.rows) << c.name;
        EXPECT_FALSE(other.Controls().tmrTimeout.Enabled()) << c.name;
        EXPECT_EQ(other.Message(),
                  c.name == std::string("renew") ? "Getting new serverlist from master..." : Aborted)
            << c.name;
        EXPECT_THAT(other.Errors(), IsEmpty()) << c.name;
        for (std::int32_t i = 1; i <= other.program.Servers.HighestIndex() && c.list != std::string("q3");
             ++i)
            EXPECT_EQ(other.program.Servers[i].Name.rfind("Live", 0), std::string::npos) << c.name;
        // The previous list contains the results of the scan.
        if (c.list != std::string("q3")) {
            EXPECT_NE(other.fake.files.Get(HeadlessBrowser::PathOf("q3")).find("Live 2"), std::string::npos)
                << c.name;
        }
    }
}

TEST_F(ScanEngineInterruptionTest, ContinuesAndSavesWhenTheCurrentNodeIsClicked) {
    StartWith(4);
    During(2, [&] { browser.ClickNode("q3"); });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(browser.Message(), "Ready.");
    const std::string saved = browser.fake.files.Get(HeadlessBrowser::PathOf("q3"));
    EXPECT_NE(saved.find(";Live 1;"), std::string::npos);
    EXPECT_NE(saved.find(";Server 2;"), std::string::npos);
}

TEST_F(ScanEngineInterruptionTest, StoresNoReplyOfTheOldListIntoTheNewOne) {
    StartWith(2);
    browser.PutList("hl", {"127.0.3.1:27015", "127.0.3.2:27015"});
    Script(1, [&] {
        browser.In(5, [&] { browser.ClickNode("hl"); });
        for (const std::int32_t delay : {30, 31, 40, 400})
            browser.sckServer.ReplyIn(delay, HonestReply(1));
    });
    browser.RefreshAll();
    browser.fake.events.RunFor(5000);
    EXPECT_EQ(browser.program.CurrentGame, "hl");
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1", "Server 2"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1", "2"));
    EXPECT_EQ(browser.program.CurrentServer, 0);
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, EndsBothScansWhenTheListIsReplacedInTheSecond) {
    StartWith(3);
    browser.PutList("d3", {"127.0.3.1:27666"});
    bool nested = false;
    During(1, [&] {
        if (std::exchange(nested, true)) {
            browser.ClickNode("d3");
            return;
        }
        browser.SelectRows({1});
        browser.RefreshSelected();
        EXPECT_EQ(browser.program.CurrentGame, "q3");
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 1));
    EXPECT_EQ(browser.program.CurrentGame, "d3");
    EXPECT_EQ(browser.RowCount(), 1);
    ExpectIdle();
}

TEST_F(ScanEngineInterruptionTest, EndsAtOnceWhenTheWindowIsClosed) {
    for (const bool answered : {true, false}) {
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(3);
        other.PutList("q3", servers);
        if (answered)
            other.PutServers(servers);
        ASSERT_TRUE(other.Start());
        other.network.whenAsked = [&](const std::string& address) {
            if (address == servers[0])
                other.In(10, [&] {
                    other.Form().Unload();
                    other.Form().Unload();
                });
        };
        other.RefreshAll();
        EXPECT_EQ(other.fake.clock.Elapsed(), 10);
        EXPECT_THAT(other.network.Asked(), SizeIs(1));
        EXPECT_EQ(other.window.destroyCalls, 1);
        EXPECT_EQ(other.Message(), "Retrieving server stats, please wait."); // the scan has not ended
        EXPECT_EQ(other.Count(), "1/3");
        EXPECT_THAT(other.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
        EXPECT_EQ(other.program.Servers[1].Name, "Server 1");
        EXPECT_EQ(other.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 0);
    }
}

TEST_F(ScanEngineInterruptionTest, EndsAllScansThatAreNestedWhenTheWindowIsClosed) {
    StartWith(3);
    std::int32_t depth = 0;
    During(1, [&] {
        if (++depth < 4)
            browser.RefreshAll();
        else
            browser.Form().Unload();
    });
    browser.RefreshAll();
    EXPECT_EQ(depth, 4);
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(ScanEngineInterruptionTest, DropsWaitingCommandsWhenTheWindowIsClosed) {
    StartWith(3);
    browser.PutList("d3", {"127.0.3.1:27666"});
    During(1, [&] {
        browser.ClickNode("d3");
        browser.Form().Unload();
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 0);
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(ScanEngineInterruptionTest, UnloadsInTheMiddleWhenTheSessionEnds) {
    StartWith(3);
    During(1, [&] {
        browser.Form().EndSession();
        EXPECT_EQ(browser.window.destroyCalls, 1);
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
    EXPECT_THAT(Asked(), ElementsAre(1));
}

} // namespace
} // namespace quarn
