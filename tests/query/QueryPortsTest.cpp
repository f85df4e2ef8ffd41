#include "query/QueryPorts.h"

#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeEvents.h"
#include "tests/fakes/FakeHostNames.h"
#include "tests/fakes/FakeTimerDriver.h"
#include "tests/fakes/FakeUdpSockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t Lifetime = 1000;

class QueryPortsTest : public ::testing::Test {
  protected:
    QueryPortsTest() {
        ports.lifetime = Lifetime;
        ports.DataArrival = [this](std::uint32_t number, std::int32_t tick) {
            if (const auto reply = ports.Take(number, tick))
                taken.push_back(std::to_string(reply->query.target.server) + ":" + reply->datagram + "@" +
                                std::to_string(TicksBetween(reply->query.sentTick, reply->tick)));
        };
        ports.Failed = [this](const std::string& description) { failures.push_back(description); };
    }

    ServerQuery Ask(std::uint32_t server) {
        return ports.Ask({.server = server, .index = 1}, "127.0.0.1", 27960, clock.TickCount(),
                         [](UdpSocket& socket) { socket.SendData("status"); });
    }
    FakeUdpSocket& LastSocket() { return *network.sent.back().socket; }

    FakeClock clock;
    FakeEvents events{clock};
    FakeHostNames hosts{events};
    FakeUdpSockets network{clock, events, hosts};
    Timer timer;
    FakeTimerDriver driver{events, timer};
    QueryPorts ports{network, clock, timer};
    std::vector<std::string> taken;
    std::vector<std::string> failures;
};

TEST_F(QueryPortsTest, AReplyReachesTheQueryOfItsPort) {
    Ask(1);
    FakeUdpSocket& first = LastSocket();
    Ask(2);
    FakeUdpSocket& second = LastSocket();
    second.ReplyIn(10, "second");
    first.ReplyIn(30, "first");
    events.RunFor(100);
    EXPECT_THAT(taken, ElementsAre("2:second@10", "1:first@30"));
}

TEST_F(QueryPortsTest, TheArrivalIsStampedBeforeTheReplyIsTaken) {
    const ServerQuery query = Ask(1);
    LastSocket().ReplyIn(10, "reply");
    std::int32_t stamped = 0;
    ports.DataArrival = [&](std::uint32_t, std::int32_t tick) { stamped = tick; };
    const std::int32_t start = clock.TickCount();
    events.RunFor(70);
    const auto reply = ports.Take(query.number, stamped);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->tick - start, 10);
    EXPECT_FALSE(ports.Take(query.number, stamped)); // there was one
}

TEST_F(QueryPortsTest, RepliesAreCounted) {
    const ServerQuery query = Ask(1);
    EXPECT_EQ(ports.Find(query.number).replies, 0);
    for (int i = 0; i < 3; ++i)
        LastSocket().ReplyIn(i, "reply");
    events.RunFor(100);
    EXPECT_EQ(ports.Find(query.number).replies, 3);
}

TEST_F(QueryPortsTest, ShortDatagramsAreDropped) {
    const ServerQuery query = Ask(1);
    for (const char* tiny : {"", "a", "abcd"})
        LastSocket().ReplyIn(5, tiny);
    LastSocket().ReplyIn(5, "abcde");
    LastSocket().ReplyIn(6, "abc");
    events.RunFor(100);
    EXPECT_THAT(taken, ElementsAre("1:abcde@5"));
    EXPECT_EQ(ports.Find(query.number).replies, 1);
}

TEST_F(QueryPortsTest, ManyShortDatagramsAreDroppedInSeveralTurns) {
    Ask(1);
    for (int i = 0; i < 40; ++i)
        LastSocket().ReplyIn(5, "abcd");
    LastSocket().ReplyIn(5, "abcde");
    events.RunFor(100);
    EXPECT_THAT(taken, ElementsAre("1:abcde@5"));
}

TEST_F(QueryPortsTest, AQueryIsFinishedOnce) {
    const ServerQuery query = Ask(1);
    ports.Finish(query.number);
    ports.Finish(query.number);
    ports.Close(query.number);
    EXPECT_FALSE(timer.Enabled()); // no finished port is left
}

