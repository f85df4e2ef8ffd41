#include "win32/UdpSocketWin.h"

#include "tests/win32/harness/LoopbackPeer.h"
#include "tests/win32/harness/Pumping.h"
#include "win32/desktop/EventPumpWin.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace quarn {
namespace {

// A label of a host name has at most 63 characters: this one fails without a request to a name server.
const std::string ImpossibleHost(64, 'x');

class UdpSocketWinTest : public ::testing::Test {
  protected:
    UdpSocketWinTest() {
        socket.DataArrival = [this](std::int32_t bytes) {
            sizes.push_back(bytes);
            if (taking)
                received.push_back(socket.GetData().value_or("(no data)"));
        };
        socket.SendFailed = [this](const std::string& text) { failures.push_back(text); };
        Aim(peer);
    }

    void Aim(const LoopbackPeer& at) {
        socket.RemoteHost = "127.0.0.1";
        socket.RemotePort = at.Port();
    }

    bool WaitForArrivals(std::size_t count) {
        return PumpUntil([&] { return sizes.size() >= count; });
    }

    LoopbackPeer peer;
    UdpSocketWin socket;
    bool taking = true;
    std::vector<std::int32_t> sizes;
    std::vector<std::string> received;
    std::vector<std::string> failures;
};

using State = UdpSocket::State;

TEST_F(UdpSocketWinTest, CarriesDatagramsBothWays) {
    EXPECT_EQ(socket.CurrentState(), State::Closed);
    const std::string query("\xFF\xFF\xFF\xFFget\0status", 14);
    socket.SendData(query);
    EXPECT_EQ(socket.CurrentState(), State::Open);
    EXPECT_EQ(peer.Receive(), query);
    peer.Send(std::string("\0reply\0", 7));
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(sizes, std::vector<std::int32_t>{7});
    EXPECT_EQ(received, std::vector<std::string>{std::string("\0reply\0", 7)});
    EXPECT_EQ(socket.GetData(), std::nullopt);
    socket.Close();
    EXPECT_EQ(socket.CurrentState(), State::Closed);
}

TEST_F(UdpSocketWinTest, CarriesTheLargestDatagramWhole) {
    std::string largest(65507, '\0');
    for (std::size_t i = 0; i < largest.size(); ++i)
        largest[i] = static_cast<char>(i * 31 + i / 256);
    socket.SendData(largest);
    EXPECT_EQ(peer.Receive(), largest);
    peer.Send(largest);
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(sizes[0], 65507);
    EXPECT_EQ(received[0], largest);
    EXPECT_TRUE(failures.empty());
}

TEST_F(UdpSocketWinTest, ReportsADatagramThatIsTooLarge) {
    socket.SendData(std::string(65508, 'x'));
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(failures[0].ends_with("(10040)")) << failures[0];
    EXPECT_TRUE(failures[0].starts_with("127.0.0.1:" + std::to_string(peer.Port()) + ": ")) << failures[0];
    socket.SendData("small");
    EXPECT_EQ(peer.Receive(), "small");
}

TEST_F(UdpSocketWinTest, SendsNothingWithoutAValidRemoteAddress) {
    const struct {
        const char* host;
        std::int32_t port;
    } ends[] = {{"", peer.Port()},
                {"127.0.0.1", 0},
                {"127.0.0.1", -1},
                {"127.0.0.1", 65536},
                {"127.0.0.1", 65536 + peer.Port()},
                {"", 0}};
    for (const auto& end : ends) {
        socket.RemoteHost = end.host;
        socket.RemotePort = end.port;
        socket.SendData("never");
        EXPECT_EQ(socket.CurrentState(), State::Closed) << end.host << ":" << end.port;
    }
    EXPECT_TRUE(failures.empty());
    Aim(peer);
    socket.SendData("sentinel");
    EXPECT_EQ(peer.Receive(), "sentinel");
}

TEST_F(UdpSocketWinTest, SendsToTheLowestAndTheHighestPort) {
    socket.RemoteHost = "127.0.0.1";
    for (const std::int32_t port : {1, 65535}) {
        socket.Close();
        socket.RemotePort = port;
        socket.SendData("x");
        EXPECT_EQ(socket.CurrentState(), State::Open) << port;
    }
}

TEST_F(UdpSocketWinTest, ThreeDatagramsAreThreeArrivalsOfOneEventEach) {
    socket.SendData("query");
    peer.Receive();
    for (const char* reply : {"first", "second!", "third.."})
        peer.Send(reply);
    EventPumpWin pump;
    while (sizes.size() < 3) {
        const std::size_t before = sizes.size();
        ASSERT_TRUE(WaitForPostedMessage());
        pump.WaitForEvent();
        EXPECT_LE(sizes.size(), before + 1);
    }
    EXPECT_EQ(received, (std::vector<std::string>{"first", "second!", "third.."}));
}

// A host with several addresses, or behind a router that translates ports, answers from another address.
TEST_F(UdpSocketWinTest, ReceivesFromAnySender) {
    socket.SendData("query");
    peer.Receive();
    LoopbackPeer other;
    other.SendToSenderOf(peer, "from another port");
    ASSERT_TRUE(WaitForArrivals(1));
    peer.Send("from the same");
    ASSERT_TRUE(WaitForArrivals(2));
    EXPECT_EQ(received, (std::vector<std::string>{"from another port", "from the same"}));
    socket.SendData("again");
    EXPECT_EQ(peer.Receive(), "again");
    EXPECT_FALSE(other.HasDatagram());
}

TEST_F(UdpSocketWinTest, AnEmptyDatagramArrives) {
    socket.SendData("");
    EXPECT_EQ(peer.Receive(), "");
    peer.Send("");
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(sizes[0], 0);
    EXPECT_EQ(received[0], "");
}

TEST_F(UdpSocketWinTest, ADatagramThatIsNotReadIsDropped) {
    socket.SendData("query");
    peer.Receive();
    taking = false;
    peer.Send("tiny");
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(socket.GetData(), std::nullopt);
    taking = true;
    peer.Send("enough");
    ASSERT_TRUE(WaitForArrivals(2));
    EXPECT_EQ(received, std::vector<std::string>{"enough"});
}

TEST_F(UdpSocketWinTest, WithoutAHandlerADatagramIsDropped) {
    const auto handler = std::exchange(socket.DataArrival, nullptr);
    socket.SendData("query");
    peer.Receive();
    peer.Send("unheard");
    ASSERT_TRUE(WaitForPostedMessage());
    PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; });
    socket.DataArrival = handler;
    peer.Send("heard");
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(received, std::vector<std::string>{"heard"});
}

