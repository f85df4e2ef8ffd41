#include "tools/gamenet/protocol/MasterReplies.h"

#include "tools/gamenet/protocol/MasterLies.h"
#include "tools/gamenet/protocol/Wire.h"
#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <array>

namespace quarn::gamenet {
namespace {

bool IsListRequest(Family family, std::string_view request) {
    if (family == Family::HalfLife)
        return request.starts_with('1') || request == "c";
    const std::string_view mark = family == Family::Quake3 ? "\xFF\xFF\xFF\xFF" : "\xFF\xFF";
    return request.starts_with(mark) && StartsWithIgnoringCase(request.substr(mark.size()), "getservers");
}

// A packed Half-Life list continues after the last address of the previous batch, which the request names as
// text after the region byte.
std::vector<Endpoint> Remaining(const std::vector<Endpoint>& servers, std::string_view request) {
    constexpr std::size_t AddressAt = 2;
    if (request.size() <= AddressAt)
        return servers;
    const std::string_view text = request.substr(AddressAt, request.find('\0', AddressAt) - AddressAt);
    const auto last = std::find_if(servers.begin(), servers.end(),
                                   [&](const Endpoint& server) { return EndpointText(server) == text; });
    return last == servers.end() ? servers : std::vector<Endpoint>(last + 1, servers.end());
}

bool IsPacked(const GameSettings& game) {
    return game.family == Family::HalfLife && game.halfLifeList == HalfLifeList::Packed;
}

MasterList ListFor(const GameSettings& game, const std::vector<Endpoint>& servers, std::string_view request) {
    MasterList list;
    list.family = game.family;
    list.header = MasterHeader(game.family);
    list.halfLifeList = game.halfLifeList;
    list.endMark = game.endMark;
    list.entriesPerDatagram = game.listEntries;
    list.servers = IsPacked(game) ? Remaining(servers, request) : servers;
    if (game.family == Family::HalfLife && request == "c")
        list.header = std::string("\xFF\xFF\xFF\xFF\x64\0", 6);
    return list;
}

} // namespace

std::vector<std::string> MasterReply(const GameSettings& game, const std::vector<Endpoint>& servers,
                                     std::string_view request, Random random) {
    if (!IsListRequest(game.family, request))
        return {};
    std::vector<std::string> datagrams = LyingList(game.masterLie, ListFor(game, servers, request), random);
    if (IsPacked(game) && datagrams.size() > 1)
        datagrams.resize(1);
    return datagrams;
}

std::string MasterRequest(const GameSettings& game) {
    if (!game.request.empty())
        return IniUnescaped(game.request);
    if (game.family == Family::Quake3)
        return "\xFF\xFF\xFF\xFFgetservers " + game.protocol + " full empty";
    if (game.family == Family::HalfLife)
        return std::string("1\xFF", 2) + std::string("0.0.0.0:0\0\0", 11);
    std::string request = "\xFF\xFF";
    PutText(request, "getServers");
    PutLittle32(request, Doom3Protocol(game.protocol));
    PutText(request, "");
    PutByte(request, 0);
    return request;
}

} // namespace quarn::gamenet
