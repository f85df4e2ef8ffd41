#include "tools/gamenet/world/DemoNetwork.h"

#include <utility>

namespace quarn::gamenet {
namespace {

GameSettings Quake3() {
    GameSettings game;
    game.shortName = "q3a";
    game.family = Family::Quake3;
    game.description = "Quake III Arena";
    game.exeName = "quake3.exe";
    game.version = "Q3 1.32c linux-i386 May  8 2006";
    game.protocol = "68";
    game.servers = 12;
    game.port = 27960;
    game.mods = {{"baseq3", "Quake III Arena"},       {"missionpack", "Team Arena"},
                 {"osp", "Orange Smoothie"},          {"cpma", "Challenge ProMode"},
                 {"excessiveplus", "Excessive Plus"}, {"threewave", "Threewave CTF"}};
    game.maps = {"q3dm1",  "q3dm6",  "q3dm7", "q3dm17", "q3tourney2", "q3tourney4",   "q3ctf1",
                 "q3ctf4", "pro-q3", "cpm1a", "cpm22",  "hub3aeroq3", "ztn3tourney1", "mpterra2"};
    game.gameTypes = {"0", "1", "3", "4"};
    return game;
}

GameSettings OpenArena() {
    GameSettings game = Quake3();
    game.shortName = "oa";
    game.description = "OpenArena";
    game.exeName = "openarena.exe";
    game.version = "ioq3+oa 1.36 linux-x86_64 Dec  5 2021";
    game.protocol = "71";
    game.servers = 8;
    game.mods = {{"baseoa", "OpenArena"}, {"missionpack", "Missionpack"}, {"rat", "Ratmod"}, {"oax", "OAX"}};
    game.maps = {"oa_dm1", "oa_dm4",    "oa_ctf4ish", "oa_bases5",     "aggressor",
                 "kaos2",  "wrackdm17", "oasago2",    "am_galmevish2", "ps37ctf"};
    return game;
}

GameSettings EnemyTerritory() {
    GameSettings game = Quake3();
    game.shortName = "et";
    game.description = "Wolfenstein: Enemy Territory";
    game.exeName = "et.exe";
    game.version = "ET 2.60b linux-i386 May  8 2006";
    game.protocol = "84";
    game.servers = 6;
    game.slots = {16, 64};
    game.mods = {{"etmain", "Enemy Territory"},
                 {"etpro", "ET Pro"},
                 {"jaymod", "Jaymod"},
                 {"noquarter", "No Quarter"},
                 {"legacy", "Legacy"}};
    game.maps = {"battery", "fueldump", "goldrush",  "oasis",       "radar",
                 "railgun", "supply",   "adlernest", "braundorf_b4"};
    game.gameTypes = {"2", "3", "4", "6"};
    return game;
}

GameSettings JediAcademy() {
    GameSettings game = Quake3();
    game.shortName = "jka";
    game.description = "Jedi Knight: Jedi Academy";
    game.exeName = "jamp.exe";
    game.version = "JAmp: v1.0.1.1 linux-i386 Nov 10 2003";
    game.protocol = "26";
    game.servers = 4;
    game.port = 29070;
    game.mods = {{"basejka", "Jedi Academy"},
                 {"JA+ Mod v2.4 B7", "JA+"},
                 {"MBII", "Movie Battles II"},
                 {"lugormod", "Lugormod"}};
    game.maps = {"mp/ffa1",  "mp/ffa3", "mp/ffa5",       "mp/duel1",
                 "mp/duel6", "mp/ctf2", "mp/siege_hoth", "academy4"};
    game.gameTypes = {"0", "3", "6", "7", "8"};
    return game;
}

GameSettings Doom3() {
    GameSettings game;
    game.shortName = "d3";
    game.family = Family::Doom3;
    game.description = "Doom 3";
    game.exeName = "Doom3.exe";
    game.version = "DOOM 1.3.1.1304 linux-x86 Jan 16 2007 21:59:01";
    game.protocol = "1.41";
    game.servers = 10;
    game.port = 27666;
    game.slots = {4, 16};
    game.mods = {{"baseDOOM-1", "Doom 3"}, {"cdoom", "Classic Doom"}, {"tfphobos", "Phobos"}};
    game.maps = {"game/mp/d3dm1", "game/mp/d3dm2", "game/mp/d3dm3", "game/mp/d3dm4", "game/mp/d3dm5"};
    game.gameTypes = {"Deathmatch", "Team DM", "Tourney", "Last Man"};
    return game;
}

GameSettings ResurrectionOfEvil() {
    GameSettings game = Doom3();
    game.shortName = "d3xp";
    game.description = "Doom 3: Resurrection of Evil";
    game.servers = 5;
    game.port = 27667;
    game.mods = {{"d3xp", "Resurrection of Evil"}, {"d3ctf", "Capture the Flag"}};
    game.maps = {"game/mp/d3xpdm1", "game/mp/d3xpdm2", "game/mp/d3xpdm3", "game/mp/d3ctf1", "game/mp/d3ctf3"};
    game.gameTypes = {"Deathmatch", "Team DM", "CTF"};
    return game;
}

GameSettings HalfLife() {
    GameSettings game;
    game.shortName = "hl";
    game.family = Family::HalfLife;
    game.description = "Half-Life";
    game.exeName = "hl.exe";
    game.version = "1.1.1.0/46";
    game.protocol = "46";
    game.servers = 8;
    game.port = 27015;
    game.mods = {{"valve", "Half-Life"},
                 {"tfc", "Team Fortress Classic"},
                 {"dmc", "Deathmatch Classic"},
                 {"gearbox", "Opposing Force"}};
    game.maps = {"crossfire", "bounce",     "boot_camp", "datacore", "stalkyard",
                 "snark_pit", "subtransit", "2fort",     "well",     "rock2"};
    game.gameTypes = {"0", "1"};
    return game;
}

GameSettings CounterStrike() {
    GameSettings game = HalfLife();
    game.shortName = "cs";
    game.description = "Counter-Strike";
    game.servers = 7;
    game.port = 27016;
    game.mods = {{"cstrike", "Counter-Strike"}, {"czero", "Condition Zero"}};
    game.maps = {"de_dust",  "de_dust2", "de_aztec",  "de_inferno", "de_nuke",
                 "de_train", "cs_italy", "cs_office", "cs_assault", "fy_iceworld"};
    return game;
}

} // namespace

NetworkSettings DemoNetwork() {
    NetworkSettings network;
    network.countries = {"DE", "US", "FR", "GB", "NL", "SE", "FI", "PL", "CZ", "AT", "CH", "IT",
                         "ES", "DK", "NO", "RU", "BR", "CA", "AU", "JP", "KR", "HU", "BE", "PT"};
    network.games = {Quake3(), OpenArena(),          EnemyTerritory(), JediAcademy(),
                     Doom3(),  ResurrectionOfEvil(), HalfLife(),       CounterStrike()};
    for (GameSettings& game : network.games)
        game.liarKinds = ParseLiarKinds("all");
    return network;
}

GameSettings PlainGame(Family family, std::string shortName) {
    GameSettings game = family == Family::Quake3 ? Quake3() : family == Family::Doom3 ? Doom3() : HalfLife();
    game.shortName = shortName;
    game.description = std::move(shortName);
    game.servers = 0;
    game.liarKinds = ParseLiarKinds("all");
    return game;
}

} // namespace quarn::gamenet