TEST_F(UdpSocketWinTest, ADatagramCanBeReadBeforeItsEventRuns) {
    socket.SendData("query");
    peer.Receive();
    peer.Send("early");
    ASSERT_TRUE(WaitForPostedMessage());
    EXPECT_EQ(socket.GetData(), "early");
    EXPECT_EQ(socket.GetData(), std::nullopt);
    peer.Send("later");
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(received, std::vector<std::string>{"later"});
}

TEST_F(UdpSocketWinTest, EventsOfAClosedSocketAreDropped) {
    LoopbackPeer other;
    for (int round = 0; round < 5; ++round) {
        sizes.clear();
        received.clear();
        Aim(peer);
        socket.SendData("query");
        peer.Receive();
        peer.Send("too late");
        ASSERT_TRUE(WaitForPostedMessage());
        socket.Close();

        // The stale message is in the queue before any message of the next socket.
        Aim(other);
        socket.SendData("query");
        other.Receive();
        other.Send("in time");
        ASSERT_TRUE(WaitForArrivals(1));
        EXPECT_EQ(received, std::vector<std::string>{"in time"});
        socket.Close();
    }
}

TEST_F(UdpSocketWinTest, KeepsItsLocalPortUntilItIsClosed) {
    std::set<u_short> ports;
    for (int opening = 0; opening < 4; ++opening) {
        socket.SendData("one");
        peer.Receive();
        const u_short port = peer.SenderPort();
        socket.SendData("two");
        peer.Receive();
        EXPECT_EQ(peer.SenderPort(), port);
        ports.insert(port);
        socket.Close();
    }
    EXPECT_GT(ports.size(), 1U); // the system may give the same one again, but not every time
}

