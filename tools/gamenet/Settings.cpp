#include "tools/gamenet/Settings.h"

#include "tools/gamenet/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace quarn::gamenet {
namespace {

template<class Value>
using Named = std::pair<std::string_view, Value>;

constexpr std::array<Named<Family>, 3> families = {{
    {"q3", Family::Quake3},
    {"d3", Family::Doom3},
    {"hl", Family::HalfLife},
}};

constexpr std::array<Named<LiarKind>, 8> liarKinds = {{
    {"truncated", LiarKind::Truncated},
    {"empty", LiarKind::EmptyValued},
    {"unterminated", LiarKind::Unterminated},
    {"oversized", LiarKind::Oversized},
    {"random", LiarKind::Random},
    {"late", LiarKind::Late},
    {"duplicated", LiarKind::Duplicated},
    {"wrong-family", LiarKind::WrongFamily},
}};

constexpr std::array<Named<MasterLie>, 7> masterLies = {{
    {"none", MasterLie::None},
    {"silent", MasterLie::Silent},
    {"truncated", MasterLie::Truncated},
    {"random", MasterLie::Random},
    {"wrong-header", MasterLie::WrongHeader},
    {"oversized", MasterLie::Oversized},
    {"duplicated", MasterLie::Duplicated},
}};

template<class Value, std::size_t count>
Value valueNamed(std::string_view name, const std::array<Named<Value>, count>& table) {
    std::string known;
    for (const auto& [text, value] : table) {
        if (text == name)
            return value;
        known += ' ' + std::string(text);
    }
    throw BadSetting("unknown: " + std::string(name) + "; known are:" + known);
}

template<class Value, std::size_t count>
std::string_view nameOf(Value value, const std::array<Named<Value>, count>& table) {
    return std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.second == value; })
        ->first;
}

void checkProtocol(const GameSettings& game) {
    if (game.family == Family::Doom3)
        doom3Protocol(game.protocol);
    else
        parseWhole(game.protocol, 0, game.family == Family::HalfLife ? 255 : 65535);
}

void checkGame(const GameSettings& game) {
    constexpr int doom3Clients = 32;
    complainingAs(game.shortName + ": protocol", [&] { checkProtocol(game); });
    if (game.family == Family::Doom3 && game.slots.high > doom3Clients)
        throw BadSetting(game.shortName + ": slots: the Doom 3 family has 32 at most");
    if (game.silent + game.closed + game.liars > 100)
        throw BadSetting(game.shortName + ": silent, closed and liars together are above 100 %");
    if (game.mods.empty() || game.maps.empty() || game.gameTypes.empty())
        throw BadSetting(game.shortName + ": a game needs a MOD, a map and a game type");
}

} // namespace

std::string_view familyName(Family family) {
    return nameOf(family, families);
}
std::string_view liarKindName(LiarKind kind) {
    return nameOf(kind, liarKinds);
}

Family parseFamily(std::string_view text) {
    return valueNamed(text, families);
}
MasterLie parseMasterLie(std::string_view text) {
    return valueNamed(text, masterLies);
}

std::vector<LiarKind> parseLiarKinds(std::string_view text) {
    std::vector<LiarKind> kinds;
    if (text == "all") {
        for (const auto& entry : liarKinds)
            kinds.push_back(entry.second);
        return kinds;
    }
    for (const std::string& name : parseList(text))
        kinds.push_back(valueNamed(name, liarKinds));
    return kinds;
}

std::uint32_t doom3Protocol(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos)
        throw BadSetting("not MAJOR.MINOR: " + std::string(text));
    return static_cast<std::uint32_t>(parseWhole(text.substr(0, point), 0, 65535)) << 16 |
           static_cast<std::uint32_t>(parseWhole(text.substr(point + 1), 0, 65535));
}

GameSettings* findGame(NetworkSettings& network, std::string_view shortName) {
    for (GameSettings& game : network.games)
        if (game.shortName == shortName)
            return &game;
    return nullptr;
}

void checkSettings(const NetworkSettings& network) {
    if (network.games.empty())
        throw BadSetting("no games");
    if (network.masterPort + static_cast<int>(network.games.size()) - 1 > 65535)
        throw BadSetting("master-port: no room for a port of each game's master");
    std::set<std::string> names;
    for (const GameSettings& game : network.games) {
        checkGame(game);
        if (!names.insert(game.shortName).second)
            throw BadSetting("two games named " + game.shortName);
    }
    for (const ListedServer& server : network.listed)
        if (!names.contains(server.game))
            throw BadSetting("a listed server of an unknown game: " + server.game);
}

} // namespace quarn::gamenet
