#include "tools/gamenet/cli/Reports.h"

#include "tools/gamenet/protocol/MasterReplies.h"
#include "tools/gamenet/world/Text.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace quarn::gamenet {
namespace {

void PutLine(std::string& report, const std::vector<std::string>& fields) {
    for (std::size_t at = 0; at < fields.size(); ++at)
        report += (at == 0 ? "" : "\t") + TruthEscaped(fields[at]);
    report += '\n';
}

// A name as the family's browser shows it: Half-Life has no colour codes to remove.
std::string ShownName(const std::string& name, Family family) {
    return family == Family::HalfLife ? name : WithoutColours(name);
}

// Each name is escaped separately, so that the bars between them are not.
std::string PlayerNames(const ServerStatus& status, Family family) {
    std::string names;
    for (const Player& player : status.players)
        names += (names.empty() ? "" : "|") + TruthEscaped(ShownName(player.name, family));
    return names;
}

void PutTruth(std::string& report, const GameServer& server, const GameSettings& game) {
    const ServerStatus& status = server.status;
    PutLine(report,
            {game.shortName, std::string(FamilyName(game.family)), AddressText(status.endpoint.address),
             std::to_string(status.endpoint.port), ShownName(status.name, game.family), status.map,
             status.mod, std::to_string(status.players.size()), std::to_string(status.maxPlayers),
             status.locked ? "1" : "0", server.country, std::string(KindName(server)),
             std::to_string(server.latency)});
    report.insert(report.size() - 1, '\t' + PlayerNames(status, game.family));
}

void PutIniLine(std::string& ini, const std::string& key, const std::string& value) {
    constexpr std::size_t LongestValue = 254;
    if (value.size() > LongestValue)
        throw BadSetting("longer than 254 characters in Games.ini: " + key + '=' + value);
    ini += key + '=' + value + "\r\n";
}

void PutGame(std::string& ini, const GameSettings& game, const Endpoint& master) {
    PutIniLine(ini, "Description", game.description);
    PutIniLine(ini, "ExeName", game.exeName);
    PutIniLine(ini, "GameShort", game.shortName);
    PutIniLine(ini, "Engine", std::string(FamilyName(game.family)));
    PutIniLine(ini, "MasterAddress", AddressText(master.address));
    PutIniLine(ini, "MasterPort", std::to_string(master.port));
    PutIniLine(ini, "MasterPacket", IniEscaped(MasterRequest(game)));
    PutIniLine(ini, "MasterResponse", IniEscaped(MasterHeader(game.family)));
}

void PutMod(std::string& ini, const GameSettings& game, const Mod& mod) {
    PutIniLine(ini, "BasedGame", game.shortName);
    PutIniLine(ini, "Description", IniEscaped(mod.description));
    PutIniLine(ini, "GameName", IniEscaped(mod.name));
    PutIniLine(ini, "GameVersion", "");
}

} // namespace

std::string TruthReport(const NetworkSettings& network, const World& world) {
    std::string report;
    PutLine(report, {"game", "family", "address", "port", "name", "map", "mod", "players", "max", "locked",
                     "country", "kind", "latency", "player_names"});
    for (const GameServer& server : world.servers)
        PutTruth(report, server, network.games[server.game]);
    for (const ListedServer& server : network.listed)
        PutLine(report, {server.game, "", AddressText(server.endpoint.address),
                         std::to_string(server.endpoint.port), "", "", "", "", "", "", "", "listed", "", ""});
    return report;
}

std::string GamesIni(const NetworkSettings& network, const std::vector<Endpoint>& masters) {
    std::size_t modCount = 0;
    std::string games;
    std::string mods;
    for (std::size_t index = 0; index < network.games.size(); ++index) {
        const GameSettings& game = network.games[index];
        games += "\r\n[Game" + std::to_string(index + 1) + "]\r\n";
        PutGame(games, game, masters.at(index));
        for (const Mod& mod : game.mods) {
            mods += "\r\n[MOD" + std::to_string(++modCount) + "]\r\n";
            PutMod(mods, game, mod);
        }
    }
    std::string ini = "[General]\r\n";
    PutIniLine(ini, "IniVer", "1000001");
    PutIniLine(ini, "IniDesc", "Emulated games on the loopback network");
    PutIniLine(ini, "GameNum", std::to_string(network.games.size()));
    PutIniLine(ini, "MODNum", std::to_string(modCount));
    return ini + games + mods;
}

std::string CountryReport(const World& world) {
    std::string report = std::to_string(world.countryBlocks.size()) + "\r\n";
    for (const CountryBlock& block : world.countryBlocks)
        report +=
            std::to_string(block.first) + ';' + std::to_string(block.last) + ';' + block.country + "\r\n";
    return report;
}

void WriteWhole(const std::string& path, const std::string& content) {
    const std::string unfinished = path + ".new";
    std::ofstream file(unfinished, std::ios::binary);
    file << content;
    file.close();
    if (!file || std::rename(unfinished.c_str(), path.c_str()) != 0)
        throw std::runtime_error("cannot write " + path);
}

} // namespace quarn::gamenet
