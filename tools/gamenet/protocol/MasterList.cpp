#include "tools/gamenet/protocol/MasterList.h"

#include "tools/gamenet/protocol/Wire.h"

#include <algorithm>

namespace quarn::gamenet {
namespace {

constexpr std::size_t UsualDatagram = 1400;
const std::string EndMarkBytes("\\EOT\0\0\0", 7);

std::string Record(const Endpoint& server, Family family, bool separated) {
    std::string bytes;
    if (separated)
        bytes += '\\';
    PutBig32(bytes, server.address);
    if (family == Family::Doom3)
        PutLittle16(bytes, server.port);
    else
        PutBig16(bytes, server.port);
    return bytes;
}

bool IsSeparated(const MasterList& list) {
    return list.family == Family::Quake3 ||
           (list.family == Family::HalfLife && list.halfLifeList == HalfLifeList::Separated);
}

std::string TailOf(const MasterList& list, bool last) {
    if (list.family == Family::Quake3)
        return list.endMark == EndMark::Every || (last && list.endMark == EndMark::Last) ? EndMarkBytes : "";
    if (list.family == Family::Doom3 || !last)
        return "";
    if (list.halfLifeList == HalfLifeList::Packed)
        return Record({}, list.family, false);
    // Readers find the end of the header by a separator, and an empty list has none.
    return list.servers.empty() ? "\\" : "";
}

std::size_t EntriesThatFit(const MasterList& list, const std::string& header) {
    if (list.entriesPerDatagram > 0)
        return static_cast<std::size_t>(list.entriesPerDatagram);
    const std::size_t tail = list.family == Family::Quake3 ? EndMarkBytes.size() : 0;
    return (UsualDatagram - header.size() - tail) / (IsSeparated(list) ? 7 : 6);
}

} // namespace

std::string MasterHeader(Family family) {
    if (family == Family::Doom3)
        return "\xFF\xFFservers";
    return family == Family::Quake3 ? "\xFF\xFF\xFF\xFFgetserversResponse" : "\xFF\xFF\xFF\xFF\x66\x0A";
}

std::vector<std::string> CutIntoDatagrams(const MasterList& list) {
    const bool separated = IsSeparated(list);
    std::string header = list.header;
    if (list.family == Family::Doom3)
        header += '\0';
    const std::size_t entries = EntriesThatFit(list, header);
    std::vector<std::string> datagrams;
    std::size_t at = 0;
    do {
        std::string datagram = header;
        const std::size_t end = std::min(list.servers.size(), at + entries);
        for (; at < end; ++at)
            datagram += Record(list.servers[at], list.family, separated);
        datagram += TailOf(list, at == list.servers.size());
        datagrams.push_back(std::move(datagram));
    } while (at < list.servers.size());
    return datagrams;
}

} // namespace quarn::gamenet
