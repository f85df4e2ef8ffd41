#include "tools/gamenet/Vocabulary.h"

#include "tools/gamenet/Text.h"

#include <array>
#include <string_view>

namespace quarn::gamenet {
namespace {

constexpr std::array<std::string_view, 20> owners = {
    "Kellerkinder",   "The Bunker",  "Old Men's Club", "Nordlicht",    "Frag House",
    "Lanparty Wesel", "ACME",        "Velvet Hammer",  "Ostsee",       "Rail Academy",
    "Grumpy Cat",     "M\xFCnchen",  "Team Gecko",     "Caf\xE9 Noir", "Rusty Nail",
    "Polar Bears",    "42nd Street", "Dead Pixels",    "Blue Monkeys", "Sunday Gamers"};

constexpr std::array<std::string_view, 18> topics = {
    "FFA",         "CTF only",     "Public",      "Instagib",    "All Maps",  "Beginners welcome",
    "24/7",        "Clan War",     "Training",    "Duel",        "Team Play", "No Bots",
    "Vote Server", "High Ping OK", "Custom Maps", "Low Gravity", "Sniper",    "Hardcore"};

constexpr std::array<std::string_view, 12> tails = {
    "", "", "", " #1", " #2", " [EU]", " [US]", " (stats)", " - dedicated", " 125fps", " | ladder", " v2.1"};

constexpr std::array<std::string_view, 32> nicks = {
    "Wombat", "frostbyte", "Lumi",      "Karl-Heinz",   "zero",      "Grizzle",   "NoobSlayer",
    "mira",   "Don Pedro", "xXviperXx", "Bj\xF6rn",     "Quiet Kid", "sp00n",     "Tante Emma",
    "Otter",  "JustMe",    "Rocketeer", "lag",          "ben",       "Sarge",     "Visor",
    "Major",  "k1tten",    "Hannibal",  "Ada",          "turbo",     "Schnitzel", "pi",
    "Doc",    "Biene",     "red.five",  "UnnamedPlayer"};

constexpr std::array<std::string_view, 10> clans = {"",     "",     "",        "",     "",
                                                    "[KK]", "=42=", "<gecko>", "oMc.", "|AW|"};

bool hasColours(Family family) {
    return family != Family::HalfLife;
}

// Half of the words get a colour, sometimes the long form of three bytes in hexadecimal.
std::string coloured(std::string_view word, Family family, Random& random) {
    if (!hasColours(family) || word.empty() || random.chance(50))
        return std::string(word);
    if (family == Family::Quake3 && random.chance(10))
        return "^xFF8000" + std::string(word);
    return '^' + std::to_string(random.between(1, 7)) + std::string(word);
}

std::string number(int value) {
    return std::to_string(value);
}

std::string flag(bool value) {
    return value ? "1" : "0";
}

template<std::size_t count>
std::string oneOf(const std::array<std::string_view, count>& words, Random& random) {
    return std::string(random.oneOf(words));
}

constexpr std::array<std::string_view, 5> timeLimits = {"10", "15", "20", "30", "0"};
constexpr std::array<std::string_view, 5> scoreLimits = {"8", "20", "30", "50", "0"};

Variables quake3Variables(const GameSettings& game, const ServerStatus& status, Random& random) {
    Variables variables = {
        {"sv_allowDownload", flag(random.chance(60))},
        {"g_maxGameClients", "0"},
        {"capturelimit", oneOf(scoreLimits, random)},
        {"sv_maxclients", number(status.maxPlayers)},
        {"timelimit", oneOf(timeLimits, random)},
        {"fraglimit", oneOf(scoreLimits, random)},
        {"dmflags", random.chance(80) ? "0" : "8"},
        {"sv_hostname", status.name},
        {"sv_maxRate", random.chance(50) ? "25000" : "0"},
        {"sv_minPing", "0"},
        {"sv_maxPing", random.chance(80) ? "0" : "250"},
        {"sv_floodProtect", "1"},
        {"version", game.version},
        {"g_gametype", random.oneOf(game.gameTypes)},
        {"protocol", status.protocol},
        {"mapname", status.map},
        {"sv_privateClients", flag(random.chance(15))},
        {"gamename", status.mod},
        {"g_needpass", flag(status.locked)},
    };
    if (random.chance(40))
        variables.insert(variables.begin(), {" Administrator", playerName(Family::HalfLife, random)});
    if (random.chance(30))
        variables.emplace_back("bot_minplayers", number(random.between(2, 6)));
    return variables;
}

// Ends with a variable that no browser gives a column of its own and that has a value: a reader that
// takes the values of such variables for keys finds the end of the pairs only then, whether players
// follow or not.
Variables doom3Variables(const GameSettings& game, const ServerStatus& status, Random& random) {
    return {
        {"si_version", game.version},
        {"si_name", status.name},
        {"si_gameType", random.oneOf(game.gameTypes)},
        {"si_map", status.map},
        {"si_maxPlayers", number(status.maxPlayers)},
        {"si_fragLimit", oneOf(scoreLimits, random)},
        {"si_timeLimit", oneOf(timeLimits, random)},
        {"si_teamDamage", flag(random.chance(20))},
        {"si_warmup", flag(random.chance(30))},
        {"si_usePass", flag(status.locked)},
        {"si_pure", flag(random.chance(80))},
        {"si_spectators", "1"},
        {"fs_game", status.mod == game.mods.front().name ? "" : lowerCase(status.mod)},
        {"fs_game_base", ""},
        {"gamename", status.mod},
        {"net_serverDedicated", "1"},
    };
}

Variables halfLifeVariables(const GameSettings& game, const ServerStatus&, Random& random) {
    return {
        {"mp_timelimit", oneOf(timeLimits, random)},
        {"mp_fraglimit", oneOf(scoreLimits, random)},
        {"mp_friendlyfire", flag(random.chance(40))},
        {"mp_teamplay", random.oneOf(game.gameTypes)},
        {"mp_falldamage", flag(random.chance(50))},
        {"mp_footsteps", "1"},
        {"mp_flashlight", flag(random.chance(70))},
        {"sv_gravity", random.chance(85) ? "800" : "200"},
        {"sv_maxspeed", "320"},
        {"sv_maxrate", random.chance(50) ? "20000" : "0"},
        {"sv_cheats", "0"},
        {"sv_password", "0"},
        {"sv_contact", lowerCase(oneOf(clans, random)) + "admin@example.org"},
        {"allow_spectators", "1"},
    };
}

} // namespace

std::string serverName(Family family, Random& random) {
    std::string name = coloured(random.oneOf(owners), family, random);
    name += ' ' + coloured(random.oneOf(topics), family, random);
    return name + oneOf(tails, random);
}

std::string playerName(Family family, Random& random) {
    const std::string clan = coloured(random.oneOf(clans), family, random);
    return clan + coloured(random.oneOf(nicks), family, random);
}

Variables serverVariables(const GameSettings& game, const ServerStatus& status, Random& random) {
    using Maker = Variables (*)(const GameSettings&, const ServerStatus&, Random&);
    constexpr std::array<Maker, 3> makers = {quake3Variables, doom3Variables, halfLifeVariables};
    return makers[static_cast<std::size_t>(game.family)](game, status, random);
}

} // namespace quarn::gamenet
