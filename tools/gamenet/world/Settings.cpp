#include "tools/gamenet/world/Settings.h"

#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace quarn::gamenet {
namespace {

template<class Value>
using Named = std::pair<std::string_view, Value>;

constexpr std::array<Named<Family>, 3> Families = {{
    {"q3", Family::Quake3},
    {"d3", Family::Doom3},
    {"hl", Family::HalfLife},
}};

constexpr std::array<Named<LiarKind>, 8> LiarKinds = {{
    {"truncated", LiarKind::Truncated},
    {"empty", LiarKind::EmptyValued},
    {"unterminated", LiarKind::Unterminated},
    {"oversized", LiarKind::Oversized},
    {"random", LiarKind::Random},
    {"late", LiarKind::Late},
    {"duplicated", LiarKind::Duplicated},
    {"wrong-family", LiarKind::WrongFamily},
}};

constexpr std::array<Named<MasterLie>, 7> MasterLies = {{
    {"none", MasterLie::None},
    {"silent", MasterLie::Silent},
    {"truncated", MasterLie::Truncated},
    {"random", MasterLie::Random},
    {"wrong-header", MasterLie::WrongHeader},
    {"oversized", MasterLie::Oversized},
    {"duplicated", MasterLie::Duplicated},
}};

template<class Value, std::size_t count>
Value ValueNamed(std::string_view name, const std::array<Named<Value>, count>& table) {
    std::string known;
    for (const auto& [text, value] : table) {
        if (text == name)
            return value;
        known += ' ' + std::string(text);
    }
    throw BadSetting("unknown: " + std::string(name) + "; known are:" + known);
}

template<class Value, std::size_t count>
std::string_view NameOf(Value value, const std::array<Named<Value>, count>& table) {
    return std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.second == value; })
        ->first;
}

void CheckProtocol(const GameSettings& game) {
    if (game.family == Family::Doom3)
        Doom3Protocol(game.protocol);
    else
        ParseWhole(game.protocol, 0, game.family == Family::HalfLife ? 255 : 65535);
}

void CheckGame(const GameSettings& game) {
    constexpr int Doom3Clients = 32;
    ComplainingAs(game.shortName + ": protocol", [&] { CheckProtocol(game); });
    if (game.family == Family::Doom3 && game.slots.high > Doom3Clients)
        throw BadSetting(game.shortName + ": slots: the Doom 3 family has 32 at most");
    if (game.silent + game.closed + game.liars > 100)
        throw BadSetting(game.shortName + ": silent, closed and liars together are above 100 %");
    if (game.mods.empty() || game.maps.empty() || game.gameTypes.empty())
        throw BadSetting(game.shortName + ": a game needs a MOD, a map and a game type");
}

} // namespace

std::string_view FamilyName(Family family) {
    return NameOf(family, Families);
}
std::string_view LiarKindName(LiarKind kind) {
    return NameOf(kind, LiarKinds);
}

Family ParseFamily(std::string_view text) {
    return ValueNamed(text, Families);
}
MasterLie ParseMasterLie(std::string_view text) {
    return ValueNamed(text, MasterLies);
}

std::vector<LiarKind> ParseLiarKinds(std::string_view text) {
    std::vector<LiarKind> kinds;
    if (text == "all") {
        for (const auto& entry : LiarKinds)
            kinds.push_back(entry.second);
        return kinds;
    }
    for (const std::string& name : ParseList(text))
        kinds.push_back(ValueNamed(name, LiarKinds));
    return kinds;
}

std::uint32_t Doom3Protocol(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos)
        throw BadSetting("not MAJOR.MINOR: " + std::string(text));
    return static_cast<std::uint32_t>(ParseWhole(text.substr(0, point), 0, 65535)) << 16 |
           static_cast<std::uint32_t>(ParseWhole(text.substr(point + 1), 0, 65535));
}

GameSettings* FindGame(NetworkSettings& network, std::string_view shortName) {
    for (GameSettings& game : network.games)
        if (game.shortName == shortName)
            return &game;
    return nullptr;
}

void CheckSettings(const NetworkSettings& network) {
    if (network.games.empty())
        throw BadSetting("no games");
    if (network.masterPort + static_cast<int>(network.games.size()) - 1 > 65535)
        throw BadSetting("master-port: no room for a port of each game's master");
    std::set<std::string> names;
    for (const GameSettings& game : network.games) {
        CheckGame(game);
        if (!names.insert(game.shortName).second)
            throw BadSetting("two games named " + game.shortName);
    }
    for (const ListedServer& server : network.listed)
        if (!names.contains(server.game))
            throw BadSetting("a listed server of an unknown game: " + server.game);
}

} // namespace quarn::gamenet
