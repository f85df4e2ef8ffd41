#pragma once

// The status query of one game server, and how its reply fills the server's record. Errors are logged,
// without being counted, and end the parse; the fields filled so far are kept. Neither the sender nor the
// kind of a reply is checked beyond what is said here; a parse ends whatever the bytes are.

#include "controls/UdpSocket.h"
#include "core/modDefinitions.h"
#include "query/Engines.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

// Further players of a reply are not read.
inline constexpr std::int32_t MaxPlayersOfAReply = 1'024;

// A Variables text of this length does not grow by further rules replies.
inline constexpr std::size_t MaxVariablesLength = 262'144;

// Sends the requests of the engine family to the host set on the socket; nothing if there is no family.
void SendServerQuery(clsAppLog& log, const EngineFamily* engine, UdpSocket& sckServer);

// Each parses one datagram into Servers(index).
void ParseQ3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index);
void ParseD3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index);
void ParseHLCSStatus(ProgramState& program, std::string_view data, std::int32_t index);

// Resets the fields that a status reply fills; Locked, Country, Ping, Variables, Password and LastVisit are
// kept.
void ClearServerStatus(ServerRecord& server);

// A name without color codes and double quotes.
std::string ClearName(clsAppLog& log, std::string_view text);

} // namespace quarn
