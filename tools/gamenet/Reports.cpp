#include "tools/gamenet/Reports.h"

#include "tools/gamenet/MasterReplies.h"
#include "tools/gamenet/Text.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace quarn::gamenet {
namespace {

void putLine(std::string& report, const std::vector<std::string>& fields) {
    for (std::size_t at = 0; at < fields.size(); ++at)
        report += (at == 0 ? "" : "\t") + truthEscaped(fields[at]);
    report += '\n';
}

// Names as the family's browser shows them: Half-Life has no colour codes to strip.
std::string shownName(const std::string& name, Family family) {
    return family == Family::HalfLife ? name : withoutColours(name);
}

// Each name is escaped on its own, so that the bars between them stay bars.
std::string playerNames(const ServerStatus& status, Family family) {
    std::string names;
    for (const Player& player : status.players)
        names += (names.empty() ? "" : "|") + truthEscaped(shownName(player.name, family));
    return names;
}

void putTruth(std::string& report, const GameServer& server, const GameSettings& game) {
    const ServerStatus& status = server.status;
    putLine(report,
            {game.shortName, std::string(familyName(game.family)), addressText(status.endpoint.address),
             std::to_string(status.endpoint.port), shownName(status.name, game.family), status.map,
             status.mod, std::to_string(status.players.size()), std::to_string(status.maxPlayers),
             status.locked ? "1" : "0", server.country, std::string(kindName(server)),
             std::to_string(server.latency)});
    report.insert(report.size() - 1, '\t' + playerNames(status, game.family));
}

void putIniLine(std::string& ini, const std::string& key, const std::string& value) {
    constexpr std::size_t longestValue = 254;
    if (value.size() > longestValue)
        throw BadSetting("longer than 254 characters in Games.ini: " + key + '=' + value);
    ini += key + '=' + value + "\r\n";
}

void putGame(std::string& ini, const GameSettings& game, const Endpoint& master) {
    putIniLine(ini, "Description", game.description);
    putIniLine(ini, "ExeName", game.exeName);
    putIniLine(ini, "GameShort", game.shortName);
    putIniLine(ini, "Engine", std::string(familyName(game.family)));
    putIniLine(ini, "MasterAddress", addressText(master.address));
    putIniLine(ini, "MasterPort", std::to_string(master.port));
    putIniLine(ini, "MasterPacket", iniEscaped(masterRequest(game)));
    putIniLine(ini, "MasterResponse", iniEscaped(masterHeader(game.family)));
}

void putMod(std::string& ini, const GameSettings& game, const Mod& mod) {
    putIniLine(ini, "BasedGame", game.shortName);
    putIniLine(ini, "Description", iniEscaped(mod.description));
    putIniLine(ini, "GameName", iniEscaped(mod.name));
    putIniLine(ini, "GameVersion", "");
}

} // namespace

std::string truthReport(const NetworkSettings& network, const World& world) {
    std::string report;
    putLine(report, {"game", "family", "address", "port", "name", "map", "mod", "players", "max", "locked",
                     "country", "kind", "latency", "player_names"});
    for (const GameServer& server : world.servers)
        putTruth(report, server, network.games[server.game]);
    for (const ListedServer& server : network.listed)
        putLine(report, {server.game, "", addressText(server.endpoint.address),
                         std::to_string(server.endpoint.port), "", "", "", "", "", "", "", "listed", "", ""});
    return report;
}

std::string gamesIni(const NetworkSettings& network, const std::vector<Endpoint>& masters) {
    std::size_t modCount = 0;
    std::string games;
    std::string mods;
    for (std::size_t index = 0; index < network.games.size(); ++index) {
        const GameSettings& game = network.games[index];
        games += "\r\n[Game" + std::to_string(index + 1) + "]\r\n";
        putGame(games, game, masters.at(index));
        for (const Mod& mod : game.mods) {
            mods += "\r\n[MOD" + std::to_string(++modCount) + "]\r\n";
            putMod(mods, game, mod);
        }
    }
    std::string ini = "[General]\r\n";
    putIniLine(ini, "IniVer", "1000001");
    putIniLine(ini, "IniDesc", "Emulated games on the loopback network");
    putIniLine(ini, "GameNum", std::to_string(network.games.size()));
    putIniLine(ini, "MODNum", std::to_string(modCount));
    return ini + games + mods;
}

std::string countryReport(const World& world) {
    std::string report = std::to_string(world.countryBlocks.size()) + "\r\n";
    for (const CountryBlock& block : world.countryBlocks)
        report +=
            std::to_string(block.first) + ';' + std::to_string(block.last) + ';' + block.country + "\r\n";
    return report;
}

void writeWhole(const std::string& path, const std::string& content) {
    const std::string unfinished = path + ".new";
    std::ofstream file(unfinished, std::ios::binary);
    file << content;
    file.close();
    if (!file || std::rename(unfinished.c_str(), path.c_str()) != 0)
        throw std::runtime_error("cannot write " + path);
}

} // namespace quarn::gamenet
