#include "tools/gamenet/world/Vocabulary.h"

#include "tools/gamenet/world/Text.h"

#include <array>
#include <string_view>

namespace quarn::gamenet {
namespace {

constexpr std::array<std::string_view, 20> Owners = {
    "Kellerkinder",   "The Bunker",  "Old Men's Club", "Nordlicht",    "Frag House",
    "Lanparty Wesel", "ACME",        "Velvet Hammer",  "Ostsee",       "Rail Academy",
    "Grumpy Cat",     "M\xFCnchen",  "Team Gecko",     "Caf\xE9 Noir", "Rusty Nail",
    "Polar Bears",    "42nd Street", "Dead Pixels",    "Blue Monkeys", "Sunday Gamers"};

constexpr std::array<std::string_view, 18> Topics = {
    "FFA",         "CTF only",     "Public",      "Instagib",    "All Maps",  "Beginners welcome",
    "24/7",        "Clan War",     "Training",    "Duel",        "Team Play", "No Bots",
    "Vote Server", "High Ping OK", "Custom Maps", "Low Gravity", "Sniper",    "Hardcore"};

constexpr std::array<std::string_view, 12> Tails = {
    "", "", "", " #1", " #2", " [EU]", " [US]", " (stats)", " - dedicated", " 125fps", " | ladder", " v2.1"};

constexpr std::array<std::string_view, 32> Nicks = {
    "Wombat", "frostbyte", "Lumi",      "Karl-Heinz",   "zero",      "Grizzle",   "NoobSlayer",
    "mira",   "Don Pedro", "xXviperXx", "Bj\xF6rn",     "Quiet Kid", "sp00n",     "Tante Emma",
    "Otter",  "JustMe",    "Rocketeer", "lag",          "ben",       "Sarge",     "Visor",
    "Major",  "k1tten",    "Hannibal",  "Ada",          "turbo",     "Schnitzel", "pi",
    "Doc",    "Biene",     "red.five",  "UnnamedPlayer"};

constexpr std::array<std::string_view, 10> Clans = {"",     "",     "",        "",     "",
                                                    "[KK]", "=42=", "<gecko>", "oMc.", "|AW|"};

bool HasColours(Family family) {
    return family != Family::HalfLife;
}

// Half of the words get a colour, sometimes the long form of three bytes in hexadecimal.
std::string Coloured(std::string_view word, Family family, Random& random) {
    if (!HasColours(family) || word.empty() || random.Chance(50))
        return std::string(word);
    if (family == Family::Quake3 && random.Chance(10))
        return "^xFF8000" + std::string(word);
    return '^' + std::to_string(random.Between(1, 7)) + std::string(word);
}

std::string Number(int value) {
    return std::to_string(value);
}

std::string Flag(bool value) {
    return value ? "1" : "0";
}

template<std::size_t count>
std::string OneOf(const std::array<std::string_view, count>& words, Random& random) {
    return std::string(random.OneOf(words));
}

constexpr std::array<std::string_view, 5> TimeLimits = {"10", "15", "20", "30", "0"};
constexpr std::array<std::string_view, 5> ScoreLimits = {"8", "20", "30", "50", "0"};

Variables Quake3Variables(const GameSettings& game, const ServerStatus& status, Random& random) {
    Variables variables = {
        {"sv_allowDownload", Flag(random.Chance(60))},
        {"g_maxGameClients", "0"},
        {"capturelimit", OneOf(ScoreLimits, random)},
        {"sv_maxclients", Number(status.maxPlayers)},
        {"timelimit", OneOf(TimeLimits, random)},
        {"fraglimit", OneOf(ScoreLimits, random)},
        {"dmflags", random.Chance(80) ? "0" : "8"},
        {"sv_hostname", status.name},
        {"sv_maxRate", random.Chance(50) ? "25000" : "0"},
        {"sv_minPing", "0"},
        {"sv_maxPing", random.Chance(80) ? "0" : "250"},
        {"sv_floodProtect", "1"},
        {"version", game.version},
        {"g_gametype", random.OneOf(game.gameTypes)},
        {"protocol", status.protocol},
        {"mapname", status.map},
        {"sv_privateClients", Flag(random.Chance(15))},
        {"gamename", status.mod},
        {"g_needpass", Flag(status.locked)},
    };
    if (random.Chance(40))
        variables.insert(variables.begin(), {" Administrator", PlayerName(Family::HalfLife, random)});
    if (random.Chance(30))
        variables.emplace_back("bot_minplayers", Number(random.Between(2, 6)));
    return variables;
}

// Ends with a variable that has a value but no column in any browser. A reader that takes the values of such
// variables for keys finds the end of the pairs only in this case, with or without players.
Variables Doom3Variables(const GameSettings& game, const ServerStatus& status, Random& random) {
    return {
        {"si_version", game.version},
        {"si_name", status.name},
        {"si_gameType", random.OneOf(game.gameTypes)},
        {"si_map", status.map},
        {"si_maxPlayers", Number(status.maxPlayers)},
        {"si_fragLimit", OneOf(ScoreLimits, random)},
        {"si_timeLimit", OneOf(TimeLimits, random)},
        {"si_teamDamage", Flag(random.Chance(20))},
        {"si_warmup", Flag(random.Chance(30))},
        {"si_usePass", Flag(status.locked)},
        {"si_pure", Flag(random.Chance(80))},
        {"si_spectators", "1"},
        {"fs_game", status.mod == game.mods.front().name ? "" : LowerCase(status.mod)},
        {"fs_game_base", ""},
        {"gamename", status.mod},
        {"net_serverDedicated", "1"},
    };
}

Variables HalfLifeVariables(const GameSettings& game, const ServerStatus&, Random& random) {
    return {
        {"mp_timelimit", OneOf(TimeLimits, random)},
        {"mp_fraglimit", OneOf(ScoreLimits, random)},
        {"mp_friendlyfire", Flag(random.Chance(40))},
        {"mp_teamplay", random.OneOf(game.gameTypes)},
        {"mp_falldamage", Flag(random.Chance(50))},
        {"mp_footsteps", "1"},
        {"mp_flashlight", Flag(random.Chance(70))},
        {"sv_gravity", random.Chance(85) ? "800" : "200"},
        {"sv_maxspeed", "320"},
        {"sv_maxrate", random.Chance(50) ? "20000" : "0"},
        {"sv_cheats", "0"},
        {"sv_password", "0"},
        {"sv_contact", LowerCase(OneOf(Clans, random)) + "admin@example.org"},
        {"allow_spectators", "1"},
    };
}

} // namespace

std::string ServerName(Family family, Random& random) {
    std::string name = Coloured(random.OneOf(Owners), family, random);
    name += ' ' + Coloured(random.OneOf(Topics), family, random);
    return name + OneOf(Tails, random);
}

std::string PlayerName(Family family, Random& random) {
    const std::string clan = Coloured(random.OneOf(Clans), family, random);
    return clan + Coloured(random.OneOf(Nicks), family, random);
}

Variables ServerVariables(const GameSettings& game, const ServerStatus& status, Random& random) {
    using Maker = Variables (*)(const GameSettings&, const ServerStatus&, Random&);
    constexpr std::array<Maker, 3> Makers = {Quake3Variables, Doom3Variables, HalfLifeVariables};
    return Makers[static_cast<std::size_t>(game.family)](game, status, random);
}

} // namespace quarn::gamenet
