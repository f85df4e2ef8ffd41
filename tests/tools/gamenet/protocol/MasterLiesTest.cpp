#include "tools/gamenet/protocol/MasterLies.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/protocol/MasterReplies.h"
#include "tools/gamenet/protocol/Wire.h"
#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

std::vector<Endpoint> ReadLie(const GameSettings& game, const std::string& datagram) {
    const char delimiter = game.family == Family::Doom3 ? '\0' : '\\';
    const std::size_t end = datagram.find(delimiter, 1);
    // A header that does not end makes readers of the Half-Life family take the header for addresses.
    return end == std::string::npos ? std::vector<Endpoint>{{0, 0}}
                                    : ReadMasterList(game.family, datagram.substr(0, end), datagram);
}

TEST(MasterLies, NeverNamesAStranger) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife})
        for (const std::string lie : {"truncated", "random", "wrong-header", "oversized", "duplicated"}) {
            GameSettings game = GameOf(family);
            game.masterLie = ParseMasterLie(lie);
            game.listEntries = 3;
            for (std::uint64_t nth = 0; nth < 200; ++nth)
                for (const std::string& datagram :
                     MasterReply(game, ManyServers(nth % 10), MasterRequest(game), Random{nth}))
                    for (const Endpoint& server : ReadLie(game, datagram))
                        ASSERT_TRUE(IsLoopback(server.address)) << lie << ": " << TruthEscaped(datagram);
        }
}

TEST(MasterLies, LetsNoEndMarkForm) {
    GameSettings game = GameOf(Family::Quake3);
    game.masterLie = MasterLie::Random;
    for (std::uint64_t nth = 0; nth < 50; ++nth)
        for (const std::string& datagram : MasterReply(game, {}, MasterRequest(game), Random{nth}))
            EXPECT_EQ(datagram.find('E'), std::string::npos);
}

TEST(MasterLies, LiesAsItWasTold) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        GameSettings game = GameOf(family);
        const auto reply = [&](const char* lie) {
            game.masterLie = ParseMasterLie(lie);
            return MasterReply(game, {FirstServer, SecondServer}, MasterRequest(game), Random{1});
        };
        const std::vector<std::string> honest = reply("none");
        EXPECT_TRUE(reply("silent").empty());
        EXPECT_LT(reply("truncated").at(0).size(), honest[0].size());
        EXPECT_TRUE(honest[0].starts_with(reply("truncated").at(0)));
        EXPECT_NE(reply("random"), honest);
        EXPECT_FALSE(reply("wrong-header").at(0).starts_with(MasterHeader(family)));
        EXPECT_EQ(reply("oversized").at(0).size(), LargestDatagram);
        EXPECT_EQ(reply("duplicated"), (std::vector<std::string>{honest[0], honest[0]}));
    }
}

} // namespace
} // namespace quarn::gamenet
