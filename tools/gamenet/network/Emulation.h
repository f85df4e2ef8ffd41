#pragma once

// The running network: one thread, one socket for each master and each server that is not closed, and a queue
// of replies that are not yet due.

#include "tools/gamenet/network/Sockets.h"
#include "tools/gamenet/protocol/Responder.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <queue>
#include <string>
#include <vector>

namespace quarn::gamenet {

class Emulation {
  public:
    // Binds everything. Keeps references to both arguments; they must outlive it. Throws
    // std::system_error. With `recordsRequests` it keeps a line for each datagram that it receives.
    Emulation(const NetworkSettings& network, const World& world, bool recordsRequests);

    // The endpoint of each game's master.
    std::vector<Endpoint> Masters() const;

    // Called for each datagram that a server receives.
    std::function<void()> ServerAsked;

    // Answers until SIGINT or SIGTERM, or until the duration (seconds) is over.
    void Run(std::optional<double> duration);

    // Lines "name=count".
    std::string Statistics() const;

    // Of each datagram received, in their order, a line: "master" or "server", the game's short name, its
    // address and port, and its bytes in hexadecimal.
    const std::string& Requests() const { return requests_; }

  private:
    struct Port {
        Descriptor socket;
        bool isMaster = false;
        std::size_t index = 0; // of the game or the server
    };

    struct Pending {
        Clock::time_point due;
        std::uint64_t order = 0; // equal moments keep the order of arrival
        std::size_t port = 0;
        Endpoint to;
        std::string bytes;
    };

    struct Later {
        bool operator()(const Pending& left, const Pending& right) const {
            return left.due != right.due ? left.due > right.due : left.order > right.order;
        }
    };

    void BindMasters();
    void BindServers();
    void AddPort(Descriptor socket, bool isMaster, std::size_t index);
    void Receive(std::size_t port);
    void Answer(std::size_t port, std::string_view request, const Endpoint& from);
    void Record(const Port& port, std::string_view request);
    void SendDue();

    const NetworkSettings& network_;
    const World& world_;
    Responder responder_;
    Poller poller_;
    Descriptor signals_;
    Descriptor timer_;
    std::vector<Port> ports_; // masters first, in the order of the games
    std::priority_queue<Pending, std::vector<Pending>, Later> pending_;
    std::vector<char> buffer_ = std::vector<char>(65536);
    bool recordsRequests_;
    std::string requests_;
    std::uint64_t order_ = 0;
    Clock::time_point start_;
    std::uint64_t notSent_ = 0;
    std::uint64_t dropped_ = 0;
};

} // namespace quarn::gamenet
