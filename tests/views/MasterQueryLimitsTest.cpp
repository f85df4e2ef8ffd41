// What "Renew" does to a network that floods it, and its two extras.

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"
#include "views/MasterQuery.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace quarn {
namespace {

using namespace std::string_literals;
using gamenet::Family;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* NoAnswer = "The master server did not answer.";

class MasterQueryLimitsTest : public ::testing::Test {
  protected:
    void StartWith(const std::string& game, std::int32_t count = 0) {
        browser.PutList(game, HeadlessBrowser::Addresses(count));
        browser.Set("Selection", "LastGame", game == "q3" ? 9 : game == "d3" ? 10 : 11);
        ASSERT_TRUE(browser.Start());
    }
    void Renew() {
        browser.fake.prompts.yesNoAnswers.push_back(true);
        browser.Form().master.mnuServerListGet_Click();
    }
    void Arrive(std::string datagram) {
        browser.sckMaster.ReplyIn(0, std::move(datagram));
        browser.fake.events.DoEvents();
    }
    // A reply of this many servers whose addresses begin with the byte `first`.
    static std::string LargeReply(int first, int count) {
        std::string reply = "\xFF\xFF\xFF\xFFgetserversResponse";
        for (int i = 0; i < count; ++i) {
            reply += '\\';
            for (const int byte : {first, 1, i >> 8 & 0xFF, i & 0xFF, 0x6D, 0x38})
                reply += static_cast<char>(byte);
        }
        return reply;
    }

