#include "tests/fakes/EmulatedServers.h"

#include "tools/gamenet/protocol/MasterList.h"
#include "tools/gamenet/protocol/ServerReplies.h"

#include <optional>
#include <utility>

namespace quarn {

using gamenet::Family;

EmulatedServer MakeServer(Family family, const std::string& name, const std::string& map,
                          const std::string& mod, bool locked) {
    EmulatedServer server;
    server.family = family;
    gamenet::ServerStatus& status = server.status;
    status.name = name;
    status.map = map;
    status.mod = mod;
    status.maxPlayers = 16;
    status.locked = locked;
    status.protocol = family == Family::Doom3 ? "1.41" : family == Family::HalfLife ? "46" : "68";
    const std::string lock = locked ? "1" : "0";
    if (family == Family::Quake3)
        status.variables = {{"sv_hostname", name},   {"mapname", map},     {"gamename", mod},
                            {"sv_maxclients", "16"}, {"g_needpass", lock}, {"g_gametype", "4"}};
    else if (family == Family::Doom3)
        status.variables = {{"si_name", name},       {"si_map", map},      {"gamename", mod},
                            {"si_maxPlayers", "16"}, {"si_usePass", lock}, {"si_gameType", "dm"}};
    else
        status.variables = {{"mp_timelimit", "30"}};
    return server;
}

EmulatedServers::EmulatedServers(FakeUdpSockets& sockets) {
    sockets.whenSent = [this](const SentDatagram& request) { Answer(request); };
}

void EmulatedServers::Answer(const SentDatagram& request) {
    const std::string address = request.address + ":" + std::to_string(request.port);
    const auto found = servers.find(address);
    const bool isServer = found != servers.end();
    if (!isServer || gamenet::OpensQuery(found->second.family, request.bytes)) {
        asked_.push_back(address);
        if (whenAsked)
            whenAsked(address);
    }
    if (const auto script = scripts.find(address); script != scripts.end()) {
        script->second(request);
        return;
    }
    if (!isServer)
        return;
    std::optional<std::string> reply =
        gamenet::ServerReply(found->second.family, found->second.status, request.bytes);
    if (reply)
        request.socket->ReplyIn(found->second.latency, std::move(*reply));
}

std::string MasterDatagram(Family family, const std::vector<std::string>& listed, bool endMark) {
    gamenet::MasterList list;
    list.family = family;
    list.header = gamenet::MasterHeader(family);
    list.endMark = endMark ? gamenet::EndMark::Every : gamenet::EndMark::None;
    list.entriesPerDatagram = static_cast<int>(listed.size());
    for (const std::string& endpoint : listed)
        list.servers.push_back(gamenet::ParseLoopbackEndpoint(endpoint));
    return gamenet::CutIntoDatagrams(list).front();
}

} // namespace quarn
