#pragma once

// Decides what is answered and when, without sockets and clocks. Servers and masters are addressed by index;
// losses and jitter follow from counters.

#include "tools/gamenet/protocol/Liars.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

struct Counters {
    std::uint64_t serverRequests = 0; // datagrams that reached game servers
    std::uint64_t serverReplies = 0;
    std::uint64_t masterRequests = 0;
    std::uint64_t masterReplies = 0;
    std::uint64_t lost = 0;    // requests dropped as lost
    std::uint64_t silent = 0;  // requests to silent servers
    std::uint64_t unknown = 0; // requests that the family does not know

    bool operator==(const Counters&) const = default;
};

class Responder {
  public:
    // Keeps references to both; they must outlive it.
    Responder(const NetworkSettings& network, const World& world);

    // sinceStart is used if players come and go with the time.
    std::vector<TimedReply> AskServer(std::size_t server, std::string_view request,
                                      std::chrono::milliseconds sinceStart);
    std::vector<TimedReply> AskMaster(std::size_t game, std::string_view request);

    const Counters& Counts() const { return counters_; }

  private:
    struct Asked {
        std::uint64_t requests = 0;
        std::uint64_t queries = 0;
    };

    std::uint64_t Epoch(std::size_t server, std::chrono::milliseconds sinceStart) const;

    const NetworkSettings& network_;
    const World& world_;
    std::vector<std::vector<Endpoint>> lists_; // for each game
    std::vector<Asked> servers_;
    std::vector<std::uint64_t> masters_; // requests to each
    Counters counters_;
};

} // namespace quarn::gamenet