    HeadlessBrowser browser;
};

TEST_F(MasterQueryLimitsTest, AFloodEndsAtTheServersOfOneRenewal) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    StartWith("q3");
    Renew();
    for (int i = 0; i < 40; ++i)
        Arrive(LargeReply(i, 9'000));
    EXPECT_GE(browser.program.ServerCount, MasterQuery::MostServers);
    EXPECT_LE(browser.program.ServerCount, MasterQuery::MostServers + 9'000);
    const std::vector<std::string> log = browser.LogFile();
    EXPECT_EQ(std::ranges::count(log, "frmMain;sckMaster_DataArrival;7"), 1);
    EXPECT_EQ(browser.program.AppLog->ErrorCount(), 0);
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)); // the question

    Renew(); // begins afresh
    Arrive(LargeReply(1, 10));
    EXPECT_EQ(browser.program.ServerCount, 10);
}

TEST_F(MasterQueryLimitsTest, RepliesThatWaitBehindAListingAreBounded) {
    StartWith("q3");
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    Renew();
    bool flooded = false;
    browser.fake.events.whenYielding = [&](std::int32_t) {
        if (std::exchange(flooded, true))
            return;
        for (int i = 0; i < 100; ++i)
            browser.sckMaster.ReplyIn(0, LargeReply(i, 2'000)); // 14 kB each
    };
    Arrive(LargeReply(200, 100));
    browser.fake.events.whenYielding = nullptr;
    EXPECT_TRUE(flooded);
    EXPECT_LE(browser.program.ServerCount,
              100 + static_cast<std::int32_t>(MasterQuery::MostWaitingBytes / 7));
    EXPECT_GT(browser.program.ServerCount, 100'000);
    const std::vector<std::string> log = browser.LogFile();
    EXPECT_EQ(std::ranges::count(log, "frmMain;sckMaster_DataArrival;7"), 1);
}

TEST_F(MasterQueryLimitsTest, RepliesThatWaitCountAmongTheServersOfOneRenewal) {
    StartWith("q3");
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    Renew();
    for (int i = 0; i < 10; ++i)
        Arrive(LargeReply(i, 9'000));
    bool flooded = false;
    browser.fake.events.whenYielding = [&](std::int32_t) {
        if (std::exchange(flooded, true))
            return;
        for (int i = 20; i < 35; ++i) // a little less than may wait
            browser.sckMaster.ReplyIn(0, LargeReply(i, 9'000));
    };
    Arrive(LargeReply(10, 9'000));
    browser.fake.events.whenYielding = nullptr;
    EXPECT_TRUE(flooded);
    EXPECT_EQ(browser.program.ServerCount, 12 * 9'000) << "the reply that reaches the limit is the last";
    EXPECT_EQ(std::ranges::count(browser.LogFile(), "frmMain;sckMaster_DataArrival;7"), 1);
}

TEST_F(MasterQueryLimitsTest, WaitingRepliesAreDroppedForACommandThatReplacesTheList) {
    StartWith("q3");
    browser.PutList("d3", {"127.0.3.1:27666"});
    Renew();
    bool flooded = false;
    browser.fake.events.whenYielding = [&](std::int32_t) {
        if (std::exchange(flooded, true))
            return;
        for (int i = 0; i < 20; ++i)
            browser.sckMaster.ReplyIn(0, LargeReply(i, 1'000));
        browser.In(0, [&] { browser.ClickNode("d3"); });
    };
    const std::int32_t yieldsBefore = browser.fake.events.doEventsCalls;
    Arrive(LargeReply(200, 100));
    EXPECT_EQ(browser.program.CurrentGame, "d3");
    EXPECT_LT(browser.fake.events.doEventsCalls - yieldsBefore, 1'000); // the others were not listed
    EXPECT_EQ(browser.RowCount(), 1);
}

TEST_F(MasterQueryLimitsTest, AListWithoutAMasterSaysSoAndKeepsItsServers) {
    browser.PutList("fav1", HeadlessBrowser::Addresses(2));
    StartWith("q3", 1);
    browser.ClickNode("fav1");
    browser.Form().master.mnuServerListGet_Click();
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].text, "This list has no master server to ask!");
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Quarn - Error");
    EXPECT_EQ(browser.RowCount(), 2);
    EXPECT_EQ(browser.program.ServerCount, 2);
    EXPECT_THAT(browser.sckMaster.sent, IsEmpty());
    EXPECT_EQ(browser.Message(), "Ready.");
}

TEST_F(MasterQueryLimitsTest, AnEmptyMasterResponseMatchesNoReplyWithoutADelimiter) {
    std::string games = HeadlessGamesIni;
    games.replace(games.find("MasterResponse=$255$255$255$255getserversResponse"),
                  std::string("MasterResponse=$255$255$255$255getserversResponse").size(), "MasterResponse=");
    browser.fake.files.Put("C:\\Quarn\\Games.ini", games);
    StartWith("q3");
    Renew();
    Arrive("0123456789abcdef");
    EXPECT_EQ(browser.program.ServerCount, 0);
    EXPECT_EQ(browser.RowCount(), 0);
}

class ListOnceTest : public MasterQueryLimitsTest {
  protected:
    void StartOnce(const std::string& game, std::int32_t count = 0) {
        StartWith(game, count);
        browser.program.ListOnce = 1;
    }
    const std::vector<std::string> two = {"127.9.0.1:27960", "127.9.200.255:65535"};
};

TEST_F(ListOnceTest, AMastersAddressIsAddedOnce) {
    StartOnce("q3");
    Renew();
    Arrive(MasterDatagram(Family::Quake3, {two[0], two[1], two[0]}));
    Arrive(MasterDatagram(Family::Quake3, {two[1], "127.9.0.1:27961"}));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0], two[1], "127.9.0.1:27961"));
    EXPECT_EQ(browser.Count(), "3 servers");
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3"));
}

TEST_F(ListOnceTest, ShortRecordsAddAndCountNothing) {
    StartOnce("q3");
    Renew();
    Arrive(MasterDatagram(Family::Quake3, two, true));
    EXPECT_EQ(browser.program.ServerCount, 2);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 2);
    EXPECT_EQ(browser.Count(), "2 servers");
    Arrive(MasterDatagram(Family::Quake3, {"127.9.0.9:27960"}, true));
    EXPECT_EQ(browser.Count(), "3 servers");
}

TEST_F(ListOnceTest, AHalfLifeListIsNotDoubled) {
    StartOnce("hl");
    Renew();
    Arrive(MasterDatagram(Family::HalfLife, two));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0], two[1]));
    EXPECT_EQ(browser.Count(), "2 servers");
}

TEST_F(ListOnceTest, ServersOfTheListCountAfterDeletingAndAddingAsWell) {
    StartOnce("q3");
    Renew();
    Arrive(MasterDatagram(Family::Quake3, two));
    browser.SelectRows({1});
    browser.Form().servers.mnuServDelete_Click();
    browser.Form().servers.AddServer("127.9.0.7", "27960");
    Arrive(MasterDatagram(Family::Quake3, {two[1], "127.9.0.7:27960", two[0]}));
    std::vector<std::string> addresses;
    for (std::int32_t i = 1; i <= browser.program.ServerCount; ++i)
        addresses.push_back(AddressText(browser.program.Servers[i]));
    EXPECT_THAT(addresses, ElementsAre(two[1], "127.9.0.7:27960", two[0]));
}

TEST_F(ListOnceTest, OffEverythingIsAsBefore) {
    StartWith("q3");
    Renew();
    Arrive(MasterDatagram(Family::Quake3, {two[0], two[0]}, true));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0], two[0]));
    EXPECT_EQ(browser.Count(), "3 servers");
}

class AskMasterFirstTest : public MasterQueryLimitsTest {
  protected:
    void StartPatiently(std::int32_t count) {
        StartWith("q3", count);
        browser.program.AskMasterFirst = 1;
    }
    const std::vector<std::string> two = {"127.9.0.1:27960", "127.9.200.255:65535"};
};

TEST_F(AskMasterFirstTest, TheListStaysUntilTheMasterAnswers) {
    StartPatiently(3);
    Renew();
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_EQ(browser.program.ServerCount, 3);
    Arrive(MasterDatagram(Family::Quake3, {two[0]}));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0]));
    Arrive(MasterDatagram(Family::Quake3, {two[1]}));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0], two[1]));
    EXPECT_EQ(browser.Count(), "2 servers");
    browser.fake.events.RunFor(10'000);
    EXPECT_NE(browser.Message(), NoAnswer);
    EXPECT_FALSE(browser.Controls().tmrMaster.Enabled());
}

