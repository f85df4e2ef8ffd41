#pragma once

// A socket whose network is a script. A datagram to a dotted address is sent at once; a name is looked up
// first while events run. A datagram can be read from the moment of its arrival, whether or not its event has
// run; one that is not read stays in front of the next. Closing drops waiting datagrams and earlier events.

#include "base/RunTimeError.h"
#include "controls/UdpSocket.h"
#include "tests/fakes/FakeEvents.h"
#include "tests/fakes/FakeHostNames.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class FakeUdpSocket;

struct SentDatagram {
    std::string host;    // the value of RemoteHost
    std::string address; // what it resolved to
    std::int32_t port = 0;
    std::string bytes;
    std::int32_t tick = 0;
    FakeUdpSocket* socket = nullptr; // that sent it
};

// What goes wrong with sockets, and how long they take.
struct FakeSocketBehaviour {
    std::int32_t closeMilliseconds = 0;
    std::int32_t lookUpMilliseconds = 0;
    std::string sendFailure;              // when not empty: no send succeeds, and this is why
    bool announces = true;                // false: what arrives can be read, but its event does not come
    std::int32_t arrivalAge = 0;          // milliseconds between noticing a datagram and its event
    std::optional<ErrorNumber> readFault; // the next datagram read is lost to this error
};

class FakeUdpSocket : public UdpSocket, public FakeSocketBehaviour {
  public:
    FakeUdpSocket(FakeClock& clock, FakeEvents& events, FakeHostNames& hosts)
        : clock_(clock), events_(events), hosts_(hosts), behaviour_(*this) {}

    // One of several sockets that behave alike.
    FakeUdpSocket(FakeClock& clock, FakeEvents& events, FakeHostNames& hosts, FakeSocketBehaviour& shared)
        : clock_(clock), events_(events), hosts_(hosts), behaviour_(shared) {}

    ~FakeUdpSocket() override { ++*generation_; }
    FakeUdpSocket(const FakeUdpSocket&) = delete;
    FakeUdpSocket& operator=(const FakeUdpSocket&) = delete;

    State CurrentState() const override { return state_; }
    std::int32_t ArrivalAge() const override { return behaviour_.arrivalAge; }
    void SendData(std::string_view datagram) override;
    std::optional<std::string> GetData() override;

    // With `closeMilliseconds` the state is Closing until an event after that time has run.
    void Close() override;

    std::vector<SentDatagram> sent;

    // Runs the event of a datagram that has arrived, if there is one.
    void NotifyArrival();

    // Called for each datagram sent; a test scripts the replies here.
    std::function<void(const SentDatagram&)> whenSent;

    // A datagram that arrives after this time, unless the socket is closed before.
    void ReplyIn(std::int32_t milliseconds, std::string datagram);
    void ReplyAt(std::int32_t tick, std::string datagram);

    // Asked before the socket opens; false: the system has no socket left.
    std::function<bool()> mayOpen;

    std::int32_t closeCalls = 0;

  private:
    struct Arrival {
        std::int64_t moment;
        std::string bytes;
    };

    void Send(std::string address, SentDatagram datagram);
    void Fail(const std::string& description);
    bool HasArrived() const;

    // Runs the event later, unless the socket has been closed by then.
    void PostWhileOpen(std::int32_t milliseconds, std::function<void()> event);

    FakeClock& clock_;
    FakeEvents& events_;
    FakeHostNames& hosts_;
    FakeSocketBehaviour& behaviour_;
    State state_ = State::Closed;
    std::deque<Arrival> arrivals_; // by moment
    // Counts closings; shared, because queued events may outlive the socket.
    std::shared_ptr<std::int32_t> generation_ = std::make_shared<std::int32_t>(0);
};

} // namespace quarn