TEST_F(UdpSocketWinTest, TheRemoteAddressCanChange) {
    LoopbackPeer other;
    socket.SendData("one");
    EXPECT_EQ(peer.Receive(), "one");
    Aim(other);
    socket.SendData("two");
    EXPECT_EQ(other.Receive(), "two");
    EXPECT_FALSE(peer.HasDatagram());
}

TEST_F(UdpSocketWinTest, ARefusalIsNotAnAnswer) {
    std::int32_t port;
    {
        const LoopbackPeer gone;
        port = gone.Port();
    }
    socket.RemotePort = port;
    for (int i = 0; i < 5; ++i) {
        socket.SendData("anybody?");
        PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; });
    }
    EXPECT_EQ(socket.GetData(), std::nullopt);
    EXPECT_EQ(socket.CurrentState(), State::Open);
    EXPECT_TRUE(sizes.empty());

    // A second request is answered by a host that is up again.
    LoopbackPeer back(port);
    EXPECT_TRUE(PumpUntil([&] {
        socket.SendData("anybody?");
        while (back.HasDatagram()) {
            back.Receive();
            back.Send("here");
        }
        return !received.empty();
    }));
    EXPECT_EQ(received, std::vector<std::string>(received.size(), "here"));
    EXPECT_TRUE(failures.empty());
}

TEST_F(UdpSocketWinTest, ClosingInsideANestedArrivalDropsTheOuterOne) {
    socket.DataArrival = [this](std::int32_t bytes) {
        sizes.push_back(bytes);
        if (sizes.size() == 2) {
            socket.Close();
            return;
        }
        EXPECT_TRUE(WaitForArrivals(2));
        EXPECT_EQ(socket.GetData(), std::nullopt);
    };
    socket.SendData("query");
    peer.Receive();
    peer.Send("outer");
    peer.Send("inner");
    ASSERT_TRUE(WaitForArrivals(2));
}

TEST_F(UdpSocketWinTest, AHandlerMayClose) {
    socket.DataArrival = [this](std::int32_t bytes) {
        sizes.push_back(bytes);
        socket.Close();
    };
    socket.SendData("query");
    peer.Receive();
    peer.Send("first");
    peer.Send("second");
    ASSERT_TRUE(WaitForArrivals(1));
    EXPECT_EQ(socket.CurrentState(), State::Closed);
    EXPECT_EQ(socket.GetData(), std::nullopt);

    LoopbackPeer other;
    Aim(other);
    socket.SendData("query");
    other.Receive();
    other.Send("third");
    ASSERT_TRUE(WaitForArrivals(2));
    EXPECT_EQ(sizes, (std::vector<std::int32_t>{5, 5}));
}

TEST_F(UdpSocketWinTest, AHandlerThatRunsEventsStillGetsItsOwnDatagram) {
    socket.DataArrival = [this](std::int32_t bytes) {
        sizes.push_back(bytes);
        if (sizes.size() == 1) {
            EXPECT_TRUE(WaitForArrivals(2));
        }
        received.push_back(socket.GetData().value_or("(no data)"));
    };
    socket.SendData("query");
    peer.Receive();
    peer.Send("outer");
    peer.Send("inner");
    ASSERT_TRUE(WaitForArrivals(2));
    EXPECT_EQ(received, (std::vector<std::string>{"inner", "outer"}));
}

