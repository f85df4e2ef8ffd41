#include "tools/gamenet/Responder.h"

#include "tools/gamenet/DemoNetwork.h"
#include "tools/gamenet/MasterReplies.h"
#include "tools/gamenet/ServerReplies.h"
#include "tools/gamenet/Wire.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;

const std::string getStatus = "\xFF\xFF\xFF\xFFgetstatus";

NetworkSettings oneServer(Family family) {
    NetworkSettings network = demoNetwork();
    network.games = {plainGame(family, "x")};
    network.games[0].servers = 1;
    network.games[0].latency = {20, 20};
    network.games[0].fill = {50, 50};
    return network;
}

std::string statusRequest(Family family) {
    if (family == Family::Quake3)
        return getStatus;
    return family == Family::Doom3 ? std::string("\xFF\xFFgetinfo\0\0\0\0", 13) : "\xFF\xFF\xFF\xFFinfo";
}

std::string lossPattern(std::uint64_t seed, double percent, int count) {
    NetworkSettings network = oneServer(Family::Quake3);
    network.seed = seed;
    network.games[0].loss = percent;
    const World world = createWorld(network);
    Responder responder(network, world);
    std::string pattern;
    for (int nth = 0; nth < count; ++nth)
        pattern += responder.askServer(0, getStatus, milliseconds(nth)).empty() ? '-' : '+';
    return pattern;
}

TEST(Responder, losesTheSameRequestsInEveryRun) {
    EXPECT_EQ(lossPattern(1, 30, 200), lossPattern(1, 30, 200));
    EXPECT_NE(lossPattern(1, 30, 200), lossPattern(2, 30, 200));
    const std::string pattern = lossPattern(1, 30, 10000);
    const auto lost = std::count(pattern.begin(), pattern.end(), '-');
    EXPECT_GT(lost, 2700);
    EXPECT_LT(lost, 3300);
    EXPECT_EQ(lossPattern(1, 0, 50), std::string(50, '+'));
    EXPECT_EQ(lossPattern(1, 100, 50), std::string(50, '-'));
}

TEST(Responder, addsJitterToTheLatency) {
    NetworkSettings network = oneServer(Family::Quake3);
    network.games[0].jitter = 5;
    const World world = createWorld(network);
    Responder responder(network, world);
    milliseconds low = milliseconds::max();
    milliseconds high{0};
    for (int nth = 0; nth < 300; ++nth) {
        const milliseconds delay = responder.askServer(0, getStatus, {}).at(0).delay;
        low = std::min(low, delay);
        high = std::max(high, delay);
    }
    EXPECT_EQ(low, milliseconds(20));
    EXPECT_EQ(high, milliseconds(25));
}

TEST(Responder, halfLifeServersAnswerOnceAFrame) {
    NetworkSettings network = oneServer(Family::HalfLife);
    network.games[0].latency = {0, 0};
    const World world = createWorld(network);
    Responder responder(network, world);
    EXPECT_EQ(responder.askServer(0, statusRequest(Family::HalfLife), {}).at(0).delay, milliseconds(10));
}

TEST(Responder, silentServersSayNothing) {
    NetworkSettings network = oneServer(Family::Quake3);
    network.games[0].silent = 100;
    const World world = createWorld(network);
    Responder responder(network, world);
    EXPECT_TRUE(responder.askServer(0, getStatus, {}).empty());
    EXPECT_EQ(responder.counters().silent, 1U);
}

TEST(Responder, countsWhatItDoesNotKnow) {
    const NetworkSettings network = oneServer(Family::Quake3);
    const World world = createWorld(network);
    Responder responder(network, world);
    EXPECT_TRUE(responder.askServer(0, "hello", {}).empty());
    EXPECT_TRUE(responder.askMaster(0, "hello").empty());
    Counters expected;
    expected.serverRequests = 1;
    expected.masterRequests = 1;
    expected.unknown = 1;
    EXPECT_EQ(responder.counters(), expected);
}

TEST(Responder, playersChangeWithTheClockTheyWereGiven) {
    for (const auto& [clock, every] : {std::pair{Churn::Clock::Requests, 3}, {Churn::Clock::Seconds, 2}}) {
        NetworkSettings network = oneServer(Family::Quake3);
        network.games[0].churn = {clock, every};
        const World world = createWorld(network);
        Responder responder(network, world);
        std::vector<std::string> replies;
        for (int second = 0; second < 6; ++second)
            replies.push_back(responder.askServer(0, getStatus, milliseconds(second * 1000)).at(0).bytes);
        std::string pattern = "=";
        for (std::size_t nth = 1; nth < replies.size(); ++nth)
            pattern += replies[nth] == replies[nth - 1] ? '=' : '!';
        EXPECT_EQ(pattern, clock == Churn::Clock::Requests ? "===!==" : "==!=!=");
    }
}

