#pragma once

// The emulated servers and their players. Everything here follows from the settings and their seed alone.

#include "tools/gamenet/world/Settings.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quarn::gamenet {

struct Player {
    std::string name; // with colour codes
    int score = 0;
    int ping = 0;      // milliseconds
    float seconds = 0; // on the server
};

// Keys and values in the order in which they are sent.
using Variables = std::vector<std::pair<std::string, std::string>>;

// What a server reports about itself at one moment.
struct ServerStatus {
    Endpoint endpoint;
    std::string name; // with colour codes
    std::string map;
    std::string mod;
    std::string info;     // Half-Life: description text, usually none
    std::string protocol; // "68", "1.41"
    int maxPlayers = 0;
    bool locked = false;
    Variables
        variables; // of the status or rules reply, the fields above included where the family sends them
    std::vector<Player> players;
};

enum class Conduct { Honest, Silent, Closed, Liar };

struct GameServer {
    std::size_t game = 0; // index into the network's games
    std::uint64_t id = 0; // counts through the whole network
    std::string country;
    int latency = 0; // milliseconds
    Conduct conduct = Conduct::Honest;
    LiarKind lie = LiarKind::Truncated; // of a liar
    ServerStatus status;                // players of epoch 0
};

// One block of addresses for each country, both ends included.
struct CountryBlock {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::string country;
};

struct World {
    std::vector<CountryBlock> countryBlocks;
    std::vector<GameServer> servers; // in the order of the games
};

// Throws BadSetting if the countries do not fit into the address block.
World CreateWorld(const NetworkSettings& network);

// The players on the server in this epoch; epoch 0 is the start.
std::vector<Player> PlayersOf(const GameServer& server, const GameSettings& game, std::uint64_t seed,
                              std::uint64_t epoch);

// The conduct or the liar's kind as one word.
std::string_view KindName(const GameServer& server);

} // namespace quarn::gamenet
