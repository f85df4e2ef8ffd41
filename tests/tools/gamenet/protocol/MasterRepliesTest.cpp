#include "tools/gamenet/protocol/MasterReplies.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

std::vector<std::string> Ask(const GameSettings& game, std::string_view request) {
    return MasterReply(game, {FirstServer, SecondServer}, request, Random{1});
}

TEST(MasterReplies, AnswersTheRequestOfItsGamesIni) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        const GameSettings game = GameOf(family);
        const std::vector<std::string> reply = Ask(game, MasterRequest(game));
        ASSERT_EQ(reply.size(), 1U);
        EXPECT_EQ(ReadMasterList(family, MasterHeader(family), reply[0]),
                  (std::vector<Endpoint>{FirstServer, SecondServer}));
    }
}

TEST(MasterReplies, RequestsAreThoseOfTheRealGames) {
    EXPECT_EQ(MasterRequest(GameOf(Family::Quake3)), "\xFF\xFF\xFF\xFFgetservers 68 full empty");
    EXPECT_EQ(MasterRequest(GameOf(Family::Doom3)), Bytes("\xFF\xFFgetServers\0\x29\0\1\0\0\0"));
    EXPECT_EQ(MasterRequest(GameOf(Family::HalfLife)), Bytes("1\xFF"
                                                             "0.0.0.0:0\0\0"));
}

TEST(MasterReplies, TakesAnyFilterWords) {
    for (const std::string& request :
         {Bytes("\xFF\xFF\xFF\xFFgetservers"), Bytes("\xFF\xFF\xFF\xFFgetservers 68 empty\n"),
          Bytes("\xFF\xFF\xFF\xFFGETSERVERS x y z"), Bytes("\xFF\xFF\xFF\xFFgetserversExt Any 71 ipv4")})
        EXPECT_EQ(Ask(GameOf(Family::Quake3), request).size(), 1U) << TruthEscaped(request);
    for (const std::string& request :
         {Bytes("\xFF\xFFgetServers"), Bytes("\xFF\xFFgetservers\0\0\0\0\0\0\0\0\0")})
        EXPECT_EQ(Ask(GameOf(Family::Doom3), request).size(), 1U) << TruthEscaped(request);
    for (const std::string& request :
         {Bytes("1"), Bytes("1\xFF"), Bytes("c"), Bytes("1\0\0\0\0\\gamedir\\cs\0")})
        EXPECT_EQ(Ask(GameOf(Family::HalfLife), request).size(), 1U) << TruthEscaped(request);
}

TEST(MasterReplies, SaysNothingToOthers) {
    for (const std::string& request :
         {Bytes(""), Bytes("\xFF\xFF\xFF\xFF"), Bytes("getservers 68"), Bytes("\xFF\xFFgetservers 68"),
          Bytes("\xFF\xFF\xFF\xFFgetserver"), Bytes("\xFF\xFF\xFF\xFFgetstatus"), Bytes("1\xFF"),
          Bytes("\xFF\xFF\xFF\xFF getservers")})
        EXPECT_TRUE(Ask(GameOf(Family::Quake3), request).empty()) << TruthEscaped(request);
    for (const std::string& request :
         {Bytes(""), Bytes("\xFF\xFF"), Bytes("\xFF\xFF\xFF\xFFgetServers"), Bytes("\xFF\xFFgetInfo\0")})
        EXPECT_TRUE(Ask(GameOf(Family::Doom3), request).empty()) << TruthEscaped(request);
    for (const std::string& request : {Bytes(""), Bytes("2\xFF"), Bytes("cc"), Bytes("\xFF\xFF\xFF\xFFinfo")})
        EXPECT_TRUE(Ask(GameOf(Family::HalfLife), request).empty()) << TruthEscaped(request);
}

TEST(MasterReplies, APackedListComesBatchByBatch) {
    GameSettings game = GameOf(Family::HalfLife);
    game.halfLifeList = HalfLifeList::Packed;
    game.listEntries = 2;
    const std::vector<Endpoint> servers = ManyServers(3);
    const auto batch = [&](const std::string& last) {
        const auto reply = MasterReply(game, servers, "1\xFF" + last + Bytes("\0\0"), Random{1});
        return reply.size() == 1 ? reply[0].substr(6) : "?";
    };
    const std::string start = batch("0.0.0.0:0");
    EXPECT_EQ(start, Bytes("\x7F\x10\0\1\x6D\x38\x7F\x10\0\2\x6D\x38"));
    EXPECT_EQ(batch(EndpointText(servers[1])), Bytes("\x7F\x10\0\3\x6D\x38\0\0\0\0\0\0"));
    EXPECT_EQ(batch(EndpointText(servers[2])), Bytes("\0\0\0\0\0\0"));
}

} // namespace
} // namespace quarn::gamenet
