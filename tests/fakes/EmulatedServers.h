#pragma once

// Game servers that answer on a fake socket as honest servers of their family do.

#include "tests/fakes/FakeUdpSockets.h"
#include "tools/gamenet/world/World.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quarn {

struct EmulatedServer {
    gamenet::Family family = gamenet::Family::Quake3;
    gamenet::ServerStatus status;
    std::int32_t latency = 20; // milliseconds to each reply
};

// An empty server of the family; its keys are filled in from these fields.
EmulatedServer MakeServer(gamenet::Family family, const std::string& name, const std::string& map,
                          const std::string& mod, bool locked = false);

class EmulatedServers {
  public:
    explicit EmulatedServers(FakeUdpSockets& sockets);
    EmulatedServers(const EmulatedServers&) = delete;
    EmulatedServers& operator=(const EmulatedServers&) = delete;

    // By "address:port". Any other address never answers.
    std::map<std::string, EmulatedServer> servers;

    // In place of the answers of one address, for what no honest server does.
    std::map<std::string, std::function<void(const SentDatagram&)>> scripts;

    // Runs whenever a server is asked, before it answers.
    std::function<void(const std::string& address)> whenAsked;

    // "address:port" of every server asked so far, in order; the three requests to a Half-Life server count
    // once.
    const std::vector<std::string>& Asked() const noexcept { return asked_; }
    void ForgetAsked() { asked_.clear(); }

  private:
    void Answer(const SentDatagram& request);

    std::vector<std::string> asked_;
};

// One datagram of a master of the family that lists these "address:port", all on the loopback.
std::string MasterDatagram(gamenet::Family family, const std::vector<std::string>& listed,
                           bool endMark = false);

} // namespace quarn
