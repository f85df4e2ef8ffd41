#pragma once

// Records and lists that several tests start from.

#include "core/modDefinitions.h"

#include <cstdint>

namespace quarn {

inline ServerRecord SampleServer() {
    ServerRecord server;
    server.Address = "192.0.2.7";
    server.Port = 27960;
    server.Country = "DE";
    server.Name = "My server";
    server.Ping = 50;
    server.Players = 3;
    server.MaxPlayers = 16;
    server.ModName = "baseq3";
    server.Map = "q3dm17";
    return server;
}

// Empty definitions and settings for this number of games.
inline void ResetGames(ProgramState& program, std::int32_t count) {
    program.GameNum = count;
    program.Games.Reset(count);
    program.GamePath.Reset(count);
    program.GameConfig.Reset(count);
    program.GamePlayerName.Reset(count);
    program.GameVisible.Reset(count);
}

} // namespace quarn
