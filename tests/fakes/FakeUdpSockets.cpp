#include "tests/fakes/FakeUdpSockets.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quarn {

std::unique_ptr<UdpSocket> FakeUdpSockets::MakeSocket() {
    auto socket = std::make_unique<FakeUdpSocket>(clock_, events_, hosts_, *this);
    socket->mayOpen = [this] { return OpenCount() < openLimit; };
    socket->whenSent = [this](const SentDatagram& datagram) {
        last_ = datagram.socket;
        sent.push_back(datagram);
        last_->sent.clear(); // kept here
        if (whenSent)
            whenSent(datagram);
    };
    made_.push_back(socket.get());
    return socket;
}

void FakeUdpSockets::DeliverArrivals() {
    for (FakeUdpSocket* const socket : Open())
        socket->NotifyArrival();
}

void FakeUdpSockets::ReplyIn(std::int32_t milliseconds, std::string datagram) {
    if (last_ != nullptr)
        last_->ReplyIn(milliseconds, std::move(datagram));
}

std::vector<FakeUdpSocket*> FakeUdpSockets::Open() const {
    std::vector<FakeUdpSocket*> open;
    std::ranges::copy_if(made_, std::back_inserter(open), [](const FakeUdpSocket* socket) {
        return socket->CurrentState() != UdpSocket::State::Closed;
    });
    return open;
}

std::int32_t FakeUdpSockets::OpenCount() const {
    return static_cast<std::int32_t>(std::ranges::count_if(made_, [](const FakeUdpSocket* socket) {
        return socket->CurrentState() != UdpSocket::State::Closed;
    }));
}

UdpSocket::State FakeUdpSockets::CurrentState() const {
    return OpenCount() > 0 ? UdpSocket::State::Open : UdpSocket::State::Closed;
}

} // namespace quarn
