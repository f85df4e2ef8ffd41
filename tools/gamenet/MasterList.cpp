#include "tools/gamenet/MasterList.h"

#include "tools/gamenet/Wire.h"

#include <algorithm>

namespace quarn::gamenet {
namespace {

constexpr std::size_t usualDatagram = 1400;
const std::string endMark("\\EOT\0\0\0", 7);

std::string record(const Endpoint& server, Family family, bool separated) {
    std::string bytes;
    if (separated)
        bytes += '\\';
    putBig32(bytes, server.address);
    if (family == Family::Doom3)
        putLittle16(bytes, server.port);
    else
        putBig16(bytes, server.port);
    return bytes;
}

bool isSeparated(const MasterList& list) {
    return list.family == Family::Quake3 ||
           (list.family == Family::HalfLife && list.halfLifeList == HalfLifeList::Separated);
}

std::string tailOf(const MasterList& list, bool last) {
    if (list.family == Family::Quake3)
        return list.endMark == EndMark::Every || (last && list.endMark == EndMark::Last) ? endMark : "";
    if (list.family == Family::Doom3 || !last)
        return "";
    if (list.halfLifeList == HalfLifeList::Packed)
        return record({}, list.family, false);
    // An empty list has no separator of its own, and readers find the header's end by one.
    return list.servers.empty() ? "\\" : "";
}

std::size_t entriesThatFit(const MasterList& list, const std::string& header) {
    if (list.entriesPerDatagram > 0)
        return static_cast<std::size_t>(list.entriesPerDatagram);
    const std::size_t tail = list.family == Family::Quake3 ? endMark.size() : 0;
    return (usualDatagram - header.size() - tail) / (isSeparated(list) ? 7 : 6);
}

} // namespace

std::string masterHeader(Family family) {
    if (family == Family::Doom3)
        return "\xFF\xFFservers";
    return family == Family::Quake3 ? "\xFF\xFF\xFF\xFFgetserversResponse" : "\xFF\xFF\xFF\xFF\x66\x0A";
}

std::vector<std::string> cutIntoDatagrams(const MasterList& list) {
    const bool separated = isSeparated(list);
    std::string header = list.header;
    if (list.family == Family::Doom3)
        header += '\0';
    const std::size_t entries = entriesThatFit(list, header);
    std::vector<std::string> datagrams;
    std::size_t at = 0;
    do {
        std::string datagram = header;
        const std::size_t end = std::min(list.servers.size(), at + entries);
        for (; at < end; ++at)
            datagram += record(list.servers[at], list.family, separated);
        datagram += tailOf(list, at == list.servers.size());
        datagrams.push_back(std::move(datagram));
    } while (at < list.servers.size());
    return datagrams;
}

bool looksLikeEndMark(const Endpoint& endpoint) {
    const std::string bytes = record(endpoint, Family::Quake3, true);
    return bytes.find("EOT") != std::string::npos || bytes.find("EOF") != std::string::npos;
}

} // namespace quarn::gamenet
