#include "views/ParallelScan.h"

#include "tests/views/ScanTest.h"

#include <algorithm>
#include <set>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Aborted = "Scanning aborted by user.";

class ParallelScanTest : public ScanTest {
  protected:
    void StartWith(std::int32_t count, std::int32_t atOnce = 8, Family family = Family::Quake3) {
        ScanTest::StartWith(count, family);
        browser.program.Simultaneous = atOnce;
    }

    // This many milliseconds after this server was first queried.
    void After(std::int32_t number, std::int32_t milliseconds, std::function<void()> action) {
        browser.network.whenAsked = [this, number, milliseconds, action = std::move(action),
                                     done = false](const std::string& address) mutable {
            if (address == Address(number) && !std::exchange(done, true))
                browser.In(milliseconds, action);
        };
    }
};

TEST_F(ParallelScanTest, AsksInTheOrderOfTheRowsAndNoMoreAtOnceThanItMay) {
    for (const std::int32_t atOnce : {2, 8, 64}) {
        BrowserWithServers other(100, atOnce);
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(100);
        std::int32_t most = 0;
        std::map<std::int32_t, std::int32_t> asked; // by moment
        other.sckServer.whenSent = [&, answer = other.sckServer.whenSent](const SentDatagram& sent) {
            most = std::max(most, ++asked[sent.tick]);
            answer(sent);
        };
        const std::vector<std::string> rows = other.Column(AddressColumn);
        other.RefreshAll();
        EXPECT_EQ(most, atOnce);
        EXPECT_EQ(other.network.Asked(), rows);
        EXPECT_THAT(other.Column(PingColumn), Each("20"));
        EXPECT_EQ(other.fake.clock.Elapsed(), (100 + atOnce - 1) / atOnce * 20);
        EXPECT_EQ(other.Message(), "Ready.");
        EXPECT_EQ(other.Count(), "100 servers");
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

TEST_F(ParallelScanTest, ReadsSettingsOutsideTheRangeAsTheNearest) {
    const struct {
        std::int32_t setting;
        std::int32_t milliseconds; // for 128 servers of 20 ms
    } cases[] = {{-5, 128 * 20}, {0, 128 * 20}, {1, 128 * 20}, {64, 40}, {65, 40}, {1000, 40}};
    for (const auto& c : cases) {
        BrowserWithServers other(128, c.setting);
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(128);
        other.RefreshAll();
        EXPECT_EQ(other.fake.clock.Elapsed(), c.milliseconds) << c.setting;
    }
}

TEST_F(ParallelScanTest, AsksOnlyTheRowsSelectedAtTheStart) {
    StartWith(6);
    browser.SelectRows({2, 5});
    After(2, 5, [&] { browser.SelectRows({1}); });
    browser.RefreshSelected();
    EXPECT_THAT(Asked(), ElementsAre(2, 5));
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 1);
}

TEST_F(ParallelScanTest, GivesEachSilentServerItsWholeTime) {
    StartWith(3);
    Silence(1);
    Silence(3);
    Server(1).Players = 7;
    Server(3).Variables = "\\old\\1";
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "20", "1000"));
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "0 / 16");
    EXPECT_EQ(browser.Cell(1, NameColumn), "Server 1");
    EXPECT_EQ(Server(3).Variables, "\\old\\1");
    EXPECT_GE(browser.fake.clock.Elapsed(), 1000);
    EXPECT_LE(browser.fake.clock.Elapsed(), 1020); // deadlines are looked at every 20 ms
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ParallelScanTest, AReplyThatHasArrivedDecidesBeforeTheDeadline) {
    StartWith(2);
    browser.sckServer.arrivalAge = 300; // noticed before its event could run
    for (const std::int32_t number : {1, 2})
        Script(number, [&, number] {
            if (browser.sckServer.sent.size() <= 2) // the first requests
                browser.sckServer.ReplyIn(990, HonestReply(number));
        });
    browser.In(975, [&] { browser.fake.clock.Advance(300); }); // the deadlines are checked next
    browser.RefreshAll();
    for (const std::int32_t number : {1, 2}) {
        EXPECT_EQ(Server(number).Name, "Live " + std::to_string(number));
        EXPECT_NEAR(Server(number).Ping, 990, 25);
    }
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ParallelScanTest, AReplyThatIsNotAnnouncedIsReadAtTheDeadline) {
    StartWith(3);
    browser.sckServer.announces = false;
    Silence(3);
    browser.RefreshAll();
    for (const std::int32_t number : {1, 2}) {
        EXPECT_EQ(Server(number).Name, "Live " + std::to_string(number));
        EXPECT_EQ(Server(number).Players, Server(number).PlayerList.HighestIndex());
    }
    EXPECT_EQ(Server(3).Name, "Server 3");
    EXPECT_EQ(Server(3).Ping, Timeout);
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ParallelScanTest, AsksAgainFromASecondPortAtHalfTime) {
    StartWith(1);
    std::vector<SentDatagram> requests;
    Script(1, [&] { requests.push_back(browser.sckServer.sent.back()); });
    browser.RefreshAll();
    ASSERT_THAT(requests, SizeIs(2));
    EXPECT_NE(requests[0].socket, requests[1].socket);
    const std::int32_t pause = requests[1].tick - requests[0].tick;
    EXPECT_GE(pause, 500);
    EXPECT_LE(pause, 520);
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
}

