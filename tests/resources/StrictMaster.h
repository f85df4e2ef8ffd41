#pragma once

// A master that lists the servers of one game, and only to who asks for them as the game itself does. Real
// masters answer a request with another protocol number or name as well, but with the servers of another
// game, or with none.
//   Quake III: FF FF FF FF "getservers" [' ' name] ' ' protocol { ' ' "full" | "empty" }
//   Doom 3:    FF FF "getServers" 00, protocol (4 bytes, low byte first; 0: any), MOD 00, filter (1 byte)

#include "tools/gamenet/world/Endpoint.h"
#include "tools/gamenet/world/Settings.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

struct StrictMaster {
    std::string gameShort;
    gamenet::Family family = gamenet::Family::Quake3;
    std::uint32_t protocol = 0;
    std::string name; // by which the master knows the game; empty: it is asked for by its protocol alone

    bool Understands(std::string_view request) const;

    // The datagrams that list these servers; none when the request is another's.
    std::vector<std::string> Answer(std::string_view request,
                                    const std::vector<gamenet::Endpoint>& servers) const;
};

} // namespace quarn
