#include "tools/gamenet/protocol/Liars.h"

#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/protocol/Responder.h"
#include "tools/gamenet/protocol/Wire.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;

std::vector<TimedReply> AskLiar(Family family, LiarKind kind) {
    NetworkSettings network = OneServer(family);
    network.games[0].liars = 100;
    network.games[0].liarKinds = {kind};
    network.games[0].lateBy = 1234;
    network.games[0].spread = 0;
    const World world = CreateWorld(network);
    return Responder(network, world).AskServer(0, StatusRequests(family).front(), {});
}

class Liars : public testing::TestWithParam<Family> {
  protected:
    std::string Honest() {
        const NetworkSettings network = OneServer(GetParam());
        const World world = CreateWorld(network);
        return Responder(network, world).AskServer(0, StatusRequests(GetParam()).front(), {}).at(0).bytes;
    }

    std::string Lie(LiarKind kind) {
        const std::vector<TimedReply> replies = AskLiar(GetParam(), kind);
        EXPECT_EQ(replies.size(), 1U);
        return replies.at(0).bytes;
    }
};

TEST_P(Liars, Truncates) {
    EXPECT_LT(Lie(LiarKind::Truncated).size(), Honest().size());
    EXPECT_GE(Lie(LiarKind::Truncated).size(), 5U);
    EXPECT_TRUE(Honest().starts_with(Lie(LiarKind::Truncated)));
}

TEST_P(Liars, EmptiesItsValues) {
    const std::string reply = Lie(LiarKind::EmptyValued);
    const std::string empty = GetParam() == Family::Quake3  ? "\\sv_hostname\\\\"
                              : GetParam() == Family::Doom3 ? std::string("si_name\0\0", 9)
                                                            : std::string("\0\0\0\0", 4);
    EXPECT_NE(reply.find(empty), std::string::npos);
}

TEST_P(Liars, TerminatesNothing) {
    const char terminator = GetParam() == Family::Quake3 ? '\n' : '\0';
    const std::string reply = Lie(LiarKind::Unterminated);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), terminator), 1);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), '"'), 0);
    EXPECT_GT(reply.size(), Honest().size() / 2);
}

TEST_P(Liars, SendsTheLargestDatagram) {
    const std::string reply = Lie(LiarKind::Oversized);
    EXPECT_EQ(reply.size(), LargestDatagram);
    EXPECT_EQ(reply.substr(0, 14), Honest().substr(0, 14));
}

TEST_P(Liars, SendsRandomBytes) {
    EXPECT_GE(Lie(LiarKind::Random).size(), 5U);
    EXPECT_NE(Lie(LiarKind::Random).substr(0, 4), Honest().substr(0, 4));
}

TEST_P(Liars, IsLate) {
    const std::vector<TimedReply> replies = AskLiar(GetParam(), LiarKind::Late);
    ASSERT_EQ(replies.size(), 1U);
    EXPECT_EQ(replies[0].bytes, Honest());
    EXPECT_EQ(replies[0].delay, milliseconds(20 + 1234));
}

TEST_P(Liars, AnswersTwice) {
    const std::vector<TimedReply> replies = AskLiar(GetParam(), LiarKind::Duplicated);
    ASSERT_EQ(replies.size(), 2U);
    EXPECT_EQ(replies[0].bytes, Honest());
    EXPECT_EQ(replies[1].bytes, Honest());
    EXPECT_EQ(replies[0].delay, replies[1].delay);
}

TEST_P(Liars, SpeaksForAnotherFamily) {
    const std::string reply = Lie(LiarKind::WrongFamily);
    const std::string start = GetParam() == Family::Quake3  ? "\xFF\xFFinfoResponse"
                              : GetParam() == Family::Doom3 ? "\xFF\xFF\xFF\xFF\x43"
                                                              "127."
                                                            : "\xFF\xFF\xFF\xFFstatusResponse\n";
    EXPECT_TRUE(reply.starts_with(start));
}

INSTANTIATE_TEST_SUITE_P(All, Liars, testing::Values(Family::Quake3, Family::Doom3, Family::HalfLife),
                         [](const auto& parameter) { return std::string(FamilyName(parameter.param)); });

} // namespace
} // namespace quarn::gamenet
