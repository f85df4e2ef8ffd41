#include "tools/gamenet/world/World.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/cli/Reports.h"
#include "tools/gamenet/protocol/ServerReplies.h"
#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace quarn::gamenet {
namespace {

NetworkSettings DemoWithSeed(std::uint64_t seed) {
    NetworkSettings network = DemoNetwork();
    network.seed = seed;
    return network;
}

TEST(World, FollowsFromItsSeed) {
    const NetworkSettings network = DemoWithSeed(7);
    EXPECT_EQ(TruthReport(network, CreateWorld(network)), TruthReport(network, CreateWorld(network)));
    EXPECT_NE(TruthReport(network, CreateWorld(network)),
              TruthReport(DemoWithSeed(8), CreateWorld(DemoWithSeed(8))));
}

TEST(World, AddressesAreUniqueInTheirCountriesAndSafeToList) {
    NetworkSettings network = DemoWithSeed(3);
    for (GameSettings& game : network.games)
        game.servers = 500;
    // Many drawn addresses end in a byte that completes "EOT" with this port.
    network.games[0].servers = 3000;
    network.games[0].port = 0x4F54;
    const World world = CreateWorld(network);
    std::map<std::string, CountryBlock> blocks;
    for (const CountryBlock& block : world.countryBlocks)
        blocks[block.country] = block;
    std::set<std::uint32_t> addresses;
    for (const GameServer& server : world.servers) {
        const Endpoint& endpoint = server.status.endpoint;
        EXPECT_TRUE(IsLoopback(endpoint.address));
        EXPECT_TRUE(addresses.insert(endpoint.address).second) << EndpointText(endpoint);
        EXPECT_GE(endpoint.address, blocks.at(server.country).first);
        EXPECT_LE(endpoint.address, blocks.at(server.country).last);
        EXPECT_FALSE(LooksLikeEndMark(endpoint));
    }
    EXPECT_GT(world.countryBlocks.size(), 10U);
}

TEST(World, CountryBlocksDoNotOverlapAndLeaveTheLowAddressesFree) {
    for (const std::size_t count : {1U, 3U, 24U, 240U}) {
        NetworkSettings network = DemoNetwork();
        network.countries.assign(count, "DE");
        std::uint32_t previous = 0x7F09FFFF;
        for (const CountryBlock& block : CreateWorld(network).countryBlocks) {
            EXPECT_EQ(block.first, previous + 1);
            EXPECT_LT(block.first, block.last);
            EXPECT_TRUE(IsLoopback(block.last));
            previous = block.last;
        }
    }
}

TEST(World, RefusesCountriesItHasNoBlocksFor) {
    for (const std::size_t count : {0U, 241U}) {
        NetworkSettings network = DemoNetwork();
        network.countries.assign(count, "DE");
        EXPECT_THROW(CreateWorld(network), BadSetting);
    }
}

TEST(World, SharesAreExact) {
    NetworkSettings network = DemoNetwork();
    network.games.resize(1);
    GameSettings& game = network.games[0];
    game.servers = 40;
    game.silent = 10;
    game.closed = 5;
    game.liars = 50;
    game.locked = 25;
    std::map<std::string, int> kinds;
    int locked = 0;
    for (const GameServer& server : CreateWorld(network).servers) {
        ++kinds[std::string(KindName(server))];
        locked += server.status.locked ? 1 : 0;
    }
    const std::map<std::string, int> expected = {{"honest", 14},    {"silent", 4},      {"closed", 2},
                                                 {"truncated", 3},  {"empty", 3},       {"unterminated", 3},
                                                 {"oversized", 3},  {"random", 2},      {"late", 2},
                                                 {"duplicated", 2}, {"wrong-family", 2}};
    EXPECT_EQ(kinds, expected);
    EXPECT_EQ(locked, 10);
}

TEST(World, PlayersComeAndGoFromEpochToEpoch) {
    NetworkSettings network = DemoWithSeed(5);
    network.games.resize(1);
    network.games[0].fill = {50, 50};
    const World world = CreateWorld(network);
    const GameServer& server = world.servers[0];
    const auto names = [&](std::uint64_t epoch) {
        std::vector<std::string> result;
        for (const Player& player : PlayersOf(server, network.games[0], network.seed, epoch))
            result.push_back(player.name);
        return result;
    };
    ASSERT_GE(names(0).size(), 2U);
    EXPECT_EQ(names(3), names(3));
    const std::vector<std::string> before = names(0);
    const std::vector<std::string> after = names(1);
    EXPECT_EQ(std::vector<std::string>(before.begin() + 1, before.end()),
              std::vector<std::string>(after.begin(), after.end() - 1));
}

Reading ReadServer(const ServerStatus& status, Family family) {
    std::vector<std::string> replies;
    for (const std::string& request : StatusRequests(family))
        replies.push_back(*ServerReply(family, status, request));
    return ReadReplies(family, replies);
}

std::vector<ReadPlayer> ShownPlayers(const ServerStatus& status, Family family) {
    std::vector<ReadPlayer> players;
    for (const Player& player : status.players) {
        if (family == Family::Quake3)
            players.push_back({player.score, player.ping, WithoutColours(player.name)});
        else if (family == Family::Doom3)
            players.push_back({0, player.ping * 256, WithoutColours(player.name)});
        else
            players.push_back({player.score, 0, player.name});
    }
    return players;
}

TEST(World, HonestServersSendEverythingThatABrowserShows) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        const NetworkSettings network = DemoWithSeed(seed);
        for (const GameServer& server : CreateWorld(network).servers) {
            const GameSettings& game = network.games[server.game];
            const ServerStatus& status = server.status;
            SCOPED_TRACE(game.shortName + ", seed " + std::to_string(seed) + ", " + status.name);
            const Reading reading = ReadServer(status, game.family);
            ASSERT_FALSE(reading.name.empty());
            ASSERT_EQ(reading.name,
                      game.family == Family::HalfLife ? status.name : WithoutColours(status.name));
            ASSERT_EQ(reading.map, status.map);
            ASSERT_EQ(reading.mod, status.mod);
            ASSERT_EQ(reading.maxPlayers, status.maxPlayers);
            ASSERT_EQ(reading.locked, status.locked ? 1 : 0);
            ASSERT_EQ(reading.players, ShownPlayers(status, game.family));
            ASSERT_GT(reading.variables.size(), 100U);
        }
    }
}

TEST(World, ServersDiffer) {
    int empty = 0;
    int locked = 0;
    std::set<std::string> names;
    const World world = CreateWorld(DemoNetwork());
    for (const GameServer& server : world.servers) {
        empty += server.status.players.empty() ? 1 : 0;
        locked += server.status.locked ? 1 : 0;
        names.insert(WithoutColours(server.status.name));
    }
    EXPECT_GT(empty, 3);
    EXPECT_LT(empty, 30);
    EXPECT_GT(locked, 0);
    EXPECT_EQ(names.size(), world.servers.size());
}

} // namespace
} // namespace quarn::gamenet
