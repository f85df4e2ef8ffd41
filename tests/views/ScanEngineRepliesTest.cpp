// How a scan handles replies and the timer: early, late, several, none.

#include "tests/views/ScanTest.h"
#include "views/ScanEngine.h"

#include <limits>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

class ScanEngineRepliesTest : public ScanTest {
  protected:
    void ReplyIn(std::int32_t milliseconds, std::string datagram) {
        browser.sckServer.ReplyIn(milliseconds, std::move(datagram));
    }
};

TEST_F(ScanEngineRepliesTest, MeasuresTheTimeToTheReply) {
    StartWith(4);
    const std::int32_t latencies[] = {1, 999, 0, 250};
    for (std::int32_t n = 1; n <= 4; ++n)
        browser.network.servers.at(Address(n)).latency = latencies[n - 1];
    // One at a time, so that each starts with a new timer.
    for (std::int32_t n = 1; n <= 4; ++n) {
        browser.SelectRows({n});
        browser.RefreshSelected();
    }
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1", "999", "0", "250"));
}

TEST_F(ScanEngineRepliesTest, GivesASilentServerTheTimeOutAndNoPlayers) {
    StartWith(1);
    Server(1).Players = 7;
    Server(1).Variables = "\\old\\1";
    Silence(1);
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "0 / 16");
    EXPECT_EQ(browser.Cell(1, NameColumn), "Server 1");
    EXPECT_EQ(browser.Cell(1, MapColumn), "q3dm1");
    EXPECT_EQ(browser.Cell(1, GameColumn), "baseq3");
    EXPECT_EQ(Server(1).Variables, "\\old\\1");
    EXPECT_EQ(browser.fake.clock.Elapsed(), 1000);
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineRepliesTest, WaitsOnlyAsLongAsTheTimerHasLeft) {
    StartWith(3);
    browser.network.servers.at(Address(1)).latency = 600;
    Silence(2);
    Silence(3);
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("600", "1000", "1000"));
    EXPECT_EQ(browser.fake.clock.Elapsed(), 2000); // the second server had 400 ms only
}

TEST_F(ScanEngineRepliesTest, AReplyBeforeTheTickIsAnAnswer) {
    StartWith(1);
    Script(1, [&] { ReplyIn(999, HonestReply(1)); });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, PingColumn), "999");
}

TEST_F(ScanEngineRepliesTest, AReplyAfterTheTickIsNotAnAnswer) {
    StartWith(1);
    Server(1).Players = 5;
    Script(1, [&] { ReplyIn(1000, HonestReply(1)); }); // the tick was queued before
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
    EXPECT_EQ(browser.fake.clock.Elapsed(), 1000);
}

TEST_F(ScanEngineRepliesTest, ShowsAServerThatATickCutOffAsSoonAsItAnswers) {
    StartWith(3);
    browser.network.servers.at(Address(1)).latency = 995;
    browser.RefreshAll(); // the tick comes five milliseconds after server 2 was asked
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("995", "20", "20"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3"));
    EXPECT_EQ(browser.fake.clock.Elapsed(), 995 + 5 + 20);
}

TEST_F(ScanEngineRepliesTest, ATickBeforeTheRequestIsATimeOut) {
    StartWith(1);
    browser.Form().scan.tmrTimeout_Timer();
    EXPECT_EQ(browser.Form().scan.wait.ReplyState, 2);
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_EQ(Server(1).Ping, 1);
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "1000");
    EXPECT_EQ(browser.fake.clock.Elapsed(), 0);
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "20");
}

