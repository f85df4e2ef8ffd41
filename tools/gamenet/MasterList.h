// The lists that masters send, cut into datagrams as they cut them.
//   Quake III: FF FF FF FF "getserversResponse" { '\' ip[4] port[2] }, big endian; end mark '\' "EOT" 00 00
//   00. Doom 3:    FF FF "servers" 00 { ip[4] port[2] }, port little endian; no end mark. Half-Life: FF FF FF
//   FF 'f' 0A and { '\' ip[4] port[2] } (separated) or { ip[4] port[2] } (packed),
//              big endian; the packed list ends with 0.0.0.0:0.
#pragma once

#include "tools/gamenet/Settings.h"

#include <string>
#include <vector>

namespace quarn::gamenet {

struct MasterList {
    Family family = Family::Quake3;
    std::string header; // the bytes before the first address or separator
    HalfLifeList halfLifeList = HalfLifeList::Separated;
    EndMark endMark = EndMark::Last;
    std::vector<Endpoint> servers;
    int entriesPerDatagram = 0; // 0: as many as 1400 bytes hold
};

// The header of an honest reply: the text of Games.ini's MasterResponse, and for the Doom 3 family the
// NUL that follows it on the wire is not part of it.
std::string masterHeader(Family family);

// At least one datagram, also for an empty list.
std::vector<std::string> cutIntoDatagrams(const MasterList& list);

// Whether the endpoint's bytes hold "EOT" or "EOF", which readers take for the end of a Quake III list.
bool looksLikeEndMark(const Endpoint& endpoint);

} // namespace quarn::gamenet