TEST_F(ParallelScanTest, CountsThePingFromTheRequestWhoseReplyItIs) {
    StartWith(2);
    int requests = 0;
    Script(1, [&] { // the first is lost
        if (++requests == 2)
            browser.sckServer.ReplyIn(30, HonestReply(1));
    });
    int others = 0;
    FakeUdpSocket* first = nullptr;
    Script(2, [&] { // the first reply is slow, and comes after the second request
        if (++others == 1)
            first = browser.sckServer.sent.back().socket;
        else
            first->ReplyIn(100, HonestReply(2));
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "30");
    const std::int32_t slow = Server(2).Ping;
    EXPECT_GE(slow, 600);
    EXPECT_LE(slow, 620);
    EXPECT_EQ(requests, 2);
}

TEST_F(ParallelScanTest, CountsThePingUpToTheMomentAtWhichTheReplyWasNoticed) {
    StartWith(2);
    browser.sckServer.arrivalAge = 7; // of the 20 ms
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("13", "13"));
}

TEST_F(ParallelScanTest, NoticesArrivalsAfterEachRequestAndEachReply) {
    StartWith(10, 4);
    int noted = 0;
    browser.sckServer.whenNoted = [&] { ++noted; };
    browser.RefreshAll();
    EXPECT_GE(noted, 20);
}

TEST_F(ParallelScanTest, ReadsTheRepliesOfOnlyOneOfTwoRequests) {
    StartWith(1, 8, Family::HalfLife);
    std::vector<SentDatagram> requests;
    Script(1, [&] {
        requests.push_back(browser.sckServer.sent.back());
        if (requests.size() != 6)
            return;
        const std::string rules = HonestReply(1, "\xFF\xFF\xFF\xFFrules");
        requests[0].socket->ReplyIn(10, rules);
        requests[3].socket->ReplyIn(10, rules);
        requests[3].socket->ReplyIn(11, rules);
    });
    browser.RefreshAll();
    browser.fake.events.RunFor(100);
    const std::string& variables = Server(1).Variables;
    EXPECT_NE(variables.find("mp_timelimit"), std::string::npos);
    EXPECT_EQ(variables.find("mp_timelimit"), variables.rfind("mp_timelimit"));
}

TEST_F(ParallelScanTest, DropsTheLateRepliesOfARequestThatALaterScanRepeated) {
    StartWith(1, 8, Family::HalfLife);
    Script(1, [&, requests = 0]() mutable {
        FakeUdpSocket& socket = *browser.sckServer.sent.back().socket;
        if (requests % 3 == 0)
            socket.ReplyIn(10, HonestReply(1, "\xFF\xFF\xFF\xFFinfo"));
        if (requests == 0)
            socket.ReplyIn(200, HonestReply(1, "\xFF\xFF\xFF\xFFrules"));
        ++requests;
    });
    browser.RefreshAll();
    browser.RefreshAll();
    browser.fake.events.RunFor(500);
    EXPECT_EQ(Server(1).Name, "Live 1");
    EXPECT_EQ(Server(1).Variables.find("mp_timelimit"), std::string::npos);
}

