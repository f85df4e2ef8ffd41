#include "views/MasterQuery.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace quarn {
namespace {

using namespace std::string_literals;
using gamenet::Family;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Asking = "Getting new serverlist from master...";

class MasterQueryTest : public ::testing::Test {
  protected:
    void StartWith(const std::string& game, std::int32_t count = 0) {
        browser.PutList(game, HeadlessBrowser::Addresses(count));
        browser.Set("Selection", "LastGame", game == "q3" ? 9 : game == "d3" ? 10 : 11);
        ASSERT_TRUE(browser.Start());
    }
    void Renew(bool yes = true) {
        browser.fake.prompts.yesNoAnswers.push_back(yes);
        browser.Form().master.mnuServerListGet_Click();
    }
    void Arrive(std::string datagram) {
        browser.sckMaster.ReplyIn(0, std::move(datagram));
        browser.fake.events.DoEvents();
    }
    std::vector<std::string> Addresses() { return browser.Column(AddressColumn); }

    const std::vector<std::string> two = {"127.9.0.1:27960", "127.9.200.255:65535"};

    HeadlessBrowser browser;
};

TEST_F(MasterQueryTest, SendsTheGamesPacketToItsMasterOnce) {
    StartWith("q3", 3);
    Renew();
    EXPECT_EQ(browser.Message(), Asking);
    EXPECT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(browser.program.ServerCount, 0);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 0);
    browser.fake.events.RunFor(60'000); // the master is silent: no retry, no end
    ASSERT_THAT(browser.sckMaster.sent, SizeIs(1));
    EXPECT_EQ(browser.sckMaster.sent[0].host, "master.q3.example");
    EXPECT_EQ(browser.sckMaster.sent[0].port, 27950);
    EXPECT_EQ(browser.sckMaster.sent[0].bytes, "\xFF\xFF\xFF\xFFgetservers 68");
    EXPECT_EQ(browser.Message(), Asking);
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
}

TEST_F(MasterQueryTest, SendsPacketsWithAnyBytes) {
    StartWith("d3");
    Renew();
    ASSERT_THAT(browser.sckMaster.sent, SizeIs(1));
    EXPECT_EQ(browser.sckMaster.sent[0].bytes, "\xFF\xFFgetServers\0"s);
    EXPECT_EQ(browser.sckMaster.sent[0].host, "127.0.0.2");
    EXPECT_EQ(browser.sckMaster.sent[0].port, 27650);
}

TEST_F(MasterQueryTest, DoesNothingWithoutConfirmation) {
    StartWith("q3", 3);
    Renew(false);
    EXPECT_THAT(browser.sckMaster.sent, IsEmpty());
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_EQ(browser.Message(), "Ready.");
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Clear server list");
}

TEST_F(MasterQueryTest, ListsTheServersOfEachFamily) {
    struct Case {
        Family family;
        std::int32_t node;
        int copies;
    };
    for (const Case& c :
         {Case{Family::Quake3, HeadlessBrowser::Q3, 1}, Case{Family::Doom3, HeadlessBrowser::D3, 1},
          Case{Family::HalfLife, HeadlessBrowser::HL, 2}}) {
        HeadlessBrowser other;
        other.Set("Selection", "LastGame", c.node);
        ASSERT_TRUE(other.Start());
        other.fake.prompts.yesNoAnswers = {true};
        other.sckMaster.whenSent = [&](const SentDatagram&) {
            other.sckMaster.ReplyIn(30, MasterDatagram(c.family, two));
        };
        other.Form().master.mnuServerListGet_Click();
        other.fake.events.RunFor(100);
        std::vector<std::string> expected = two;
        if (c.copies == 2)
            expected.insert(expected.end(), two.begin(), two.end());
        EXPECT_EQ(other.Column(AddressColumn), expected) << c.node;
        EXPECT_EQ(other.Count(), std::to_string(2 * c.copies) + " servers") << c.node;
        EXPECT_THAT(other.Column(NameColumn), Each(""));
        EXPECT_THAT(other.Column(PlayersColumn), Each("0 / 0"));
        EXPECT_THAT(other.Column(LocationColumn), Each("--"));
        EXPECT_EQ(other.program.Servers[1].PlayerList.HighestIndex(), 0);
        EXPECT_EQ(other.Message(), Asking);
    }
}

TEST_F(MasterQueryTest, CountsOneMoreAfterAnEndMarkAndOnlyLogsIt) {
    StartWith("q3");
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    Renew();
    browser.fake.events.RunFor(1);
    Arrive(MasterDatagram(Family::Quake3, two, true));
    EXPECT_EQ(Addresses(), two);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 2);
    EXPECT_EQ(browser.program.ServerCount, 3);
    EXPECT_EQ(browser.Count(), "3 servers");
    EXPECT_THAT(browser.Errors(), ElementsAre("modMasterQuery;ParseQ3EngineServers;9"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)); // the confirmation
    browser.ClickNode("d3");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")).substr(0, 4), " 2\r\n");
}