TEST_F(UdpSocketWinTest, ResolvesAHostNameWhileEventsRun) {
    socket.RemoteHost = "localhost";
    socket.SendData("one");
    EXPECT_EQ(socket.CurrentState(), State::ResolvingHost);
    socket.SendData("two");
    ASSERT_TRUE(PumpUntil([&] { return socket.CurrentState() == State::Open; }));
    EXPECT_EQ(peer.Receive(), "one");
    EXPECT_EQ(peer.Receive(), "two");
    socket.SendData("three");
    EXPECT_EQ(peer.Receive(), "three");
    EXPECT_TRUE(failures.empty());
}

TEST_F(UdpSocketWinTest, OnlyTheLastFewDatagramsWaitForAnAddress) {
    socket.RemoteHost = "localhost";
    for (int i = 1; i <= 10; ++i)
        socket.SendData(std::to_string(i));
    ASSERT_TRUE(PumpUntil([&] { return socket.CurrentState() == State::Open; }));
    for (int i = 3; i <= 10; ++i)
        EXPECT_EQ(peer.Receive(), std::to_string(i));
}

TEST_F(UdpSocketWinTest, ReportsAHostNameThatDoesNotResolve) {
    socket.RemoteHost = ImpossibleHost;
    socket.SendData("never");
    ASSERT_TRUE(PumpUntil([&] { return !failures.empty(); }));
    EXPECT_EQ(failures.size(), 1U);
    EXPECT_TRUE(failures[0].starts_with(ImpossibleHost + ":" + std::to_string(peer.Port()) + ": "))
        << failures[0];
    EXPECT_EQ(socket.CurrentState(), State::Closed);

    // Nothing is left of the failed query.
    Aim(peer);
    socket.SendData("fresh");
    EXPECT_EQ(peer.Receive(), "fresh");
}

TEST_F(UdpSocketWinTest, ClosingCancelsALookUp) {
    socket.RemoteHost = "localhost";
    socket.SendData("given up");
    socket.Close();
    EXPECT_EQ(socket.CurrentState(), State::Closed);

    UdpSocketWin next;
    next.RemoteHost = "localhost";
    next.RemotePort = peer.Port();
    next.SendData("sentinel");
    ASSERT_TRUE(PumpUntil([&] { return next.CurrentState() == State::Open; }));
    EXPECT_EQ(peer.Receive(), "sentinel");
    EXPECT_EQ(socket.CurrentState(), State::Closed);
    EXPECT_FALSE(peer.HasDatagram());
    EXPECT_TRUE(failures.empty());
}

TEST_F(UdpSocketWinTest, ANewHostReplacesOneBeingResolved) {
    socket.RemoteHost = "localhost";
    socket.SendData("dropped");
    LoopbackPeer other;
    Aim(other);
    socket.SendData("sent");
    EXPECT_EQ(socket.CurrentState(), State::Open);
    EXPECT_EQ(other.Receive(), "sent");
    socket.RemoteHost = "localhost";
    socket.SendData("resolved");
    ASSERT_TRUE(PumpUntil([&] { return socket.CurrentState() == State::Open; }));
    EXPECT_EQ(other.Receive(), "resolved");
    EXPECT_FALSE(peer.HasDatagram());
}

TEST_F(UdpSocketWinTest, EndsCleanlyWithALookUpUnderway) {
    {
        UdpSocketWin shortLived;
        shortLived.RemoteHost = "localhost";
        shortLived.RemotePort = peer.Port();
        shortLived.SendData("never");
    }
    socket.RemoteHost = "localhost";
    socket.SendData("sentinel");
    EXPECT_TRUE(PumpUntil([&] { return socket.CurrentState() == State::Open; }));
    EXPECT_EQ(peer.Receive(), "sentinel");
}

} // namespace
} // namespace quarn
