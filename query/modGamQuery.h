#pragma once

// The status query of one game server, and how its reply fills the server's record. Errors are logged,
// without being counted, and end the parse; the fields filled so far stay. Replies are neither checked for
// their sender nor for their kind beyond what is said here; whatever the bytes are, a parse ends.

#include "controls/UdpSocket.h"
#include "core/modDefinitions.h"
#include "query/Engines.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

// Players beyond these in one reply are not read.
inline constexpr std::int32_t MaxPlayersOfAReply = 1'024;

// Beyond this length a Variables text no longer grows by further rules replies.
inline constexpr std::size_t MaxVariablesLength = 262'144;

// Sends the requests of the engine family to the host set on the socket; none where there is no family.
void SendServerQuery(clsAppLog& log, const EngineFamily* engine, UdpSocket& sckServer);

// Each parses one datagram into Servers(index).
void ParseQ3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index);
void ParseD3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index);
void ParseHLCSStatus(ProgramState& program, std::string_view data, std::int32_t index);

// Resets what a status reply fills anew; Locked, Country, Ping, Variables, Password and LastVisit stay.
void ClearServerStatus(ServerRecord& server);

// A name without colour codes and double quotes.
std::string ClearName(clsAppLog& log, std::string_view text);

} // namespace quarn