TEST_F(ParallelScanTest, KeepsThePortsOfFinishedQueriesUntilTheRestOfTheirRepliesCome) {
    for (const std::int32_t atOnce : {2, 32, 64}) {
        constexpr std::int32_t Count = 400;
        HeadlessBrowser other;
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(Count);
        other.PutList("hl", servers);
        other.PutServers(servers, Family::HalfLife);
        other.Set("Selection", "LastGame", HeadlessBrowser::Q3 + 2);
        ASSERT_TRUE(other.Start());
        other.program.Simultaneous = atOnce;
        other.sckServer.whenSent = [&, n = 0](const SentDatagram& sent) mutable {
            const EmulatedServer& server =
                other.network.servers.at(sent.host + ":" + std::to_string(sent.port));
            const int delay = n++ % 3 == 0 ? Latency : 5 * Latency; // players and rules are late
            sent.socket->ReplyIn(delay, *gamenet::ServerReply(server.family, server.status, sent.bytes));
        };
        other.RefreshAll();
        other.fake.events.RunFor(100);
        for (std::int32_t n = 1; n <= Count; ++n) {
            const ServerRecord& server = other.program.Servers[n];
            ASSERT_NE(server.Variables.find("mp_timelimit"), std::string::npos) << atOnce << ", " << n;
            ASSERT_EQ(server.Ping, Latency);
        }
    }
}

TEST_F(ParallelScanTest, TakesAllRepliesThatAreThereBeforeABusyMachineLosesThem) {
    StartWith(1, 8, Family::HalfLife);
    browser.sckServer.whenNoted = [&] {
        if (TicksBetween(browser.sckServer.sent.front().tick, browser.fake.clock.TickCount()) >= Latency)
            browser.fake.clock.Advance(2 * Timeout);
    };
    browser.RefreshAll();
    browser.fake.events.RunFor(100);
    EXPECT_EQ(Server(1).Name, "Live 1");
    EXPECT_NE(Server(1).Variables.find("mp_timelimit"), std::string::npos);
}

TEST_F(ParallelScanTest, LeavesSelectionScrollPositionAndDetailsToTheUser) {
    StartWith(9, 4);
    browser.ClickRow(3);
    browser.Controls().lvwServers.TakeChanges();
    browser.network.servers.at(Address(3)).status.players = {{"Anna", 1, 2, 0}};
    browser.RefreshAll();
    EXPECT_EQ(browser.Controls().lvwServers.SelectedRow(), 3);
    EXPECT_EQ(browser.program.CurrentServer, 3);
    EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().ensureVisible, 0);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwPlayers), ElementsAre("Anna|1|2"));
}

