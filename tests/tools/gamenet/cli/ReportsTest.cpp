#include "tools/gamenet/cli/Reports.h"

#include "tools/gamenet/world/DemoNetwork.h"
#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace quarn::gamenet {
namespace {

NetworkSettings SmallNetwork() {
    NetworkSettings network = DemoNetwork();
    network.games.resize(2);
    network.games[0].servers = 0;
    network.games[0].mods = {{"osp", " Orange "}};
    network.games[1].servers = 1;
    network.games[1].mods = {{"rat", "Ratmod"}, {"oax", "OAX"}};
    network.countries = {"DE", "US"};
    return network;
}

TEST(Reports, GamesIniInFull) {
    const std::string ini = GamesIni(SmallNetwork(), {{0x7F000001, 27950}, {0x7F000002, 1}});
    EXPECT_EQ(ini,
              "[General]\r\nIniVer=1000001\r\nIniDesc=Emulated games on the loopback network\r\n"
              "GameNum=2\r\nMODNum=3\r\n"
              "\r\n[Game1]\r\nDescription=Quake III Arena\r\nExeName=quake3.exe\r\nGameShort=q3a\r\n"
              "Engine=q3\r\nMasterAddress=127.0.0.1\r\nMasterPort=27950\r\n"
              "MasterPacket=$255$255$255$255getservers 68 full empty\r\n"
              "MasterResponse=$255$255$255$255getserversResponse\r\n"
              "\r\n[Game2]\r\nDescription=OpenArena\r\nExeName=openarena.exe\r\nGameShort=oa\r\n"
              "Engine=q3\r\nMasterAddress=127.0.0.2\r\nMasterPort=1\r\n"
              "MasterPacket=$255$255$255$255getservers 71 full empty\r\n"
              "MasterResponse=$255$255$255$255getserversResponse\r\n"
              "\r\n[MOD1]\r\nBasedGame=q3a\r\nDescription=$32Orange$32\r\nGameName=osp\r\nGameVersion=\r\n"
              "\r\n[MOD2]\r\nBasedGame=oa\r\nDescription=Ratmod\r\nGameName=rat\r\nGameVersion=\r\n"
              "\r\n[MOD3]\r\nBasedGame=oa\r\nDescription=OAX\r\nGameName=oax\r\nGameVersion=\r\n");
}

TEST(Reports, GamesIniRefusesWhatItsReadersWouldCut) {
    NetworkSettings network = SmallNetwork();
    network.games[0].description = std::string(254, 'x');
    EXPECT_NO_THROW(GamesIni(network, {{}, {}}));
    network.games[0].description += 'x';
    EXPECT_THROW(GamesIni(network, {{}, {}}), BadSetting);
}

TEST(Reports, CountryFileHasItsCountFirst) {
    EXPECT_EQ(CountryReport(CreateWorld(SmallNetwork())),
              "2\r\n2131361792;2139226111;DE\r\n2139226112;2147090431;US\r\n");
}

TEST(Reports, TruthIsOneLineAServer) {
    NetworkSettings network = SmallNetwork();
    network.listed = {{"q3a", {0x7F000003, 27960}}};
    World world = CreateWorld(network);
    GameServer& server = world.servers.at(0);
    server.country = "DE";
    server.latency = 12;
    server.status.endpoint = {0x7F0A0B0C, 27960};
    server.status.name = "^1Tab\t|^7 Name";
    server.status.map = "map";
    server.status.mod = "rat";
    server.status.maxPlayers = 16;
    server.status.locked = true;
    server.status.players = {{"^2A|", 1, 2, 3}, {"B", 1, 2, 3}};
    EXPECT_EQ(
        TruthReport(network, world),
        "game\tfamily\taddress\tport\tname\tmap\tmod\tplayers\tmax\tlocked\tcountry\tkind\tlatency\t"
        "player_names\n"
        "oa\tq3\t127.10.11.12\t27960\tTab\\x09\\x7C Name\tmap\trat\t2\t16\t1\tDE\thonest\t12\tA\\x7C|B\n"
        "q3a\t\t127.0.0.3\t27960\t\t\t\t\t\t\t\tlisted\t\t\n");
}

TEST(Reports, FilesThatCannotBeWrittenAreErrors) {
    EXPECT_THROW(WriteWhole("/nonexistent/folder/file", "x"), std::runtime_error);
    EXPECT_THROW(WriteWhole("/", "x"), std::runtime_error);
}

} // namespace
} // namespace quarn::gamenet
