#pragma once

// The lists that masters send, split into datagrams as the real masters split them. A server is ip[4]
// port[2]. Half-Life lists come in two forms, separated and packed; only a packed list has an end mark,
// 0.0.0.0:0.
//
// clang-format off
//   Quake III: FF FF FF FF "getserversResponse" { '\' server }  big endian, end mark '\' "EOT" 00 00 00
//   Doom 3:    FF FF "servers" 00 { server }                    port little endian, no end mark
//   Half-Life: FF FF FF FF 'f' 0A { '\' server } or { server }  big endian
// clang-format on

#include "tools/gamenet/world/Settings.h"

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

// The header of an honest reply, which is the text of MasterResponse in Games.ini. The NUL that follows it in
// a Doom 3 reply is not part of it.
std::string MasterHeader(Family family);

// At least one datagram, also for an empty list.
std::vector<std::string> CutIntoDatagrams(const MasterList& list);

} // namespace quarn::gamenet
