#include "tests/fakes/FakeUdpSocket.h"

#include <algorithm>
#include <utility>

namespace quarn {

namespace {

bool IsDottedAddress(std::string_view host) {
    return host.find_first_not_of("0123456789.") == std::string_view::npos &&
           std::count(host.begin(), host.end(), '.') == 3;
}

} // namespace

void FakeUdpSocket::SendData(std::string_view datagram) {
    if (RemoteHost.empty() || RemotePort < 1 || RemotePort > 65535)
        return;
    SentDatagram sending{RemoteHost, {}, RemotePort, std::string(datagram), 0, this};
    if (IsDottedAddress(RemoteHost)) {
        Send(RemoteHost, std::move(sending));
        return;
    }
    state_ = State::ResolvingHost;
    PostWhileOpen(behaviour_.lookUpMilliseconds, [this, sending = std::move(sending)] {
        const std::string address = hosts_.AddressOf(sending.host);
        if (address.empty())
            Fail("Host not found: " + sending.host);
        else
            Send(address, sending);
    });
}

void FakeUdpSocket::Send(std::string address, SentDatagram datagram) {
    if (!behaviour_.sendFailure.empty()) {
        PostWhileOpen(0, [this] { Fail(behaviour_.sendFailure); });
        return;
    }
    if (state_ == State::Closed && mayOpen && !mayOpen()) {
        if (SendFailed)
            SendFailed("Too many open sockets");
        return;
    }
    state_ = State::Open;
    datagram.address = std::move(address);
    datagram.tick = clock_.TickCount();
    sent.push_back(datagram);
    if (whenSent)
        whenSent(datagram);
}

void FakeUdpSocket::Fail(const std::string& description) {
    state_ = State::Open;
    if (SendFailed)
        SendFailed(description);
}

bool FakeUdpSocket::HasArrived() const {
    return !arrivals_.empty() && arrivals_.front().moment <= clock_.Elapsed();
}

std::optional<std::string> FakeUdpSocket::GetData() {
    if (!HasArrived())
        return std::nullopt;
    std::string bytes = std::move(arrivals_.front().bytes);
    arrivals_.pop_front();
    if (const std::optional<ErrorNumber> fault = std::exchange(behaviour_.readFault, std::nullopt))
        throw RunTimeError(*fault);
    return bytes;
}

void FakeUdpSocket::Close() {
    ++closeCalls;
    ++*generation_;
    arrivals_.clear();
    state_ = behaviour_.closeMilliseconds > 0 ? State::Closing : State::Closed;
    if (state_ == State::Closing)
        PostWhileOpen(behaviour_.closeMilliseconds, [this] { state_ = State::Closed; });
}

void FakeUdpSocket::ReplyIn(std::int32_t milliseconds, std::string datagram) {
    const std::int64_t moment = clock_.Elapsed() + milliseconds;
    const auto later = [](std::int64_t value, const Arrival& arrival) { return value < arrival.moment; };
    arrivals_.insert(std::upper_bound(arrivals_.begin(), arrivals_.end(), moment, later),
                     {moment, std::move(datagram)});
    PostWhileOpen(milliseconds, [this] { NotifyArrival(); });
}

void FakeUdpSocket::ReplyAt(std::int32_t tick, std::string datagram) {
    ReplyIn(static_cast<std::int32_t>(clock_.ElapsedAt(tick) - clock_.Elapsed()), std::move(datagram));
}

void FakeUdpSocket::NotifyArrival() {
    if (HasArrived() && DataArrival && behaviour_.announces)
        DataArrival(static_cast<std::int32_t>(arrivals_.front().bytes.size()));
}

void FakeUdpSocket::PostWhileOpen(std::int32_t milliseconds, std::function<void()> event) {
    events_.PostIn(milliseconds,
                   [current = generation_, generation = *generation_, event = std::move(event)] {
                       if (*current == generation)
                           event();
                   });
}

} // namespace quarn