TEST_F(MasterQueryTest, AddsOneDatagramAfterTheOtherAndDropsNoDuplicate) {
    StartWith("d3");
    Renew();
    Arrive(MasterDatagram(Family::Doom3, two));
    Arrive(MasterDatagram(Family::Doom3, {"127.9.0.3:1", "127.9.0.1:27960"}));
    EXPECT_THAT(Addresses(), ElementsAre(two[0], two[1], "127.9.0.3:1", two[0]));
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(browser.Count(), "4 servers");
}

TEST_F(MasterQueryTest, ContinuesAfterTheGapOfAnEndMark) {
    StartWith("q3");
    Renew();
    browser.fake.events.RunFor(1);
    Arrive(MasterDatagram(Family::Quake3, two, true));
    Arrive(MasterDatagram(Family::Quake3, two, true));
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "4", "5"));
    EXPECT_EQ(browser.program.Servers[3].Address, "");
    EXPECT_EQ(browser.Count(), "6 servers");
}

TEST_F(MasterQueryTest, IgnoresADatagramThatIsNotAReply) {
    struct Case {
        const char* name;
        std::string game;
        std::string datagram;
    };
    const std::string q3 = MasterDatagram(Family::Quake3, two);
    const std::string d3 = MasterDatagram(Family::Doom3, two);
    const Case cases[] = {
        {"five bytes", "q3", "abcde"},
        {"another header", "q3", "\xFF\xFF\xFF\xFFgetserversresponse" + q3.substr(22)},
        {"one byte more in front", "q3", "\xFF" + q3},
        {"one byte less in front", "q3", q3.substr(1)},
        {"a blank behind the header", "q3", q3.substr(0, 22) + " " + q3.substr(22)},
        {"the delimiter in the first position", "q3", "\\" + q3.substr(22)},
        {"two delimiters in front", "q3", "\\\\" + q3.substr(22)},
        {"another family", "q3", d3},
        {"no delimiter", "q3", q3.substr(0, 22)},
        {"NULs", "q3", std::string(40, '\0')},
        {"another family", "d3", q3},
        {"another header", "d3", "\xFF\xFFServers\0\x7F\x09\0\x01\x38\x6D"s},
        {"a NUL in the first position", "d3", "\0\0\0\0\0\0\0"s},
        {"no delimiter", "d3", "\xFF\xFFservers"s},
    };
    for (const Case& c : cases) {
        HeadlessBrowser other;
        const std::vector<std::string> listed = HeadlessBrowser::Addresses(2);
        other.PutList(c.game, listed);
        other.Set("Selection", "LastGame", c.game == "q3" ? 9 : 10);
        ASSERT_TRUE(other.Start());
        other.Controls().SetStatus(CountPanel, "to be rewritten");
        other.sckMaster.ReplyIn(0, c.datagram);
        other.fake.events.DoEvents();
        EXPECT_EQ(other.Column(AddressColumn), listed) << c.game << ": " << c.name;
        EXPECT_EQ(other.Count(), "2 servers") << c.game << ": " << c.name;
        for (const std::string& error : other.Errors())
            EXPECT_EQ(error, "modCommonSubs;ExtractString;5") << c.game << ": " << c.name;
        EXPECT_LE(other.Errors().size(), 1U) << c.game << ": " << c.name;
        EXPECT_THAT(other.fake.prompts.shown, IsEmpty()) << c.game << ": " << c.name;
    }
}