TEST_F(ParallelScanTest, CountsFinishedRows) {
    StartWith(5, 5);
    for (std::int32_t n = 1; n <= 5; ++n)
        browser.network.servers.at(Address(n)).latency = 60 - 10 * n;
    std::vector<std::string> counts;
    std::vector<std::int32_t> values;
    for (std::int32_t milliseconds = 5; milliseconds <= 45; milliseconds += 10)
        browser.In(milliseconds, [&] {
            counts.push_back(browser.Count());
            values.push_back(browser.Controls().pbScanning.Value());
        });
    browser.RefreshAll();
    EXPECT_THAT(counts, ElementsAre("5 servers", "1/5", "2/5", "3/5", "4/5"));
    EXPECT_THAT(values, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(ParallelScanTest, StopEndsItAtOnceAndLeavesOpenQueriesAsTheyWere) {
    StartWith(9, 4);
    browser.network.servers.at(Address(1)).latency = 5;
    After(1, 10, [&] { browser.Stop(); });
    browser.RefreshAll();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 10);
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(browser.Message(), Aborted);
    EXPECT_EQ(browser.Count(), "9 servers");
    browser.fake.events.RunFor(2000);
    EXPECT_EQ(Server(1).Name, "Live 1");
    for (std::int32_t n = 2; n <= 9; ++n) {
        EXPECT_EQ(Server(n).Name, "Server " + std::to_string(n));
        EXPECT_EQ(Server(n).Ping, n);
    }
    browser.RefreshAll();
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ParallelScanTest, AReplyThatComesWithStopChangesNothing) {
    for (const bool before : {true, false}) { // the reply's event runs in front of Stop or behind it
        BrowserWithServers other(40, 32);
        const std::vector<std::string> servers = HeadlessBrowser::Addresses(40);
        const std::int32_t stopAt = before ? 20 : 19;
        other.In(stopAt, [&] { other.Stop(); });
        other.RefreshAll();
        EXPECT_EQ(other.Message(), Aborted);
        const std::vector<std::string> names = other.Column(NameColumn);
        other.fake.events.RunFor(3000);
        EXPECT_EQ(other.Column(NameColumn), names);
        EXPECT_EQ(other.sckServer.OpenCount(), 0);
        other.RefreshAll();
        EXPECT_THAT(other.Column(PingColumn), Each("20"));
    }
}

TEST_F(ParallelScanTest, ASecondRefreshEndsTheFirstAndRunsThen) {
    StartWith(6, 2);
    After(1, 5, [&] {
        browser.SelectRows({6});
        browser.RefreshSelected();
        EXPECT_THAT(Asked(), ElementsAre(1, 2)); // not inside the first
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 6));
    EXPECT_EQ(Server(1).Name, "Server 1");
    EXPECT_EQ(Server(6).Name, "Live 6");
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ParallelScanTest, ARefreshEndsAScanThatAsksOneAfterTheOther) {
    StartWith(4, 1);
    After(2, 5, [&] {
        browser.program.Simultaneous = 4;
        browser.RefreshAll();
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 1, 2, 3, 4));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3", "Live 4"));
    ExpectIdle();
}

TEST_F(ParallelScanTest, IgnoresTheTimerOfScansOneAfterTheOther) {
    StartWith(3);
    After(1, 5, [&] {
        EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
        browser.Form().scan.tmrTimeout_Timer();
    });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20", "20"));
}

TEST_F(ParallelScanTest, PassesOverRowsThatVanishAndFindsThoseThatMove) {
    StartWith(9, 2);
    After(3, 5, [&] {
        browser.Form().servers.lvwServers_ColumnClick(2); // descending
        browser.Controls().lvwServers.Remove(2);          // server 8
    });
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 9));
    EXPECT_THAT(browser.Column(PingColumn), Each("20"));
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ParallelScanTest, ARowThatNoLongerPassesTheFiltersGoes) {
    StartWith(4, 4);
    browser.ClickNode("png50");
    browser.network.servers.at(Address(2)).latency = 60;
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 3", "Live 4"));
    EXPECT_EQ(Server(2).Ping, 60);
}

TEST_F(ParallelScanTest, EndsBeforeTheListIsReplaced) {
    StartWith(6, 3);
    browser.PutList("hl", {"127.0.3.1:27015"});
    After(2, 5, [&] { browser.ClickNode("hl"); });
    browser.RefreshAll();
    browser.fake.events.RunFor(3000);
    EXPECT_EQ(browser.program.CurrentGame, "hl");
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
    ExpectIdle();
}

TEST_F(ParallelScanTest, EndsAtOnceWhenTheWindowIsClosed) {
    StartWith(6, 3);
    After(2, 5, [&] { browser.Form().Unload(); });
    browser.RefreshAll();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 5);
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.sckServer.OpenCount(), 0);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
    EXPECT_EQ(browser.Message(), "Retrieving server stats, please wait.");
}

TEST_F(ParallelScanTest, AsksFewerAtOnceWhereSocketsRunOut) {
    StartWith(30, 16);
    browser.sckServer.openLimit = 5;
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), Each("20"));
    EXPECT_THAT(browser.Column(NameColumn), ::testing::Contains("Live 30"));
    const std::vector<std::string> log = browser.LogFile();
    EXPECT_EQ(std::ranges::count(log, "frmMain;SendServerQuery;0"), 1);
    ExpectIdle();
}

