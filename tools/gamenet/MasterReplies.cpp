#include "tools/gamenet/MasterReplies.h"

#include "tools/gamenet/MasterLies.h"
#include "tools/gamenet/Text.h"
#include "tools/gamenet/Wire.h"

#include <algorithm>
#include <array>

namespace quarn::gamenet {
namespace {

bool isListRequest(Family family, std::string_view request) {
    if (family == Family::HalfLife)
        return request.starts_with('1') || request == "c";
    const std::string_view mark = family == Family::Quake3 ? "\xFF\xFF\xFF\xFF" : "\xFF\xFF";
    return request.starts_with(mark) && startsWithIgnoringCase(request.substr(mark.size()), "getservers");
}

// A packed Half-Life list goes on behind the last address of the batch before; the request names it as
// text behind the region byte.
std::vector<Endpoint> remaining(const std::vector<Endpoint>& servers, std::string_view request) {
    constexpr std::size_t addressAt = 2;
    if (request.size() <= addressAt)
        return servers;
    const std::string_view text = request.substr(addressAt, request.find('\0', addressAt) - addressAt);
    const auto last = std::find_if(servers.begin(), servers.end(),
                                   [&](const Endpoint& server) { return endpointText(server) == text; });
    return last == servers.end() ? servers : std::vector<Endpoint>(last + 1, servers.end());
}

bool isPacked(const GameSettings& game) {
    return game.family == Family::HalfLife && game.halfLifeList == HalfLifeList::Packed;
}

MasterList listFor(const GameSettings& game, const std::vector<Endpoint>& servers, std::string_view request) {
    MasterList list;
    list.family = game.family;
    list.header = masterHeader(game.family);
    list.halfLifeList = game.halfLifeList;
    list.endMark = game.endMark;
    list.entriesPerDatagram = game.listEntries;
    list.servers = isPacked(game) ? remaining(servers, request) : servers;
    if (game.family == Family::HalfLife && request == "c")
        list.header = std::string("\xFF\xFF\xFF\xFF\x64\0", 6);
    return list;
}

} // namespace

std::vector<std::string> masterReply(const GameSettings& game, const std::vector<Endpoint>& servers,
                                     std::string_view request, Random random) {
    if (!isListRequest(game.family, request))
        return {};
    std::vector<std::string> datagrams = lyingList(game.masterLie, listFor(game, servers, request), random);
    if (isPacked(game) && datagrams.size() > 1)
        datagrams.resize(1);
    return datagrams;
}

std::string masterRequest(const GameSettings& game) {
    if (!game.request.empty())
        return iniUnescaped(game.request);
    if (game.family == Family::Quake3)
        return "\xFF\xFF\xFF\xFFgetservers " + game.protocol + " full empty";
    if (game.family == Family::HalfLife)
        return std::string("1\xFF", 2) + std::string("0.0.0.0:0\0\0", 11);
    std::string request = "\xFF\xFF";
    putText(request, "getServers");
    putLittle32(request, doom3Protocol(game.protocol));
    putText(request, "");
    putByte(request, 0);
    return request;
}

} // namespace quarn::gamenet