TEST_F(MasterQueryTest, ParsesAHalfLifeDatagramOnceWhateverItsHeader) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    StartWith("hl");
    Arrive("wrong" + MasterDatagram(Family::HalfLife, two));
    EXPECT_EQ(Addresses(), two);
    Arrive("\x7F\x09\x01\x02\x69\x87!"s); // without a delimiter the whole text is the body
    EXPECT_THAT(Addresses(), ElementsAre(two[0], two[1], "127.9.1.2:27015"));
    EXPECT_THAT(browser.Errors(), ElementsAre("modCommonSubs;ExtractString;5"));
}

TEST_F(MasterQueryTest, IgnoresDatagramsOfFewerThanFiveBytes) {
    StartWith("q3", 2);
    browser.Controls().SetStatus(CountPanel, "untouched");
    for (const char* tiny : {"", "a", "abcd"})
        browser.sckMaster.ReplyIn(0, tiny);
    browser.fake.events.DoEvents();
    EXPECT_EQ(browser.Count(), "untouched");
    EXPECT_THAT(browser.Errors(), IsEmpty());
    Arrive(MasterDatagram(Family::Quake3, two)); // and they do not precede it
    EXPECT_EQ(browser.Count(), "4 servers");
}

TEST_F(MasterQueryTest, DoesNothingWithoutADatagram) {
    StartWith("q3", 2);
    browser.Controls().SetStatus(CountPanel, "untouched");
    browser.Form().master.sckMaster_DataArrival(100);
    EXPECT_EQ(browser.Count(), "untouched");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(MasterQueryTest, ParsesNothingForAnUnknownEngine) {
    for (const char* engine : {"", "Q3", "q3 x", "hl2"}) {
        HeadlessBrowser other;
        other.fake.files.Put("C:\\Quarn\\Games.ini",
                             "[General]\nGameNum=1\n[Game1]\nGameShort=x\nMasterResponse=abc\nEngine=" +
                                 std::string(engine) + "\n");
        ASSERT_TRUE(other.Start());
        other.Controls().SetStatus(CountPanel, "to be rewritten");
        other.sckMaster.ReplyIn(0, "abcdefghijklmnop");
        other.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, two));
        other.fake.events.DoEvents();
        EXPECT_EQ(other.RowCount(), 0) << engine;
        EXPECT_EQ(other.Count(), "0 servers") << engine;
        EXPECT_THAT(other.Errors(), IsEmpty()) << engine;
    }
}

TEST_F(MasterQueryTest, MatchesNoReplyWithoutAHeaderThoughNoneIsExpected) {
    for (const char* engine : {"q3", "d3", "hl"}) {
        HeadlessBrowser other;
        other.fake.files.Put("C:\\Quarn\\Games.ini", "[General]\nGameNum=1\n[Game1]\nGameShort=x\nEngine=" +
                                                         std::string(engine) + "\n");
        ASSERT_TRUE(other.Start());
        other.ClickNode("x");
        other.sckMaster.RemoteHost = "127.0.0.2";
        other.sckMaster.RemotePort = 1;
        other.sckMaster.SendData("request");
        other.sckMaster.ReplyIn(0, "abcdefabcdef");
        other.fake.events.DoEvents();
        // The Half-Life branch parses every datagram once.
        EXPECT_EQ(other.program.Servers.HighestIndex(), std::string(engine) == "hl" ? 2 : 0) << engine;
    }
}