TEST_F(ParallelScanTest, EndsWithoutAnySocket) {
    StartWith(3, 4);
    browser.sckServer.openLimit = 0;
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), Each("1000"));
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ParallelScanTest, EndsAlsoWithoutAUsableTimeOut) {
    for (const std::int32_t timeout : {0, -1}) {
        HeadlessBrowser other;
        other.PutList("q3", {"127.0.1.1:27960"});
        other.Set("Scanning", "PingTimeout", timeout);
        ASSERT_TRUE(other.Start());
        other.program.Simultaneous = 4;
        other.RefreshAll();
        EXPECT_GE(other.fake.clock.Elapsed(), 1000) << timeout;
        EXPECT_LE(other.fake.clock.Elapsed(), 1020) << timeout;
        EXPECT_EQ(other.Cell(1, PingColumn), std::to_string(timeout)) << timeout;
    }
}

TEST_F(ParallelScanTest, LosesAlmostNobodyOnALossyNetwork) {
    constexpr std::int32_t Count = 1000;
    StartWith(Count, 32);
    std::set<std::string> lost;
    std::uint32_t random = 1;
    browser.sckServer.whenSent = [&, answer = browser.sckServer.whenSent](const SentDatagram& sent) {
        random = random * 1664525 + 1013904223;
        if ((random >> 8) % 50 != 0) // one in fifty is lost
            answer(sent);
    };
    browser.RefreshAll();
    const std::vector<std::string> pings = browser.Column(PingColumn);
    EXPECT_LE(std::ranges::count(pings, "1000"), Count / 1000 + 1);
    EXPECT_GE(std::ranges::count(pings, "20"), Count * 9 / 10);
}

TEST_F(ParallelScanTest, TakesEveryReplyOfLiarsIntoTheServerThatSentIt) {
    StartWith(40, 32);
    for (std::int32_t n = 1; n <= 40; n += 4) {
        Script(n, [&] { // garbage, short ones, and a flood
            for (const std::string& datagram :
                 {""s, "abcd"s, std::string(60'000, '\\'), "\xFF\xFF\xFF\xFF"s + std::string(500, '\n')})
                browser.sckServer.ReplyIn(3, datagram);
            for (int i = 0; i < 200; ++i)
                browser.sckServer.ReplyIn(4, "junk junk junk");
        });
        Script(n + 1, [&] { browser.sckServer.ReplyIn(5000, "much too late"); });
        Script(n + 2, [&, n] { // twice, and once more after its time
            for (const std::int32_t delay : {5, 6, 1500})
                browser.sckServer.ReplyIn(delay, HonestReply(n + 2));
        });
    }
    browser.RefreshAll();
    for (std::int32_t n = 1; n <= 40; n += 4) {
        EXPECT_EQ(Server(n + 1).Ping, 1000) << n;
        EXPECT_EQ(Server(n + 2).Name, "Live " + std::to_string(n + 2));
        EXPECT_EQ(Server(n + 2).Ping, 5);
        EXPECT_EQ(Server(n + 3).Name, "Live " + std::to_string(n + 3));
        EXPECT_EQ(Server(n + 3).Ping, 20);
    }
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_EQ(browser.program.AppLog->ErrorCount(), 0);
    ExpectIdle();
}

TEST_F(ParallelScanTest, WithASettingOfOneTheRequestsAreThoseOfBefore) {
    StartWith(5, 1);
    browser.RefreshAll();
    EXPECT_THAT(Asked(), ElementsAre(1, 2, 3, 4, 5));
    std::vector<std::int32_t> ticks;
    for (const SentDatagram& sent : browser.sckServer.sent)
        ticks.push_back(sent.tick - browser.sckServer.sent.front().tick);
    EXPECT_THAT(ticks, ElementsAre(0, 20, 40, 60, 80));
}

} // namespace
} // namespace quarn