TEST_F(QueryPortsTest, AFinishedQueryKeepsItsPortUntilItsTimeIsOver) {
    const ServerQuery query = Ask(1);
    FakeUdpSocket& socket = LastSocket();
    events.RunFor(50);
    ports.Finish(query.number);
    EXPECT_TRUE(ports.Find(query.number).finished);
    socket.ReplyIn(Lifetime - 50, "just in time");
    socket.ReplyIn(Lifetime - 49, "too late");
    events.RunFor(3 * Lifetime);
    EXPECT_THAT(taken, ElementsAre("1:just in time@1000"));
    EXPECT_EQ(ports.OpenCount(), 0);
    EXPECT_EQ(network.OpenCount(), 0);
    EXPECT_FALSE(timer.Enabled()); // nothing left to close
}

TEST_F(QueryPortsTest, WhatHasArrivedIsTakenBeforeItsPortIsClosed) {
    const ServerQuery query = Ask(1);
    ports.Finish(query.number);
    network.arrivalAge = 600; // it was noticed before its event could run
    LastSocket().ReplyIn(700, "status");
    events.PostIn(690, [&] { clock.Advance(600); }); // the timer comes first
    events.PostIn(691, [&] { timer.Tick(); });
    events.RunFor(2 * Lifetime);
    EXPECT_THAT(taken, ElementsAre("1:status@690"));
}