TEST_F(ScanEngineRepliesTest, TwoRepliesAtOnceAreNotATimeOut) {
    StartWith(2);
    Script(1, [&] {
        for (int i = 0; i < 3; ++i)
            ReplyIn(30, HonestReply(1));
    });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("30", "20"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2"));
    ExpectIdle();
}

TEST_F(ScanEngineRepliesTest, TakesAnAnswerFromAReplyThatWasCountedWhateverTheTimerDoes) {
    StartWith(1);
    // A reply and a tick in one event, so that the wait sees both at once.
    struct Case {
        const char* name;
        bool tickFirst;
        const char* ping;
    };
    for (const Case& c : {Case{"reply, tick", false, "5"}, Case{"tick, reply", true, "5"}}) {
        Script(1, [&] {
            browser.In(5, [&] {
                ReplyIn(0, HonestReply(1));
                const auto reply = [&] { browser.fake.events.DoEvents(); };
                const auto tick = [&] { browser.Form().scan.tmrTimeout_Timer(); };
                c.tickFirst ? (tick(), reply()) : (reply(), tick());
            });
        });
        browser.RefreshAll();
        EXPECT_EQ(browser.Cell(1, PingColumn), c.ping) << c.name;
        EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1") << c.name;
    }
}

TEST_F(ScanEngineRepliesTest, IgnoresDatagramsOfFewerThanFiveBytes) {
    StartWith(2);
    Script(1, [&] {
        for (const char* tiny : {"", "a", "abc", "\xFF\xFF\xFF\xFF"})
            ReplyIn(10, tiny);
        ReplyIn(40, HonestReply(1));
    });
    Script(2, [&] { ReplyIn(10, "abcd"); });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Server 2"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("40", "1000"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ScanEngineRepliesTest, IgnoresShortDatagramsAfterAReplyToo) {
    StartWith(1, Family::HalfLife);
    const std::string mark = "\xFF\xFF\xFF\xFF";
    Script(1, [&] {
        ReplyIn(10, HonestReply(1, mark + "info"));
        ReplyIn(10, mark);
        ReplyIn(10, mark + "E"); // long enough
        ReplyIn(10, HonestReply(1, mark + "rules"));
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_TRUE(Server(1).Variables.starts_with(mark + "E" + mark + "E")) << Server(1).Variables;
    EXPECT_NE(Server(1).Variables.find("mp_timelimit\\30"), std::string::npos);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

// No request is sent for a game of an unknown engine, and a datagram that arrives anyway is not parsed.
TEST_F(ScanEngineRepliesTest, ParsesNoStatusForAnUnknownEngine) {
    browser.fake.files.Put("C:\\Quarn\\Games.ini",
                           "[General]\nGameNum=1\n[Game1]\nGameShort=q3\nEngine=q4\n");
    StartWith(1);
    browser.In(10, [&] { browser.sckServer.ReplyIn(0, HonestReply(1)); });
    browser.RefreshAll();
    EXPECT_TRUE(Asked().empty());
    EXPECT_EQ(browser.Cell(1, NameColumn), "Server 1");
}

TEST_F(ScanEngineRepliesTest, CountsAnyReplyOfFiveBytes) {
    StartWith(1);
    Script(1, [&] { ReplyIn(10, "abcde"); });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, PingColumn), "10");
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ScanEngineRepliesTest, ADisconnectKeepsTheRecord) {
    StartWith(1);
    Script(1, [&] {
        ReplyIn(10, "\xFF\xFF\xFF\xFF"
                    "disconnect");
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, NameColumn), "Server 1");
    EXPECT_EQ(browser.Cell(1, PingColumn), "10");
}

TEST_F(ScanEngineRepliesTest, ReadsThreeHalfLifeRepliesThatArriveTogether) {
    StartWith(2, Family::HalfLife);
    browser.network.servers.at(Address(1)).status.players = {{"Gordon", 5, 0, 60}};
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, PlayersColumn), "1 / 16");
    EXPECT_EQ(Server(1).PlayerList.HighestIndex(), 1);
    EXPECT_NE(Server(1).Variables.find("mp_timelimit\\30"), std::string::npos);
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20"));
    EXPECT_EQ(Server(2).Players, 0);
}

