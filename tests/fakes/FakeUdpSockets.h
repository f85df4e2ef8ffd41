#pragma once

// The sockets of server queries on one scripted network. What each sends is recorded here in its order; a
// reply goes to the socket of its request.

#include "tests/fakes/FakeUdpSocket.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quarn {

class FakeUdpSockets : public UdpSocketFactory, public FakeSocketBehaviour {
  public:
    FakeUdpSockets(FakeClock& clock, FakeEvents& events, FakeHostNames& hosts)
        : clock_(clock), events_(events), hosts_(hosts) {}

    std::unique_ptr<UdpSocket> MakeSocket() override;

    void NoteArrivals() override {
        if (whenNoted)
            whenNoted();
    }

    void DeliverArrivals() override;

    std::vector<SentDatagram> sent;
    std::function<void()> whenNoted; // called by NoteArrivals

    // Called for each datagram sent: the place to script its replies.
    std::function<void(const SentDatagram&)> whenSent;

    // As many sockets can be open at once.
    std::int32_t openLimit = 1'000'000;

    // A datagram that arrives after the given number of milliseconds at the socket that sent last.
    void ReplyIn(std::int32_t milliseconds, std::string datagram);

    UdpSocket::State CurrentState() const; // Open while any socket is
    std::int32_t OpenCount() const;
    std::vector<FakeUdpSocket*> Open() const; // in the order in which they were made

    // Sockets made so far. Each lives as long as the program's part that asked for it.
    std::int32_t MadeCount() const noexcept { return static_cast<std::int32_t>(made_.size()); }

  private:
    FakeClock& clock_;
    FakeEvents& events_;
    FakeHostNames& hosts_;
    std::vector<FakeUdpSocket*> made_;
    FakeUdpSocket* last_ = nullptr;
};

} // namespace quarn