TEST_F(MasterQueryTest, LogsAMasterWhoseNameIsUnknown) {
    browser.fake.hosts.addresses.clear();
    StartWith("q3");
    Renew();
    browser.fake.events.RunFor(1000);
    EXPECT_THAT(browser.sckMaster.sent, IsEmpty());
    EXPECT_EQ(browser.Message(), Asking);
    EXPECT_THAT(browser.LogFile(), Contains("frmMain;mnuServerListGet_Click;0"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
}

TEST_F(MasterQueryTest, LogsAPacketThatCannotBeSent) {
    StartWith("d3");
    browser.sckMaster.whenSent = [](const SentDatagram&) { throw RunTimeError(ErrorNumber::DeviceIOError); };
    Renew();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServerListGet_Click;57"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)); // only the confirmation
}

TEST_F(MasterQueryTest, SendsOnlyWhenTheOldSocketHasClosed) {
    StartWith("d3");
    Renew();
    browser.sckMaster.closeMilliseconds = 40;
    browser.In(10, [&] { EXPECT_EQ(browser.sckMaster.CurrentState(), UdpSocket::State::Closing); });
    browser.sckMaster.ReplyIn(20, MasterDatagram(Family::Doom3, two)); // to the previous request
    Renew();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 40);
    EXPECT_THAT(browser.sckMaster.sent, SizeIs(2));
    EXPECT_EQ(browser.RowCount(), 0);
}

TEST_F(MasterQueryTest, CommandsWaitUntilTheRequestIsSent) {
    StartWith("d3");
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    Renew();
    browser.sckMaster.closeMilliseconds = 40;
    browser.In(10, [&] {
        browser.ClickNode("q3");
        EXPECT_EQ(browser.program.CurrentGame, "d3");
    });
    Renew();
    ASSERT_THAT(browser.sckMaster.sent, SizeIs(2));
    EXPECT_EQ(browser.sckMaster.sent[1].host, "127.0.0.2");
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_EQ(browser.RowCount(), 2);
}

TEST_F(MasterQueryTest, TwoCommandsSendTwoRequests) {
    StartWith("d3");
    Renew();
    browser.sckMaster.closeMilliseconds = 40;
    browser.In(10, [&] { Renew(); });
    Renew();
    EXPECT_THAT(browser.sckMaster.sent, SizeIs(3));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(3));
}

TEST_F(MasterQueryTest, EndsWithTheWindowWhileTheOldSocketCloses) {
    StartWith("d3");
    Renew();
    browser.sckMaster.closeMilliseconds = 40;
    browser.In(10, [&] { browser.Form().Unload(); });
    Renew();
    EXPECT_EQ(browser.fake.clock.Elapsed(), 10);
    EXPECT_THAT(browser.sckMaster.sent, SizeIs(1));
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(MasterQueryTest, DropsRepliesForAListThatIsNoLongerShown) {
    StartWith("d3");
    Renew();
    browser.sckMaster.ReplyIn(50, MasterDatagram(Family::Doom3, two));
    browser.ClickNode("q3");
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(browser.RowCount(), 0);
    browser.ClickNode("d3");
    EXPECT_EQ(browser.RowCount(), 0);
}

TEST_F(MasterQueryTest, KeepsListeningBetweenAGameAndItsMod) {
    StartWith("q3");
    Renew();
    browser.fake.events.RunFor(1);
    browser.sckMaster.ReplyIn(50, MasterDatagram(Family::Quake3, two));
    browser.ClickNode("mod1");
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(browser.Count(), "2 servers");
    EXPECT_EQ(browser.RowCount(), 0); // what the servers run is not known yet
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 2);
}

