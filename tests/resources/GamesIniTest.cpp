// The definitions that come with Quarn; docs/games.md names the source of each.

#include "core/modStringHelper.h"
#include "tests/fakes/HeadlessBrowser.h"
#include "tests/resources/DefinitionsCheck.h"
#include "tests/resources/StrictMaster.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <utility>

namespace quarn {
namespace {

using namespace std::string_literals;
using gamenet::Family;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string ShippedDefinitions() {
    std::ifstream file(QUARN_SHIPPED_DEFINITIONS, std::ios::binary);
    EXPECT_TRUE(file) << QUARN_SHIPPED_DEFINITIONS;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The masters according to each game's own sources.
const StrictMaster Masters[] = {
    {"q3", Family::Quake3, 68, ""},
    {"oa", Family::Quake3, 71, ""},
    {"urt", Family::Quake3, 68, ""},
    {"rtcw", Family::Quake3, 60, ""},
    {"et", Family::Quake3, 84, ""},
    {"jk2", Family::Quake3, 16, ""},
    {"jka", Family::Quake3, 26, ""},
    {"trem", Family::Quake3, 69, ""},
    {"sg", Family::Quake3, 68, ""},
    {"wop", Family::Quake3, 71, "WorldofPadman"},
    {"doom3", Family::Doom3, 1 << 16 | 41, ""},
    {"sg12", Family::Quake3, 71, "smokinguns"},
    {"wop72", Family::Quake3, 72, "WorldofPadman"},
};

TEST(GamesIniTest, AreWellFormed) {
    EXPECT_THAT(DefinitionFaults(ShippedDefinitions()), IsEmpty());
}

TEST(GamesIniTest, EveryGameHasAMasterInThisTest) {
    HeadlessBrowser browser;
    browser.fake.files.Put("C:\\Quarn\\Games.ini", ShippedDefinitions());
    ASSERT_TRUE(browser.Start());
    ASSERT_EQ(browser.program.Games.HighestIndex(), std::ssize(Masters));
    for (std::int32_t number = 1; number <= browser.program.Games.HighestIndex(); ++number)
        EXPECT_EQ(browser.program.Games[number].GameShort, Masters[number - 1].gameShort);
}

class GamesIniGameTest : public ::testing::TestWithParam<StrictMaster> {};

TEST_P(GamesIniGameTest, GetsItsListFromAMasterOfItsKind) {
    HeadlessBrowser browser;
    browser.fake.files.Put("C:\\Quarn\\Games.ini", ShippedDefinitions());
    for (int number = 1; number <= std::ssize(Masters); ++number)
        browser.Set("Games", "Visible" + std::to_string(number), 1);
    ASSERT_TRUE(browser.Start());
    browser.ClickNode(GetParam().gameShort);
    ASSERT_EQ(browser.program.CurrentGame, GetParam().gameShort);
    for (std::int32_t number = 1; number <= browser.program.Games.HighestIndex(); ++number)
        browser.fake.hosts.addresses[browser.program.Games[number].MasterAddress] = "127.0.0.1";

    browser.fake.prompts.yesNoAnswers.push_back(true);
    browser.Form().tbMain_ButtonClick("querymaster");
    browser.fake.events.RunFor(100);
    ASSERT_THAT(browser.sckMaster.sent, SizeIs(1));

    const std::vector<std::string> listed = {"127.20.0.1:27960", "127.20.0.2:1", "127.200.255.254:65535"};
    std::vector<gamenet::Endpoint> servers;
    for (const std::string& server : listed)
        servers.push_back(gamenet::ParseLoopbackEndpoint(server));
    const std::vector<std::string> reply = GetParam().Answer(browser.sckMaster.sent[0].bytes, servers);
    ASSERT_THAT(reply, SizeIs(1)) << "the master does not understand " << browser.sckMaster.sent[0].bytes;
    browser.sckMaster.ReplyIn(0, reply[0]);
    browser.fake.events.RunFor(100);
    EXPECT_EQ(browser.Column(AddressColumn), listed);
}

INSTANTIATE_TEST_SUITE_P(Shipped, GamesIniGameTest, ::testing::ValuesIn(Masters),
                         [](const auto& game) { return game.param.gameShort; });

TEST(GamesIniStrictMasterTest, RefusesRequestsForOtherServers) {
    const StrictMaster quake = {"q3", Family::Quake3, 68, ""};
    const StrictMaster named = {"wop", Family::Quake3, 71, "WorldofPadman"};
    const StrictMaster doom = {"doom3", Family::Doom3, 1 << 16 | 41, ""};
    const StrictMaster crowbar = {"hl", Family::HalfLife, 0, ""};
    const std::string mark = "\xFF\xFF\xFF\xFF";

    EXPECT_TRUE(quake.Understands(mark + "getservers 68 empty full"));
    EXPECT_TRUE(named.Understands(mark + "getservers WorldofPadman 71 full empty"));
    EXPECT_TRUE(doom.Understands("\xFF\xFFgetServers\0\0\0\0\0\0\0"s));
    EXPECT_TRUE(doom.Understands("\xFF\xFFgetServers\0\x29\0\1\0\0\0"s));

    for (const std::string& request :
         {""s, mark, "getservers 68 full empty"s, "\xFF\xFFgetservers 68 full empty"s, mark + "getservers",
          mark + "getservers 68", mark + "getservers 68 full", mark + "getservers 68 full full",
          mark + "getservers 67 full empty", mark + "getservers 680 full empty",
          mark + "getservers  68 full empty", mark + "getservers 68 full empty\n",
          mark + "getservers Quake3Arena 68 full empty", mark + "getstatus"})
        EXPECT_FALSE(quake.Understands(request)) << request;
    for (const std::string& request :
         {mark + "getservers 71 full empty", mark + "getservers worldofpadman 71 full empty",
          mark + "getservers 71 WorldofPadman full empty"})
        EXPECT_FALSE(named.Understands(request)) << request;
    for (const std::string& request :
         {"\xFF\xFFgetServers"s, "\xFF\xFFgetServers\0"s, "\xFF\xFFgetServers\0\0\0\0\0\0"s,
          "\xFF\xFFgetServers\0\0\0\0\0\0\0\0"s, "\xFF\xFFgetServers\0\x28\0\1\0\0\0"s,
          "\xFF\xFFgetservers\0\0\0\0\0\0\0"s, mark + "getServers\0\0\0\0\0\0\0"s})
        EXPECT_FALSE(doom.Understands(request)) << request;
    EXPECT_FALSE(crowbar.Understands("1\xFF"
                                     "0.0.0.0:0\0\0"s));
}

const std::string Good =
    "; comment\r\n[General]\r\nIniVer=1000001\r\nIniDesc=Games\r\nGameNum=1\r\nMODNum=1\r\n"
    "\r\n[Game1]\r\nDescription=A game\r\nExeName=game.exe\r\nGameShort=game1\r\nEngine=q3\r\n"
    "MasterAddress=master.example.org\r\nMasterPort=27950\r\n"
    "MasterPacket=$255getservers 68\r\nMasterResponse=$255getserversResponse\r\n"
    "[MOD1]\r\nBasedGame=game1\r\nDescription=A$32MOD\r\nGameName=mod\r\nGameVersion=\r\n";

TEST(GamesIniFaultsTest, FindsNoFaultInAGoodFile) {
    EXPECT_THAT(DefinitionFaults(Good), IsEmpty());
}

TEST(GamesIniFaultsTest, FindsEachFault) {
    const struct {
        std::string what;
        std::string with;
        std::string fault;
    } cases[] = {
        {"GameNum=1", "GameNum=2", "GameNum does not count"},
        {"GameNum=1", "GameNum=0", "GameNum does not count"},
        {"MODNum=1", "MODNum=one", "MODNum is no number"},
        {"MODNum=1", "MODNum=", "MODNum is no number"},
        {"IniVer=1000001\r\n", "", "General: does not have exactly its keys"},
        {"[Game1]", "[Game2]", "Game1: is missing"},
        {"[MOD1]", "[Game1]", "Game1: stands there twice"},
        {"[MOD1]", "[Mod1]", "MOD1: is missing"},
        {"Engine=q3", "Engine=Q3", "Engine is unknown"},
        {"Engine=q3", "Engine=q3\r\nEngine=d3", "Engine stands there twice"},
        {"Engine=q3\r\n", "", "Game1: does not have exactly its keys"},
        {"Engine=q3", "Engine", "neither section nor key: Engine"},
        {"Description=A game", "Description=", "has no description"},
        {"Description=A game", "Description=A game ", "Description has blanks around it"},
        {"Description=A game", "Description=Caf\xE9", "characters beside those of ASCII"},
        {"Description=A game", "Description=" + std::string(255, 'a'), "Description is too long"},
        {"game.exe", "bin\\game.exe", "ExeName is no file name"},
        {"game.exe", "game", "ExeName is no file name"},
        {"GameShort=game1", "GameShort=", "small letters and digits"},
        {"GameShort=game1", "GameShort=Game", "small letters and digits"},
        {"GameShort=game1", "GameShort=a/b", "small letters and digits"},
        {"GameShort=game1", "GameShort=filters", "key of another node"},
        {"GameShort=game1", "GameShort=fav1", "key of another node"},
        {"master.example.org", "localhost", "no host name"},
        {"master.example.org", "master.example.org:27950", "no host name"},
        {"MasterPort=27950", "MasterPort=0", "no port"},
        {"MasterPort=27950", "MasterPort=65536", "no port"},
        {"MasterPort=27950", "MasterPort=27950 ", "MasterPort is no number"},
        {"MasterPacket=$255", "MasterPacket=$25", "unknown escape"},
        {"MasterPacket=$255getservers 68", "MasterPacket=", "has no request"},
        {"MasterResponse=$255getserversResponse", "MasterResponse=", "has no reply header"},
        {"BasedGame=game1", "BasedGame=game", "no game's short name"},
        {"GameName=mod", "GameName=", "no name that a server could report"},
        {"A$32MOD", "A$MOD", "unknown escape"},
        {"GameVersion=\r\n", "GameVersion=\r\nExtra=1\r\n", "MOD1: does not have exactly its keys"},
    };
    for (const auto& c : cases) {
        std::string text = Good;
        ReplaceAll(text, c.what, c.with);
        ASSERT_NE(text, Good) << c.what;
        EXPECT_THAT(DefinitionFaults(text), ::testing::Contains(HasSubstr(c.fault))) << c.with;
    }
}

TEST(GamesIniFaultsTest, FindsDuplicates) {
    std::string text = Good +
                       "[Game2]\r\nDescription=Another\r\nExeName=a.exe\r\nGameShort=game1\r\nEngine=d3\r\n"
                       "MasterAddress=m.example.org\r\nMasterPort=1\r\nMasterPacket=x\r\nMasterResponse=y\r\n"
                       "[MOD2]\r\nBasedGame=game1\r\nDescription=B\r\nGameName=mod\r\nGameVersion=\r\n";
    ReplaceAll(text, "GameNum=1", "GameNum=2");
    ReplaceAll(text, "MODNum=1", "MODNum=2");
    EXPECT_THAT(DefinitionFaults(text),
                ElementsAre("Game2: GameShort is another game's", "MOD2: is there twice"));
}

} // namespace
} // namespace quarn
