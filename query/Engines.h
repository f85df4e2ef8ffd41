#pragma once

// The engine families of the games: what their servers are asked, and how the replies of masters and servers
// are read. One row for each family; the key "Engine" of Games.ini names it. launch/modGameStart starts the
// games of a family.

#include "core/modDefinitions.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quarn {

// Shorter datagrams of masters and servers are ignored.
inline constexpr std::int32_t ShortestDatagram = 5;

struct EngineFamily {
    std::string_view key; // compared exactly

    // The datagrams of one status query, in the order in which they are sent.
    std::span<const std::string_view> statusRequests;

    // Parses one reply datagram into Servers(index).
    void (*parseStatus)(ProgramState& program, std::string_view datagram, std::int32_t index);

    // Ends the header of a master's reply.
    std::string_view masterHeaderDelimiter;

    // Appends the servers of a master's reply without its header to Servers. May change the text.
    void (*parseMaster)(ProgramState& program, std::string& body);

    // How often the body is parsed: if the header is the expected one, and if it is not.
    int passesOnMatch = 1;
    int passesOnMismatch = 0;
};

using EngineTable = std::span<const EngineFamily>;

// Quake 3, Doom 3 and Half-Life.
EngineTable StandardEngines() noexcept;

// Null for a key without a row.
const EngineFamily* FindEngine(EngineTable engines, std::string_view key) noexcept;

} // namespace quarn