TEST(Responder, threeHalfLifeQuestionsAreOneQuery) {
    NetworkSettings network = oneServer(Family::HalfLife);
    network.games[0].churn = {Churn::Clock::Requests, 1};
    const World world = createWorld(network);
    Responder responder(network, world);
    const auto ask = [&](const std::string& word) {
        return responder.askServer(0, "\xFF\xFF\xFF\xFF" + word, {}).at(0).bytes;
    };
    const std::string info = ask("info");
    const std::string players = ask("players");
    ask("rules");
    EXPECT_EQ(static_cast<int>(world.servers[0].status.players.size()), players.at(5));
    ask("info");
    EXPECT_NE(ask("players"), players);
}

TEST(Responder, mastersNameServersInsideAndOutsideTheNetworkAtTheirPace) {
    NetworkSettings network = oneServer(Family::Doom3);
    GameSettings& game = network.games[0];
    game.masterLatency = 7;
    game.masterPace = 2;
    game.listEntries = 1;
    network.listed = {{"x", {0x7F000009, 1}}};
    const World world = createWorld(network);
    Responder responder(network, world);
    const std::vector<TimedReply> replies = responder.askMaster(0, masterRequest(game));
    ASSERT_EQ(replies.size(), 2U);
    EXPECT_EQ(replies[0].delay, milliseconds(7));
    EXPECT_EQ(replies[1].delay, milliseconds(9));
    EXPECT_EQ(replies[1].bytes, std::string("\xFF\xFFservers\0\x7F\0\0\x9\1\0", 16));
}

std::vector<TimedReply> askLiar(Family family, LiarKind kind) {
    NetworkSettings network = oneServer(family);
    network.games[0].liars = 100;
    network.games[0].liarKinds = {kind};
    network.games[0].lateBy = 1234;
    const World world = createWorld(network);
    return Responder(network, world).askServer(0, statusRequest(family), {});
}

class Liar : public testing::TestWithParam<Family> {
  protected:
    std::string honest() {
        const NetworkSettings network = oneServer(GetParam());
        const World world = createWorld(network);
        return Responder(network, world).askServer(0, statusRequest(GetParam()), {}).at(0).bytes;
    }

    std::string lie(LiarKind kind) {
        const std::vector<TimedReply> replies = askLiar(GetParam(), kind);
        EXPECT_EQ(replies.size(), 1U);
        return replies.at(0).bytes;
    }
};

TEST_P(Liar, truncates) {
    EXPECT_LT(lie(LiarKind::Truncated).size(), honest().size());
    EXPECT_GE(lie(LiarKind::Truncated).size(), 5U);
    EXPECT_TRUE(honest().starts_with(lie(LiarKind::Truncated)));
}

TEST_P(Liar, emptiesItsValues) {
    const std::string reply = lie(LiarKind::EmptyValued);
    const std::string empty = GetParam() == Family::Quake3  ? "\\sv_hostname\\\\"
                              : GetParam() == Family::Doom3 ? std::string("si_name\0\0", 9)
                                                            : std::string("\0\0\0\0", 4);
    EXPECT_NE(reply.find(empty), std::string::npos);
}

TEST_P(Liar, terminatesNothing) {
    const char terminator = GetParam() == Family::Quake3 ? '\n' : '\0';
    const std::string reply = lie(LiarKind::Unterminated);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), terminator), 1);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), '"'), 0);
    EXPECT_GT(reply.size(), honest().size() / 2);
}

TEST_P(Liar, sendsTheLargestDatagram) {
    const std::string reply = lie(LiarKind::Oversized);
    EXPECT_EQ(reply.size(), largestDatagram);
    EXPECT_EQ(reply.substr(0, 14), honest().substr(0, 14));
}

TEST_P(Liar, sendsRandomBytes) {
    EXPECT_GE(lie(LiarKind::Random).size(), 5U);
    EXPECT_NE(lie(LiarKind::Random).substr(0, 4), honest().substr(0, 4));
}

TEST_P(Liar, isLate) {
    const std::vector<TimedReply> replies = askLiar(GetParam(), LiarKind::Late);
    ASSERT_EQ(replies.size(), 1U);
    EXPECT_EQ(replies[0].bytes, honest());
    EXPECT_EQ(replies[0].delay, milliseconds(20 + 1234));
}

TEST_P(Liar, answersTwice) {
    const std::vector<TimedReply> replies = askLiar(GetParam(), LiarKind::Duplicated);
    ASSERT_EQ(replies.size(), 2U);
    EXPECT_EQ(replies[0].bytes, honest());
    EXPECT_EQ(replies[1].bytes, honest());
    EXPECT_EQ(replies[0].delay, replies[1].delay);
}

TEST_P(Liar, speaksForAnotherFamily) {
    const std::string reply = lie(LiarKind::WrongFamily);
    const std::string start = GetParam() == Family::Quake3  ? "\xFF\xFFinfoResponse"
                              : GetParam() == Family::Doom3 ? "\xFF\xFF\xFF\xFF\x43"
                                                              "127."
                                                            : "\xFF\xFF\xFF\xFFstatusResponse\n";
    EXPECT_TRUE(reply.starts_with(start));
}

INSTANTIATE_TEST_SUITE_P(All, Liar, testing::Values(Family::Quake3, Family::Doom3, Family::HalfLife),
                         [](const auto& parameter) { return std::string(familyName(parameter.param)); });

} // namespace
} // namespace quarn::gamenet