TEST_F(QueryPortsTest, AQueryThatIsNotFinishedKeepsItsPortForEver) {
    Ask(1);
    LastSocket().ReplyIn(60'000, "at last");
    events.RunFor(61'000);
    EXPECT_THAT(taken, ElementsAre("1:at last@60000"));
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(QueryPortsTest, OneFinishedAfterItsTimeIsClosedAtOnce) {
    const ServerQuery query = Ask(1);
    events.RunFor(Lifetime + 1);
    ports.Finish(query.number);
    EXPECT_EQ(ports.OpenCount(), 0);
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(QueryPortsTest, OneThatSentNothingIsClosedWhenItIsFinished) {
    const ServerQuery query =
        ports.Ask({.server = 1, .index = 1}, "127.0.0.1", 27960, clock.TickCount(), [](UdpSocket&) {});
    EXPECT_NE(query.number, 0U);
    ports.Finish(query.number);
    EXPECT_EQ(ports.OpenCount(), 0);
}

TEST_F(QueryPortsTest, TheOldestFinishedPortsAreClosedFirst) {
    std::vector<std::uint32_t> numbers;
    for (std::uint32_t server = 1; server <= QueryPorts::MostFinishedInTurn + 3; ++server) {
        numbers.push_back(Ask(server).number);
        ports.Finish(numbers.back());
    }
    EXPECT_EQ(ports.OpenCount(), ports.mostFinished);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(ports.Find(numbers[i]).number, 0U) << i;
    EXPECT_NE(ports.Find(numbers[3]).number, 0U);
}

TEST_F(QueryPortsTest, OpenQueriesAreNotClosedForFinishedOnes) {
    const ServerQuery open = Ask(1000);
    for (std::uint32_t server = 1; server <= 2 * QueryPorts::MostFinishedInTurn; ++server)
        ports.Finish(Ask(server).number);
    EXPECT_NE(ports.Find(open.number).number, 0U);
    EXPECT_EQ(ports.OpenCount(), ports.mostFinished + 1);
}

TEST_F(QueryPortsTest, ClosesByNumberByServerOrAll) {
    const std::uint32_t first = Ask(1).number;
    const std::uint32_t again = Ask(1).number;
    const std::uint32_t other = Ask(2).number;
    const std::uint32_t third = Ask(3).number;
    ports.Finish(other);
    ports.CloseOf(1);
    EXPECT_EQ(ports.Find(first).number, 0U);
    EXPECT_EQ(ports.Find(again).number, 0U);
    EXPECT_EQ(ports.OpenCount(), 2);
    ports.CloseFinished();
    EXPECT_EQ(ports.Find(other).number, 0U);
    EXPECT_EQ(ports.OpenCount(), 1);
    ports.Close(third);
    EXPECT_EQ(ports.OpenCount(), 0);
    Ask(4);
    ports.CloseAll();
    EXPECT_EQ(network.OpenCount(), 0);
    for (const std::uint32_t number : {0U, first, third, 99U}) {
        ports.Close(number);
        ports.Finish(number);
        EXPECT_FALSE(ports.Take(number, 0)) << number;
    }
}

TEST_F(QueryPortsTest, WhatArrivesAtAClosedPortIsLost) {
    const ServerQuery query = Ask(1);
    LastSocket().ReplyIn(10, "lost");
    ports.Close(query.number);
    Ask(2); // may use the same socket
    events.RunFor(100);
    EXPECT_THAT(taken, IsEmpty());
}

TEST_F(QueryPortsTest, SocketsAreUsedAgain) {
    for (int round = 0; round < 50; ++round) {
        const ServerQuery query = Ask(1);
        ports.Close(query.number);
    }
    EXPECT_EQ(network.MadeCount(), 1);
}

TEST_F(QueryPortsTest, ASocketThatIsStillClosingIsNotUsedAgain) {
    network.closeMilliseconds = 10;
    ports.Close(Ask(1).number);
    Ask(2);
    EXPECT_EQ(network.MadeCount(), 2);
}

TEST_F(QueryPortsTest, NumbersAreNeverUsedAgain) {
    const std::uint32_t first = Ask(1).number;
    ports.CloseAll();
    EXPECT_NE(Ask(1).number, first);
}

TEST_F(QueryPortsTest, AFloodClosesItsPort) {
    const ServerQuery query = Ask(1);
    for (int i = 0; i < 1000; ++i)
        LastSocket().ReplyIn(1, "flood");
    events.RunFor(100);
    EXPECT_EQ(taken.size(), static_cast<std::size_t>(QueryPorts::MostReplies));
    EXPECT_EQ(ports.Find(query.number).number, 0U);
}

TEST_F(QueryPortsTest, WithoutASocketThereIsNoQuery) {
    network.openLimit = 2;
    Ask(1);
    Ask(2);
    EXPECT_EQ(Ask(3).number, 0U);
    EXPECT_THAT(failures, ElementsAre("Too many open sockets"));
    EXPECT_EQ(ports.OpenCount(), 2);
}

TEST_F(QueryPortsTest, FinishedQueriesMakeRoomWhereSocketsRunOut) {
    network.openLimit = 2;
    ports.Finish(Ask(1).number);
    const ServerQuery open = Ask(2);
    const ServerQuery asked = Ask(3);
    EXPECT_NE(asked.number, 0U);
    EXPECT_NE(ports.Find(open.number).number, 0U);
    EXPECT_EQ(ports.OpenCount(), 2);
}

TEST_F(QueryPortsTest, AHandlerMayCloseAndAskAgain) {
    const ServerQuery query = Ask(1);
    ports.DataArrival = [&](std::uint32_t number, std::int32_t tick) {
        EXPECT_TRUE(ports.Take(number, tick));
        ports.CloseAll();
        ports.DataArrival = nullptr;
        Ask(2);
    };
    LastSocket().ReplyIn(1, "reply");
    events.RunFor(10);
    EXPECT_EQ(ports.Find(query.number).number, 0U);
    EXPECT_EQ(ports.OpenCount(), 1);
}

TEST_F(QueryPortsTest, TimeIsMeasuredAcrossTheWrapOfTheTickCounter) {
    for (const std::int32_t start : {std::numeric_limits<std::int32_t>::max(), -1, -500}) {
        clock.SetTickCount(start);
        const ServerQuery query = Ask(1);
        LastSocket().ReplyIn(900, "reply");
        ports.Finish(query.number);
        taken.clear();
        events.RunFor(950);
        EXPECT_THAT(taken, ElementsAre("1:reply@900")) << start;
        events.RunFor(500);
        EXPECT_EQ(ports.OpenCount(), 0) << start;
    }
}

} // namespace
} // namespace quarn
