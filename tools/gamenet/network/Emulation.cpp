#include "tools/gamenet/network/Emulation.h"

#include <algorithm>
#include <array>

namespace quarn::gamenet {
namespace {

constexpr std::uint64_t SignalToken = ~std::uint64_t{0};
constexpr std::uint64_t TimerToken = SignalToken - 1;

// A flood of requests to slow servers must not exhaust the memory.
constexpr std::size_t MostPending = 100'000;

// Datagrams read from one socket before the next one is read.
constexpr int ReceiveBatch = 32;

constexpr std::size_t OtherDescriptors = 64;

} // namespace

Emulation::Emulation(const NetworkSettings& network, const World& world, bool recordsRequests)
    : network_(network),
      world_(world),
      responder_(network, world),
      signals_(TerminationSignals()),
      timer_(CreateTimer()),
      recordsRequests_(recordsRequests),
      start_(Clock::now()) {
    AllowDescriptors(world.servers.size() + network.games.size() + OtherDescriptors);
    poller_.Add(signals_, SignalToken);
    poller_.Add(timer_, TimerToken);
    ports_.reserve(world.servers.size() + network.games.size());
    BindMasters();
    BindServers();
}

void Emulation::BindMasters() {
    int port = network_.masterPort;
    for (std::size_t index = 0; index < network_.games.size(); ++index) {
        const GameSettings& game = network_.games[index];
        const Endpoint usual{network_.masterAddress, static_cast<std::uint16_t>(port)};
        AddPort(BindUdp(game.master.value_or(usual), "the master of " + game.shortName), true, index);
        if (!game.master && port != 0)
            ++port;
    }
}

void Emulation::BindServers() {
    for (std::size_t index = 0; index < world_.servers.size(); ++index) {
        const GameServer& server = world_.servers[index];
        if (server.conduct != Conduct::Closed)
            AddPort(BindUdp(server.status.endpoint, network_.games[server.game].shortName), false, index);
    }
}

void Emulation::AddPort(Descriptor socket, bool isMaster, std::size_t index) {
    poller_.Add(socket, ports_.size());
    ports_.push_back({std::move(socket), isMaster, index});
}

std::vector<Endpoint> Emulation::Masters() const {
    std::vector<Endpoint> endpoints;
    for (std::size_t index = 0; index < network_.games.size(); ++index)
        endpoints.push_back(BoundEndpoint(ports_[index].socket));
    return endpoints;
}

void Emulation::Run(std::optional<double> duration) {
    start_ = Clock::now();
    std::optional<Clock::time_point> end;
    if (duration)
        end = start_ + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(*duration));
    std::array<std::uint64_t, 64> tokens{};
    for (;;) {
        std::optional<Clock::time_point> next = end;
        if (!pending_.empty())
            next = std::min(pending_.top().due, end.value_or(Clock::time_point::max()));
        SetTimer(timer_, next);
        for (const std::uint64_t token : poller_.Wait(tokens)) {
            if (token == SignalToken)
                return;
            if (token != TimerToken)
                Receive(static_cast<std::size_t>(token));
        }
        SendDue();
        if (end && Clock::now() >= *end)
            return;
    }
}

void Emulation::Receive(std::size_t port) {
    for (int count = 0; count < ReceiveBatch; ++count) {
        const auto received = ReceiveFrom(ports_[port].socket, buffer_);
        if (!received)
            return;
        if (IsLoopback(received->from.address))
            Answer(port, {buffer_.data(), received->size}, received->from);
    }
}

void Emulation::Answer(std::size_t index, std::string_view request, const Endpoint& from) {
    const Port& port = ports_[index];
    if (recordsRequests_)
        Record(port, request);
    const Clock::time_point now = Clock::now();
    const auto sinceStart = std::chrono::duration_cast<std::chrono::milliseconds>(now - start_);
    std::vector<TimedReply> replies = port.isMaster ? responder_.AskMaster(port.index, request)
                                                    : responder_.AskServer(port.index, request, sinceStart);
    if (!port.isMaster && ServerAsked)
        ServerAsked();
    for (TimedReply& reply : replies) {
        if (pending_.size() >= MostPending) {
            ++dropped_;
            continue;
        }
        pending_.push({now + reply.delay, order_++, index, from, std::move(reply.bytes)});
    }
}

void Emulation::Record(const Port& port, std::string_view request) {
    const std::size_t game = port.isMaster ? port.index : world_.servers[port.index].game;
    requests_ += (port.isMaster ? "master " : "server ") + network_.games[game].shortName + ' ' +
                 EndpointText(BoundEndpoint(port.socket)) + ' ';
    for (const char character : request) {
        constexpr std::string_view Digits = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(character);
        requests_ += Digits[byte >> 4];
        requests_ += Digits[byte & 15];
    }
    requests_ += '\n';
}

void Emulation::SendDue() {
    while (!pending_.empty() && pending_.top().due <= Clock::now()) {
        const Pending& reply = pending_.top();
        if (!SendTo(ports_[reply.port].socket, reply.to, reply.bytes))
            ++notSent_;
        pending_.pop();
    }
}

std::string Emulation::Statistics() const {
    const Counters& counters = responder_.Counts();
    std::string lines;
    const auto put = [&](const char* name, std::uint64_t value) {
        lines += std::string(name) + '=' + std::to_string(value) + '\n';
    };
    put("server_requests", counters.serverRequests);
    put("server_replies", counters.serverReplies);
    put("master_requests", counters.masterRequests);
    put("master_replies", counters.masterReplies);
    put("lost", counters.lost);
    put("silent", counters.silent);
    put("unknown", counters.unknown);
    put("not_sent", notSent_);
    put("dropped", dropped_);
    put("unsent_at_end", pending_.size());
    return lines;
}

} // namespace quarn::gamenet
