#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/FakeTimerDriver.h"
#include "tests/fakes/FakeUdpSocket.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quarn {
namespace {

TEST(FakeClock, WrapsItsTicksAndCarriesMillisecondsIntoSeconds) {
    FakeClock clock;
    clock.Advance(1500);
    clock.SetTickCount(std::numeric_limits<std::int32_t>::max());
    clock.SetNow({2026, 12, 31, 23, 59, 59}, 999);
    EXPECT_EQ(clock.Now().milliseconds, 999);
    EXPECT_EQ(clock.Now().time, DateTime::From({2026, 12, 31, 23, 59, 59}));
    clock.Advance(1);
    EXPECT_EQ(clock.TickCount(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(clock.Now().milliseconds, 0);
    EXPECT_EQ(clock.Now().time, DateTime::From({2027, 1, 1, 0, 0, 0}));
}

TEST(FakeEvents, WaitingRunsOneEventAndMovesTheClockToIt) {
    FakeDesktop fake;
    std::string ran;
    fake.events.PostIn(30, [&] { ran += 'b'; });
    fake.events.PostAt(fake.clock.TickCount() + 20, [&] { ran += 'a'; });
    fake.events.PostIn(30, [&] { ran += 'c'; });
    fake.events.WaitForEvent();
    EXPECT_EQ(ran, "a");
    EXPECT_EQ(fake.clock.Elapsed(), 20);
    fake.events.WaitForEvent();
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(fake.clock.Elapsed(), 30);
}

TEST(FakeEvents, YieldingRunsWhatIsDueAndLeavesTheClock) {
    FakeDesktop fake;
    std::string ran;
    fake.events.Post([&] {
        ran += 'a';
        fake.events.Post([&] { ran += 'b'; });
    });
    fake.events.PostIn(1, [&] { ran += 'c'; });
    fake.events.DoEvents();
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(fake.clock.Elapsed(), 0);
    EXPECT_EQ(fake.events.Pending(), 1U);
}

TEST(FakeEvents, AWaitWithoutEventsFailsTheTest) {
    FakeDesktop fake;
    EXPECT_NONFATAL_FAILURE(EXPECT_THROW(fake.events.WaitForEvent(), EndlessWait), "would never end");
}

TEST(FakeEvents, EventsWithoutEndFailTheTest) {
    FakeDesktop fake;
    fake.events.eventLimit = 100;
    std::function<void()> again = [&] { fake.events.Post(again); };
    again();
    EXPECT_NONFATAL_FAILURE(EXPECT_THROW(fake.events.DoEvents(), EndlessWait), "More events ran");
}

TEST(FakeTimerDriver, TicksEachIntervalWhileEnabled) {
    FakeDesktop fake;
    Timer timer;
    FakeTimerDriver driver(fake.events, timer);
    std::vector<std::int64_t> moments;
    timer.Tick = [&] { moments.push_back(fake.clock.Elapsed()); };
    timer.SetInterval(100);
    fake.events.RunFor(150);
    EXPECT_TRUE(moments.empty());
    timer.SetEnabled(true);
    fake.events.RunFor(250);
    EXPECT_EQ(moments, (std::vector<std::int64_t>{250, 350}));
    timer.SetEnabled(false);
    fake.events.RunFor(1000);
    EXPECT_EQ(moments.size(), 2U);
}

TEST(FakeTimerDriver, NeverTicksWithoutAnInterval) {
    FakeDesktop fake;
    Timer timer;
    FakeTimerDriver driver(fake.events, timer);
    for (const std::int32_t interval : {0, -1}) {
        timer.SetInterval(interval);
        timer.SetEnabled(true);
        EXPECT_EQ(fake.events.Pending(), 0U) << interval;
    }
}

class FakeUdpSocketTest : public ::testing::Test {
  protected:
    void Send(const std::string& host, std::int32_t port) {
        socket.RemoteHost = host;
        socket.RemotePort = port;
        socket.SendData("ask");
    }

    FakeDesktop fake;
    FakeUdpSocket socket{fake.clock, fake.events, fake.hosts};
};

TEST_F(FakeUdpSocketTest, RecordsWhatIsSentAndDeliversRepliesInTheirOrderOfArrival) {
    std::vector<std::string> heard;
    socket.DataArrival = [&](std::int32_t bytes) {
        heard.push_back(std::to_string(bytes) + socket.GetData().value_or("nothing"));
    };
    socket.whenSent = [&](const SentDatagram&) {
        socket.ReplyIn(40, "later");
        socket.ReplyIn(20, "first");
        socket.ReplyIn(40, "last");
    };
    Send("127.0.0.1", 27960);
    ASSERT_EQ(socket.sent.size(), 1U);
    EXPECT_EQ(socket.sent[0].port, 27960);
    EXPECT_EQ(socket.CurrentState(), UdpSocket::State::Open);
    fake.events.RunFor(100);
    EXPECT_EQ(heard, (std::vector<std::string>{"5first", "5later", "4last"}));
}

TEST_F(FakeUdpSocketTest, ADatagramWaitsBeforeItsEventHasRun) {
    std::int32_t arrivals = 0;
    socket.DataArrival = [&](std::int32_t) { ++arrivals; };
    socket.ReplyIn(0, "one");
    socket.ReplyIn(0, "two");
    EXPECT_EQ(socket.GetData(), "one");
    EXPECT_EQ(socket.GetData(), "two");
    EXPECT_EQ(socket.GetData(), std::nullopt);
    fake.events.DoEvents();
    EXPECT_EQ(arrivals, 0);
}

TEST_F(FakeUdpSocketTest, ClosingDropsRepliesAndTakesItsTime) {
    std::int32_t arrivals = 0;
    socket.DataArrival = [&](std::int32_t) { ++arrivals; };
    socket.closeMilliseconds = 5;
    Send("127.0.0.1", 1);
    socket.ReplyIn(1, "late");
    socket.Close();
    EXPECT_EQ(socket.CurrentState(), UdpSocket::State::Closing);
    fake.events.RunFor(5);
    EXPECT_EQ(socket.CurrentState(), UdpSocket::State::Closed);
    EXPECT_EQ(arrivals, 0);
    EXPECT_EQ(socket.GetData(), std::nullopt);
}

TEST_F(FakeUdpSocketTest, LooksUpANameWhileEventsRun) {
    fake.hosts.addresses["master.example"] = "127.0.0.9";
    socket.lookUpMilliseconds = 30;
    Send("master.example", 27950);
    EXPECT_TRUE(socket.sent.empty());
    EXPECT_EQ(socket.CurrentState(), UdpSocket::State::ResolvingHost);
    fake.events.WaitForEvent();
    ASSERT_EQ(socket.sent.size(), 1U);
    EXPECT_EQ(socket.sent[0].address, "127.0.0.9");
}

TEST_F(FakeUdpSocketTest, TellsOfANameThatDoesNotResolve) {
    std::string failure;
    socket.SendFailed = [&](const std::string& description) { failure = description; };
    Send("nowhere.example", 27950);
    fake.events.WaitForEvent();
    EXPECT_EQ(failure, "Host not found: nowhere.example");
    EXPECT_TRUE(socket.sent.empty());
}

TEST_F(FakeUdpSocketTest, SendsNothingWithoutAValidTarget) {
    for (const std::int32_t port : {-1, 0, 65536, 2147483647})
        Send("127.0.0.1", port);
    Send("", 27960);
    EXPECT_TRUE(socket.sent.empty());
    EXPECT_EQ(fake.events.Pending(), 0U);
}

} // namespace
} // namespace quarn
