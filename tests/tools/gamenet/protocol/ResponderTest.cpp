#include "tools/gamenet/protocol/Responder.h"

#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/protocol/MasterReplies.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;

const std::string GetStatus = StatusRequests(Family::Quake3).front();

std::string LossPattern(std::uint64_t seed, double percent, int count) {
    NetworkSettings network = OneServer(Family::Quake3);
    network.seed = seed;
    network.games[0].loss = percent;
    const World world = CreateWorld(network);
    Responder responder(network, world);
    std::string pattern;
    for (int nth = 0; nth < count; ++nth)
        pattern += responder.AskServer(0, GetStatus, milliseconds(nth)).empty() ? '-' : '+';
    return pattern;
}

TEST(Responder, LosesTheSameRequestsInEveryRun) {
    EXPECT_EQ(LossPattern(1, 30, 200), LossPattern(1, 30, 200));
    EXPECT_NE(LossPattern(1, 30, 200), LossPattern(2, 30, 200));
    const std::string pattern = LossPattern(1, 30, 10000);
    const auto lost = std::count(pattern.begin(), pattern.end(), '-');
    EXPECT_GT(lost, 2700);
    EXPECT_LT(lost, 3300);
    EXPECT_EQ(LossPattern(1, 0, 50), std::string(50, '+'));
    EXPECT_EQ(LossPattern(1, 100, 50), std::string(50, '-'));
}

TEST(Responder, AddsJitterToTheLatency) {
    NetworkSettings network = OneServer(Family::Quake3);
    network.games[0].jitter = 5;
    const World world = CreateWorld(network);
    Responder responder(network, world);
    milliseconds low = milliseconds::max();
    milliseconds high{0};
    for (int nth = 0; nth < 300; ++nth) {
        const milliseconds delay = responder.AskServer(0, GetStatus, {}).at(0).delay;
        low = std::min(low, delay);
        high = std::max(high, delay);
    }
    EXPECT_EQ(low, milliseconds(20));
    EXPECT_EQ(high, milliseconds(25));
}

// The delays of the replies to info, players and rules.
std::vector<milliseconds> HalfLifeDelays(Responder& responder) {
    std::vector<milliseconds> delays;
    for (const std::string& request : StatusRequests(Family::HalfLife))
        delays.push_back(responder.AskServer(0, request, {}).at(0).delay);
    return delays;
}

TEST(Responder, HalfLifeRepliesLeaveInAnyOrder) {
    const NetworkSettings network = OneServer(Family::HalfLife);
    const World world = CreateWorld(network);
    Responder responder(network, world);
    std::set<std::size_t> first;
    std::set<std::size_t> last;
    for (int nth = 0; nth < 100; ++nth) {
        const std::vector<milliseconds> delays = HalfLifeDelays(responder);
        const auto [low, high] = std::ranges::minmax_element(delays);
        EXPECT_GE(*low, milliseconds(20));
        EXPECT_LE(*high, milliseconds(28));
        first.insert(static_cast<std::size_t>(low - delays.begin()));
        last.insert(static_cast<std::size_t>(high - delays.begin()));
    }
    EXPECT_EQ(first, (std::set<std::size_t>{0, 1, 2}));
    EXPECT_EQ(last, (std::set<std::size_t>{0, 1, 2}));
}

TEST(Responder, PlayersAndRulesOfAHalfLifeServerMayBeLater) {
    NetworkSettings network = OneServer(Family::HalfLife);
    network.games[0].spread = 0;
    network.games[0].detailsAfter = 30;
    const World world = CreateWorld(network);
    Responder responder(network, world);
    EXPECT_EQ(HalfLifeDelays(responder),
              (std::vector<milliseconds>{milliseconds(20), milliseconds(50), milliseconds(50)}));
}

TEST(Responder, OtherFamiliesSendOneReplyWithoutSpread) {
    for (const Family family : {Family::Quake3, Family::Doom3}) {
        NetworkSettings network = OneServer(family);
        network.games[0].detailsAfter = 30;
        const World world = CreateWorld(network);
        Responder responder(network, world);
        for (int nth = 0; nth < 20; ++nth)
            EXPECT_EQ(responder.AskServer(0, StatusRequests(family).front(), {}).at(0).delay,
                      milliseconds(20));
    }
}

TEST(Responder, SilentServersDoNotAnswer) {
    NetworkSettings network = OneServer(Family::Quake3);
    network.games[0].silent = 100;
    const World world = CreateWorld(network);
    Responder responder(network, world);
    EXPECT_TRUE(responder.AskServer(0, GetStatus, {}).empty());
    EXPECT_EQ(responder.Counts().silent, 1U);
}

TEST(Responder, CountsUnknownRequests) {
    const NetworkSettings network = OneServer(Family::Quake3);
    const World world = CreateWorld(network);
    Responder responder(network, world);
    EXPECT_TRUE(responder.AskServer(0, "hello", {}).empty());
    EXPECT_TRUE(responder.AskMaster(0, "hello").empty());
    Counters expected;
    expected.serverRequests = 1;
    expected.masterRequests = 1;
    expected.unknown = 1;
    EXPECT_EQ(responder.Counts(), expected);
}

TEST(Responder, PlayersChangeWithTheClockTheyWereGiven) {
    for (const auto& [clock, every] : {std::pair{Churn::Clock::Requests, 3}, {Churn::Clock::Seconds, 2}}) {
        NetworkSettings network = OneServer(Family::Quake3);
        network.games[0].churn = {clock, every};
        const World world = CreateWorld(network);
        Responder responder(network, world);
        std::vector<std::string> replies;
        for (int second = 0; second < 6; ++second)
            replies.push_back(responder.AskServer(0, GetStatus, milliseconds(second * 1000)).at(0).bytes);
        std::string pattern = "=";
        for (std::size_t nth = 1; nth < replies.size(); ++nth)
            pattern += replies[nth] == replies[nth - 1] ? '=' : '!';
        EXPECT_EQ(pattern, clock == Churn::Clock::Requests ? "===!==" : "==!=!=");
    }
}

TEST(Responder, ThreeHalfLifeQuestionsAreOneQuery) {
    NetworkSettings network = OneServer(Family::HalfLife);
    network.games[0].churn = {Churn::Clock::Requests, 1};
    const World world = CreateWorld(network);
    Responder responder(network, world);
    const auto ask = [&](const std::string& word) {
        return responder.AskServer(0, "\xFF\xFF\xFF\xFF" + word, {}).at(0).bytes;
    };
    const std::string info = ask("info");
    const std::string players = ask("players");
    ask("rules");
    EXPECT_EQ(static_cast<int>(world.servers[0].status.players.size()), players.at(5));
    ask("info");
    EXPECT_NE(ask("players"), players);
}

TEST(Responder, MastersNameServersInsideAndOutsideTheNetworkAtTheirPace) {
    NetworkSettings network = OneServer(Family::Doom3);
    GameSettings& game = network.games[0];
    game.masterLatency = 7;
    game.masterPace = 2;
    game.listEntries = 1;
    network.listed = {{"x", {0x7F000009, 1}}};
    const World world = CreateWorld(network);
    Responder responder(network, world);
    const std::vector<TimedReply> replies = responder.AskMaster(0, MasterRequest(game));
    ASSERT_EQ(replies.size(), 2U);
    EXPECT_EQ(replies[0].delay, milliseconds(7));
    EXPECT_EQ(replies[1].delay, milliseconds(9));
    EXPECT_EQ(replies[1].bytes, std::string("\xFF\xFFservers\0\x7F\0\0\x9\1\0", 16));
}

} // namespace
} // namespace quarn::gamenet
