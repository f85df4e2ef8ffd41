#pragma once

// Requests, servers and settings that several tests of the emulated network use.

#include "tools/gamenet/world/DemoNetwork.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn::gamenet {

// The bytes of a literal, NULs included, without the one that ends it.
template<std::size_t size>
std::string Bytes(const char (&literal)[size]) {
    return {literal, size - 1};
}

inline const Endpoint FirstServer{0x7F010203, 0x6D38};
inline const Endpoint SecondServer{0x7F040506, 0x1234};
inline const Endpoint ThirdServer{0x7F070809, 0x5C5C};

inline std::vector<Endpoint> ManyServers(std::size_t count) {
    std::vector<Endpoint> servers;
    for (std::size_t nth = 0; nth < count; ++nth)
        servers.push_back({0x7F100001 + static_cast<std::uint32_t>(nth), 27960});
    return servers;
}

inline GameSettings GameOf(Family family) {
    return PlainGame(family, "x");
}

// A network whose only server answers after 20 ms.
inline NetworkSettings OneServer(Family family) {
    NetworkSettings network = DemoNetwork();
    network.games = {GameOf(family)};
    network.games[0].servers = 1;
    network.games[0].latency = {20, 20};
    network.games[0].fill = {50, 50};
    return network;
}

// The requests of one look at a server, in the order in which browsers send them.
inline std::vector<std::string> StatusRequests(Family family) {
    if (family == Family::Quake3)
        return {"\xFF\xFF\xFF\xFFgetstatus"};
    if (family == Family::Doom3)
        return {Bytes("\xFF\xFFgetinfo\0\0\0\0")};
    return {"\xFF\xFF\xFF\xFFinfo", "\xFF\xFF\xFF\xFFplayers", "\xFF\xFF\xFF\xFFrules"};
}

} // namespace quarn::gamenet