TEST_F(MasterQueryTest, DefersADatagramWhileAListIsReadOrWritten) {
    StartWith("q3", 3);
    browser.SelectRows({1});
    browser.fake.events.whenYielding = [&](std::int32_t call) {
        if (call != 4) // while the folder is saved
            return;
        browser.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, two));
        browser.In(0, [&] { EXPECT_EQ(browser.RowCount(), 3); });
    };
    browser.fake.events.doEventsCalls = 3;
    browser.Form().tree.mnuServAddToFavorites_Click(1);
    EXPECT_EQ(browser.RowCount(), 5);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 5);
    EXPECT_EQ(browser.program.Servers[5].Address, "127.9.200.255");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("fav1")).find("127.9."), std::string::npos);
}

TEST_F(MasterQueryTest, DropsADatagramThatWasDeferredForAnotherList) {
    StartWith("q3", 3);
    std::int32_t first = browser.fake.events.doEventsCalls;
    browser.fake.events.whenYielding = [&](std::int32_t call) {
        if (call == first + 2) // while the previous list is saved
            browser.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, two));
    };
    browser.ClickNode("hl");
    browser.fake.events.RunFor(100);
    EXPECT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")).substr(0, 4), " 3\r\n");
}

TEST_F(MasterQueryTest, ListsWhileAScanRuns) {
    const std::vector<std::string> servers = HeadlessBrowser::Addresses(3);
    StartWith("q3", 3);
    browser.PutServers(servers);
    browser.In(30, [&] { browser.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, two)); });
    browser.RefreshAll();
    EXPECT_EQ(browser.network.Asked(), servers);
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Live 1", "Live 2", "Live 3", "", ""));
    EXPECT_EQ(browser.Count(), "5 servers");
}

TEST_F(MasterQueryTest, AcceptsTheLargestDatagram) {
    StartWith("d3");
    std::string datagram = "\xFF\xFFservers\0"s;
    while (datagram.size() + 6 <= 65507)
        datagram += "\x7F\x0A\x01\x02\x38\x6D"s;
    Arrive(datagram);
    EXPECT_EQ(browser.RowCount(), (65507 - 10) / 6);
    EXPECT_EQ(browser.Cell(1, AddressColumn), "127.10.1.2:27960");
}

TEST_F(MasterQueryTest, LogsADatagramThatItCannotRead) {
    StartWith("d3", 1);
    browser.sckMaster.readFault = ErrorNumber::DeviceIOError;
    Arrive(MasterDatagram(Family::Doom3, two));
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;sckMaster_DataArrival;57"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_EQ(browser.RowCount(), 1);
    Arrive(MasterDatagram(Family::Doom3, two));
    EXPECT_EQ(browser.RowCount(), 3);
}

TEST_F(MasterQueryTest, AddsNoMoreThanAListMayHold) {
    StartWith("d3");
    browser.program.ServerCount = MaxServers - 1;
    Arrive(MasterDatagram(Family::Doom3, two));
    EXPECT_THAT(browser.Errors(), ElementsAre("modMasterQuery;ParseD3EngineServers;7"));
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 0);
    EXPECT_EQ(browser.RowCount(), 0);
}

TEST_F(MasterQueryTest, LoadsTheCountriesAtTheFirstReply) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n2130706432;2147483647;XX\r\n");
    StartWith("d3");
    Renew();
    EXPECT_EQ(browser.fake.files.Reads("C:\\Quarn\\countryip.dat"), 0);
    std::string shown;
    browser.window.whenShowingChanges = [&] { shown = browser.Message(); };
    Arrive(MasterDatagram(Family::Doom3, two));
    EXPECT_EQ(shown, "Initializing IP Database...");
    EXPECT_EQ(browser.Message(), Asking);
    EXPECT_THAT(browser.Column(LocationColumn), Each("XX"));
    EXPECT_EQ(browser.program.Servers[2].Country, "XX");
    Arrive(MasterDatagram(Family::Doom3, two));
    EXPECT_EQ(browser.fake.files.Reads("C:\\Quarn\\countryip.dat"), 1);
}

} // namespace
} // namespace quarn
