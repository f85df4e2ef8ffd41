#include "query/QueryPorts.h"

#include "query/Engines.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quarn {

namespace {

// How often ports whose time is over are searched.
constexpr std::int32_t TimerInterval = 250;

// How many too short datagrams are skipped in one call.
constexpr int MostSkipped = 16;

bool IsTooShort(const std::string& datagram) noexcept {
    return datagram.size() < static_cast<std::size_t>(ShortestDatagram);
}

} // namespace

QueryPorts::QueryPorts(UdpSocketFactory& sockets, const Clock& clock, Timer& timer)
    : sockets_(sockets), clock_(clock), timer_(timer) {
    timer_.SetInterval(TimerInterval);
    timer_.Tick = [this] { CloseExpired(); };
}

QueryPorts::Port& QueryPorts::FreePort() {
    const auto free = std::ranges::find_if(ports_, [](const auto& port) {
        return port->query.number == 0 && port->socket->CurrentState() == UdpSocket::State::Closed;
    });
    if (free != ports_.end())
        return **free;
    auto made = std::make_unique<Port>();
    made->socket = sockets_.MakeSocket();
    Port& port = *made;
    port.socket->DataArrival = [this, &port](std::int32_t) {
        // First of all, because it decides the ping.
        const std::int32_t tick = clock_.TickCount() - port.socket->ArrivalAge();
        if (port.query.number != 0)
            DataArrival(port.query.number, tick);
    };
    port.socket->SendFailed = [this, &port](const std::string& description) {
        port.failed = true;
        Failed(description);
    };
    ports_.push_back(std::move(made));
    return port;
}

QueryPorts::Port* QueryPorts::PortOf(std::uint32_t number) const noexcept {
    if (number == 0)
        return nullptr;
    const auto found =
        std::ranges::find_if(ports_, [&](const auto& port) { return port->query.number == number; });
    return found == ports_.end() ? nullptr : found->get();
}

ServerQuery QueryPorts::Ask(const QueryTarget& target, const std::string& host, std::int32_t remotePort,
                            std::int32_t sentTick, const std::function<void(UdpSocket&)>& send) {
    const auto tryOnce = [&] {
        Port& port = FreePort();
        port.failed = false;
        port.query = {.number = ++lastNumber_, .target = target, .sentTick = sentTick};
        port.socket->RemotePort = remotePort;
        port.socket->RemoteHost = host;
        send(*port.socket);
        if (port.failed)
            Close(port);
        return port.query;
    };
    const ServerQuery asked = tryOnce();
    // If the system has no more sockets, those of finished queries are closed first.
    if (asked.number != 0 || finished_ == 0)
        return asked;
    CloseFinished();
    return tryOnce();
}

ServerQuery QueryPorts::Find(std::uint32_t number) const noexcept {
    const Port* const port = PortOf(number);
    return port == nullptr ? ServerQuery() : port->query;
}

std::optional<ServerReply> QueryPorts::Take(std::uint32_t number, std::int32_t tick) {
    Port* const port = PortOf(number);
    if (port == nullptr)
        return std::nullopt;
    std::optional<std::string> datagram = port->socket->GetData();
    for (int skipped = 0; datagram && IsTooShort(*datagram) && skipped < MostSkipped; ++skipped)
        datagram = port->socket->GetData();
    if (!datagram || IsTooShort(*datagram))
        return std::nullopt;
    ServerQuery& query = port->query;
    const bool isTooLate = query.finished && TicksBetween(query.sentTick, tick) > lifetime;
    if (isTooLate || query.replies == MostReplies) {
        Close(*port);
        return std::nullopt;
    }
    ++query.replies;
    return ServerReply{query, std::move(*datagram), tick};
}

void QueryPorts::Finish(std::uint32_t number) {
    Port* const port = PortOf(number);
    if (port == nullptr || port->query.finished)
        return;
    port->query.finished = true;
    ++finished_;
    const bool isOver = TicksBetween(port->query.sentTick, clock_.TickCount()) > lifetime;
    if (isOver || port->socket->CurrentState() == UdpSocket::State::Closed)
        Close(*port);
    else if (finished_ > mostFinished)
        CloseOldestFinished();
    timer_.SetEnabled(finished_ > 0);
}

void QueryPorts::CloseOldestFinished() {
    const auto age = [](const std::unique_ptr<Port>& port) {
        return port->query.finished ? port->query.number : std::numeric_limits<std::uint32_t>::max();
    };
    Close(**std::ranges::min_element(ports_, {}, age));
}

void QueryPorts::CloseExpired() {
    DeliverArrivals();
    const std::int32_t now = clock_.TickCount();
    CloseIf([&](const ServerQuery& query) {
        return query.finished && TicksBetween(query.sentTick, now) > lifetime;
    });
}

void QueryPorts::Close(std::uint32_t number) {
    CloseIf([&](const ServerQuery& query) { return query.number == number; });
}

void QueryPorts::CloseOf(std::uint32_t server) {
    CloseIf([&](const ServerQuery& query) { return query.target.server == server; });
}

void QueryPorts::CloseFinished() {
    CloseIf([](const ServerQuery& query) { return query.finished; });
}

void QueryPorts::CloseAll() {
    CloseIf([](const ServerQuery&) { return true; });
}

template<class Condition>
void QueryPorts::CloseIf(Condition&& condition) {
    for (const auto& port : ports_)
        if (port->query.number != 0 && condition(port->query))
            Close(*port);
    timer_.SetEnabled(finished_ > 0);
}

void QueryPorts::Close(Port& port) {
    if (port.query.finished)
        --finished_;
    port.query = {};
    port.socket->Close();
}

int QueryPorts::OpenCount() const noexcept {
    return static_cast<int>(
        std::ranges::count_if(ports_, [](const auto& port) { return port->query.number != 0; }));
}

} // namespace quarn
