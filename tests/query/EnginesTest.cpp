#include "query/Engines.h"

#include "base/Conversions.h"
#include "core/modStringHelper.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;

TEST(EnginesTest, FindsAFamilyByItsExactKey) {
    for (const char* key : {"q3", "d3", "hl"}) {
        const EngineFamily* const found = FindEngine(StandardEngines(), key);
        ASSERT_NE(found, nullptr) << key;
        EXPECT_EQ(found->key, key);
    }
    for (const char* key : {"", "Q3", "q3 ", "q", "q33", "xx"})
        EXPECT_EQ(FindEngine(StandardEngines(), key), nullptr) << key;
    EXPECT_EQ(FindEngine({}, "q3"), nullptr);
}

// A made-up fourth family: its masters answer "LIST:address port,address port" and its servers "name/map".
constexpr std::string_view CapitalRequests[] = {"WHO", "WHERE"};

void AppendCapitalServers(ProgramState& program, std::string& body) {
    for (const std::string_view entry : Split(body, ',')) {
        const std::vector<std::string_view> fields = Split(entry, ' ');
        ServerRecord& server = program.AppendServer();
        server.Address = fields.at(0);
        server.Port = ToLong(fields.at(1));
    }
}

void ParseCapitalStatus(ProgramState& program, std::string_view datagram, std::int32_t index) {
    const std::vector<std::string_view> fields = Split(datagram, '/');
    program.Servers[index].Name = fields.at(0);
    program.Servers[index].Map = fields.at(1);
}

TEST(EnginesTest, AFamilyOfOneRowIsAskedListedAndScanned) {
    const EngineFamily fourFamilies[] = {StandardEngines()[0],
                                         StandardEngines()[1],
                                         StandardEngines()[2],
                                         {.key = "capital",
                                          .statusRequests = CapitalRequests,
                                          .parseStatus = ParseCapitalStatus,
                                          .masterHeaderDelimiter = ":",
                                          .parseMaster = AppendCapitalServers}};
    HeadlessBrowser browser;
    browser.engines = fourFamilies;
    std::string games = HeadlessGamesIni;
    ReplaceAll(games, "Engine=d3", "Engine=capital");
    ReplaceAll(games, "MasterResponse=$255$255servers\n", "MasterResponse=LIST\n");
    browser.fake.files.Put("C:\\Quarn\\Games.ini", games);
    browser.Set("Selection", "LastGame", HeadlessBrowser::D3);
    ASSERT_TRUE(browser.Start());

    browser.fake.prompts.yesNoAnswers.push_back(true);
    browser.Form().master.mnuServerListGet_Click();
    browser.sckMaster.ReplyIn(0, "LIST:127.0.0.7 1007,127.0.0.8 1008");
    browser.sckMaster.ReplyIn(0, "LAST:127.0.0.9 1009"); // another header
    browser.fake.events.DoEvents();
    EXPECT_THAT(browser.Column(AddressColumn), ElementsAre("127.0.0.7:1007", "127.0.0.8:1008"));

    for (const char* address : {"127.0.0.7:1007", "127.0.0.8:1008"})
        browser.network.scripts[address] = [&](const SentDatagram& request) {
            if (request.bytes == "WHERE")
                browser.sckServer.ReplyIn(5, "Hall " + std::to_string(request.port) + "/castle");
        };
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Hall 1007", "Hall 1008"));
    EXPECT_THAT(browser.Column(MapColumn), ElementsAre("castle", "castle"));
    EXPECT_THAT(browser.Column(PingColumn), ElementsAre("5", "5"));
}

} // namespace
} // namespace quarn
