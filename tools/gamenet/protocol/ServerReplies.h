#pragma once

// What game servers answer, family by family. Sources: the engines' published server code.
//
// Quake III  FF FF FF FF "getstatus" [blank challenge] -> FF*4 "statusResponse" LF info string LF players,
//            a player being: score blank ping blank "name" LF.
//            FF FF FF FF "getinfo" [blank challenge]   -> FF*4 "infoResponse" LF info string.
// Doom 3     FF FF "getInfo" 00 challenge[4] -> FF FF "infoResponse" 00 challenge[4] protocol[4]
//            { key 00 value 00 } 00 00 { client[1] ping[2] rate[4] name 00 } 20 systems[4], little endian.
// Half-Life  FF FF FF FF "info"    -> FF*4 'C' address 00 name 00 map 00 MOD 00 [description 00]
//                                     players[1] maximum[1] protocol[1]
//            FF FF FF FF "players" -> FF*4 'D' count[1] { index[1] name 00 frags[4] seconds[4] }
//            FF FF FF FF "rules"   -> FF*4 'E' count[2] { name 00 value 00 }
//            FF FF FF FF "ping"    -> FF*4 'j'
// Request words match in any case; what follows them is optional.

#include "tools/gamenet/world/World.h"

#include <optional>
#include <string>
#include <string_view>

namespace quarn::gamenet {

// Nothing if the request is not one of the family's.
std::optional<std::string> ServerReply(Family family, const ServerStatus& status, std::string_view request);

// Whether this request starts a query of the server. A query of a Half-Life server takes several requests.
bool OpensQuery(Family family, std::string_view request);

// The family's main reply to a request without a challenge.
std::string MainReply(Family family, const ServerStatus& status);

} // namespace quarn::gamenet