TEST_F(ScanEngineRepliesTest, IsNotHeldUpByAFloodOfReplies) {
    StartWith(2, Family::HalfLife);
    Script(1, [&] {
        for (int i = 0; i < 1000; ++i)
            ReplyIn(10, "\xFF\xFF\xFF\xFF"
                        "E\x01\0k\0v\0"s);
    });
    browser.RefreshAll();
    EXPECT_LT(Server(1).Variables.size(), 1000U); // a port takes no more than 64 replies
    EXPECT_EQ(Server(2).Name, "Live 2");
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(ScanEngineRepliesTest, ParsesAReplyAfterTheTickIntoTheSameServerAndKeepsItsPing) {
    StartWith(2);
    browser.network.servers.at(Address(1)).status.players = {{"Anna", 1, 2, 0}};
    Script(1, [&] { ReplyIn(1000, HonestReply(1)); });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "20"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2"));
}

TEST_F(ScanEngineRepliesTest, MeasuresAcrossAnyReadingOfTheTickCounter) {
    for (const std::int32_t start : {0, 1, -1, -20, Highest, Highest - 10, Lowest, Lowest + 5, -1000}) {
        HeadlessBrowser other;
        const std::vector<std::string> server = {"127.0.1.1:27960"};
        other.PutList("q3", server);
        other.PutServers(server);
        ASSERT_TRUE(other.Start());
        other.fake.clock.SetTickCount(start);
        other.RefreshAll();
        EXPECT_EQ(other.Cell(1, PingColumn), "20") << start;
        EXPECT_EQ(other.Cell(1, NameColumn), "Live 1") << start;
        EXPECT_EQ(other.Form().scan.wait.QuerySentTick, 0) << start;
    }
}

TEST_F(ScanEngineRepliesTest, CountsNoEventWithoutADatagram) {
    StartWith(1);
    Script(1, [&] {
        browser.In(5, [&] { browser.Form().scan.sckServer_DataArrival(1, 100); });
        ReplyIn(30, HonestReply(1));
    });
    browser.RefreshAll();
    EXPECT_EQ(browser.Cell(1, NameColumn), "Live 1");
    EXPECT_EQ(browser.Cell(1, PingColumn), "30");
}

TEST_F(ScanEngineRepliesTest, LogsADatagramThatItCannotRead) {
    StartWith(2);
    browser.sckServer.readFault = ErrorNumber::DeviceIOError;
    browser.RefreshAll();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;sckServer_DataArrival;57"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1", "Live 2"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("1000", "20"));
    EXPECT_EQ(browser.Message(), "Ready.");
    ExpectIdle();
}

TEST_F(ScanEngineRepliesTest, ContinuesWhileTheNetworkIsDownAndUpAgain) {
    StartWith(4);
    for (std::int32_t n = 1; n <= 4; ++n)
        browser.network.servers.at(Address(n)).latency = 20;
    browser.In(30, [&] { browser.sckServer.sendFailure = "the network is away"; });
    browser.In(2500, [&] { browser.sckServer.sendFailure.clear(); });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Server 3", "Server 4"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("20", "20", "1000", "1000"));
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3", "Live 4"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    ExpectIdle();
}

TEST_F(ScanEngineRepliesTest, DropsAnUnexpectedDatagram) {
    StartWith(2);
    browser.ClickRow(2);
    ReplyIn(0, HonestReply(1));
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.Form().scan.wait.ReplyState, 0);
    EXPECT_EQ(Server(2).Name, "Server 2");
    EXPECT_EQ(Server(2).Ping, 2);
    browser.program.CurrentServer = 0;
    ReplyIn(0, HonestReply(1));
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.program.Servers[0].Name, "");
}

TEST_F(ScanEngineRepliesTest, FollowsANewTimeOutInTheMiddleOfAScan) {
    StartWith(2);
    Silence(1);
    Silence(2);
    browser.In(300, [&] {
        browser.program.PingTimeout = 200;
        browser.Form().RefreshInterface();
    });
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("200", "200"));
    EXPECT_EQ(browser.fake.clock.Elapsed(), 700);
}

TEST_F(ScanEngineRepliesTest, EndsEvenWithoutAUsableTimeOut) {
    for (const std::int32_t timeout : {0, -1, Lowest}) {
        HeadlessBrowser other;
        other.PutList("q3", {"127.0.1.1:27960"});
        other.Set("Scanning", "PingTimeout", timeout);
        ASSERT_TRUE(other.Start());
        other.RefreshAll();
        EXPECT_EQ(other.fake.clock.Elapsed(), 1000) << timeout;
        EXPECT_EQ(other.Cell(1, PingColumn), std::to_string(timeout)) << timeout;
        EXPECT_EQ(other.Message(), "Ready.");
    }
}

} // namespace
} // namespace quarn