TEST_F(AskMasterFirstTest, RepliesWithoutAnAddressReplaceNothing) {
    StartPatiently(3);
    Renew();
    for (const std::string& empty :
         {"\xFF\xFF\xFF\xFFgetserversResponse\\EOT\0\0\0"s, "\xFF\xFF\xFF\xFFgetserversResponse\\"s,
          "junk junk"s, "\xFF\xFF\xFF\xFFprint\nno\\"s}) {
        Arrive(empty);
        EXPECT_EQ(browser.RowCount(), 3);
        EXPECT_EQ(browser.program.ServerCount, 3);
        EXPECT_EQ(browser.program.Servers[3].Name, "Server 3");
    }
    Arrive(MasterDatagram(Family::Quake3, two, true));
    EXPECT_EQ(browser.RowCount(), 2);
    EXPECT_EQ(browser.Count(), "3 servers"); // counts the end mark, as without the extra
}

TEST_F(AskMasterFirstTest, ASilentMasterIsGivenUpAndTheListStays) {
    StartPatiently(3);
    Renew();
    browser.sckMaster.ReplyIn(3500, MasterDatagram(Family::Quake3, two)); // too late
    browser.fake.events.RunFor(2999);
    EXPECT_NE(browser.Message(), NoAnswer);
    browser.fake.events.RunFor(2);
    EXPECT_EQ(browser.Message(), NoAnswer);
    EXPECT_EQ(browser.RowCount(), 3);
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(browser.RowCount(), 3);
    EXPECT_FALSE(browser.Controls().tmrMaster.Enabled());
    Renew();
    Arrive(MasterDatagram(Family::Quake3, two));
    EXPECT_EQ(browser.RowCount(), 2);
}

TEST_F(AskMasterFirstTest, AReplyDuringAScanReplacesTheListWhenTheScanHasEnded) {
    StartPatiently(4);
    browser.PutServers(HeadlessBrowser::Addresses(4));
    Renew();
    browser.network.whenAsked = [&](const std::string& address) {
        if (address == "127.0.1.2:27960") {
            browser.sckMaster.ReplyIn(5, MasterDatagram(Family::Quake3, {two[0]}));
            browser.sckMaster.ReplyIn(6, MasterDatagram(Family::Quake3, {two[1]}));
        }
    };
    browser.RefreshAll();
    EXPECT_THAT(browser.network.Asked(), SizeIs(2));
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre(two[0], two[1]));
}

TEST_F(AskMasterFirstTest, NothingIsSaidOfAMasterWhoseListWasLeft) {
    StartPatiently(3);
    browser.PutList("d3", {"127.0.3.1:27666"});
    Renew();
    browser.ClickNode("d3");
    browser.fake.events.RunFor(10'000);
    EXPECT_NE(browser.Message(), NoAnswer);
    EXPECT_EQ(browser.RowCount(), 1);
}

TEST_F(AskMasterFirstTest, NoStillMeansNo) {
    StartPatiently(3);
    browser.fake.prompts.yesNoAnswers = {false};
    browser.Form().master.mnuServerListGet_Click();
    EXPECT_THAT(browser.sckMaster.sent, IsEmpty());
    EXPECT_EQ(browser.RowCount(), 3);
}

} // namespace
} // namespace quarn
