#include "core/modMain.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/WatchedProfiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

TEST(modMainDefinitionsEscapesTest, ReplacesItsEscapes) {
    const struct {
        std::string text;
        std::string decoded;
    } cases[] = {
        {"$255", "\xFF"},
        {"$32", " "},
        {"$10", "\n"},
        {"$1", "\1"},
        {"$0", "\0"s},
        {"$255$255$255$255getservers", "\xFF\xFF\xFF\xFFgetservers"},
        {"a$32b$32c", "a b c"},
        {"$1$0", "\1\0"s},
        {"$10$1$10", "\n\1\n"},
        {"$100", "\n0"},
        {"$2550", "\xFF"
                  "0"},
        {"$00", "\0"
                "0"s},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(DecodeIniEscapes(text), c.decoded) << c.text;
        EXPECT_EQ(text, c.decoded) << c.text;
    }
}

TEST(modMainDefinitionsEscapesTest, KeepsAllOtherText) {
    for (const std::string original : {"", "$", "$$", "$2", "$25", "$256", "$3", "$33", "$4", "$9", "$-1",
                                       "$ 1", "$x", "255", "32$", "\\$", "%20", "\\n", "$\xFF"}) {
        std::string text = original;
        EXPECT_EQ(DecodeIniEscapes(text), original);
        EXPECT_EQ(text, original);
    }
}

TEST(modMainDefinitionsEscapesTest, DecodesAfterALoneDollarSign) {
    std::string text = "$$32$$1$2$0";
    EXPECT_EQ(DecodeIniEscapes(text), "$ $\1$2\0"s);
}

class modMainDefinitionsTest : public ProgramTest {
  protected:
    void Load(const std::string& definitions) {
        fake.files.Put("C:\\Quarn\\Games.ini", definitions);
        LoadGamesIniGeneral(program, fake.desktop);
        LoadGamesIniSections(program, fake.desktop);
    }
};

TEST_F(modMainDefinitionsTest, ReadsAWholeFile) {
    Load(
        "[General]\r\nIniVer=1020050\r\nIniDesc=My games\r\nGameNum=1\r\nMODNum=2\r\n"
        "[Game1]\r\nDescription=Arena\r\nExeName=arena.exe\r\nGameShort=ar\r\nEngine=q3\r\n"
        "MasterAddress=master.example\r\nMasterPort=27950\r\nMasterPacket=$255$255$255$255getservers$3268\r\n"
        "MasterResponse=$255$255$255$255answer\r\n"
        "[MOD1]\r\nBasedGame=ar\r\nDescription=First$32mod\r\nGameName=$32one\r\nGameVersion=1.0$0\r\n"
        "[MOD2]\r\nBasedGame=none\r\nDescription=Second\r\n");

    EXPECT_EQ(program.IniVer, 1020050);
    EXPECT_EQ(program.IniDesc, "My games");
    ASSERT_EQ(program.GameNum, 1);
    ASSERT_EQ(program.Games.HighestIndex(), 1);
    const GameDefinition& game = program.Games[1];
    EXPECT_EQ(game.Description, "Arena");
    EXPECT_EQ(game.ExeName, "arena.exe");
    EXPECT_EQ(game.GameShort, "ar");
    EXPECT_EQ(game.Engine, "q3");
    EXPECT_EQ(game.MasterAddress, "master.example");
    EXPECT_EQ(game.MasterPort, 27950);
    EXPECT_EQ(game.MasterPacket, "\xFF\xFF\xFF\xFFgetservers 68");
    EXPECT_EQ(game.MasterResponse, "\xFF\xFF\xFF\xFF"
                                   "answer");

    ASSERT_EQ(program.MODNum, 2);
    ASSERT_EQ(program.Mods.HighestIndex(), 2);
    EXPECT_EQ(program.Mods[1].BasedGame, "ar");
    EXPECT_EQ(program.Mods[1].Description, "First mod");
    EXPECT_EQ(program.Mods[1].GameName, " one");
    EXPECT_EQ(program.Mods[1].GameVersion, "1.0\0"s);
    EXPECT_EQ(program.Mods[2].BasedGame, "none");
    EXPECT_EQ(program.Mods[2].Description, "Second");
    EXPECT_EQ(program.Mods[2].GameName, "");
    EXPECT_EQ(fake.files.TotalWrites(), 0);
}

TEST_F(modMainDefinitionsTest, ReadsItsKeysInTheOrderOfTheFile) {
    fake.files.Put("C:\\Quarn\\Games.ini", "[General]\r\nGameNum=2\r\nMODNum=1\r\n");
    const WatchedProfiles watched(fake.desktop);
    LoadGamesIniGeneral(program, watched.desktop);
    LoadGamesIniSections(program, watched.desktop);
    EXPECT_THAT(watched.keysRead,
                ElementsAre("General/IniVer", "General/IniDesc", "General/GameNum", "General/MODNum",
                            "Game1/Description", "Game1/ExeName", "Game1/GameShort", "Game1/Engine",
                            "Game1/MasterAddress", "Game1/MasterPort", "Game1/MasterPacket",
                            "Game1/MasterResponse", "Game2/Description", "Game2/ExeName", "Game2/GameShort",
                            "Game2/Engine", "Game2/MasterAddress", "Game2/MasterPort", "Game2/MasterPacket",
                            "Game2/MasterResponse", "MOD1/BasedGame", "MOD1/Description", "MOD1/GameName",
                            "MOD1/GameVersion"));
}

TEST_F(modMainDefinitionsTest, IgnoresTheCaseOfNames) {
    Load("[GENERAL]\r\ngamenum=1\r\nmodNUM=1\r\n[gAME1]\r\ngameSHORT=ar\r\n[mod1]\r\nbasedgame=ar\r\n");
    ASSERT_EQ(program.GameNum, 1);
    EXPECT_EQ(program.Games[1].GameShort, "ar");
    ASSERT_EQ(program.MODNum, 1);
    EXPECT_EQ(program.Mods[1].BasedGame, "ar");
}

TEST_F(modMainDefinitionsTest, DoesNotDecodeTextsThatAreOnlyShownOrCompared) {
    Load("[General]\r\nIniDesc=a$32b\r\nGameNum=1\r\nMODNum=1\r\n"
         "[Game1]\r\nDescription=a$32b\r\nExeName=a$32b\r\nGameShort=a$32b\r\nEngine=a$32b\r\n"
         "MasterAddress=a$32b\r\nMasterPacket=a$32b\r\nMasterResponse=a$32b\r\n"
         "[MOD1]\r\nBasedGame=a$32b\r\n");
    const GameDefinition& game = program.Games[1];
    for (const std::string& text : {program.IniDesc, game.Description, game.ExeName, game.GameShort,
                                    game.Engine, game.MasterAddress, program.Mods[1].BasedGame})
        EXPECT_EQ(text, "a$32b");
    EXPECT_EQ(game.MasterPacket, "a b");
    EXPECT_EQ(game.MasterResponse, "a b");
}

TEST_F(modMainDefinitionsTest, WithoutAFileHasNoGames) {
    LoadGamesIniGeneral(program, fake.desktop);
    LoadGamesIniSections(program, fake.desktop);
    EXPECT_EQ(program.IniVer, 0);
    EXPECT_EQ(program.IniDesc, "");
    EXPECT_EQ(program.GameNum, 0);
    EXPECT_EQ(program.MODNum, 0);
    EXPECT_EQ(program.Games.HighestIndex(), 0);
    EXPECT_EQ(program.Mods.HighestIndex(), 0);
}

TEST_F(modMainDefinitionsTest, HasNoGamesIfTheFileIsUnreadableOrNoDefinitionsFile) {
    for (const char* text : {"", "\r\n", "[General]", "[General]\r\nGameNum=\r\n",
                             "[General]\r\nGameNum=many\r\n", "GameNum=3\r\n", "[Other]\r\nGameNum=3\r\n",
                             ";[General]\r\nGameNum=3\r\n", "\xFF\xFE[\1G", "[General]\r\nGameNum 3\r\n"}) {
        Load(text);
        EXPECT_EQ(program.GameNum, 0) << text;
        EXPECT_EQ(program.Games.HighestIndex(), 0) << text;
    }
    fake.files.FailReads("C:\\Quarn\\Games.ini", ErrorNumber::PermissionDenied);
    Load("[General]\r\nGameNum=3\r\n");
    EXPECT_EQ(program.GameNum, 0);
}

// The definitions' keys are read without waiting.
TEST_F(modMainDefinitionsTest, ReadsTheWholeFileBeforeItsKeysToWaitForAnotherProgram) {
    fake.files.FailReads("C:\\Quarn\\Games.ini", ErrorNumber::PermissionDenied, 1);
    fake.files.Put("C:\\Quarn\\Games.ini",
                   "[General]\r\nIniVer=7\r\nGameNum=1\r\n[Game1]\r\nGameShort=ar\r\n");
    LoadGamesIniGeneral(program, fake.desktop);
    EXPECT_EQ(program.IniVer, 7);
    EXPECT_EQ(program.GameNum, 1);
    fake.files.FailReads("C:\\Quarn\\Games.ini", ErrorNumber::PermissionDenied, 1);
    LoadGamesIniSections(program, fake.desktop);
    EXPECT_EQ(program.Games[1].GameShort, "ar");
}

TEST_F(modMainDefinitionsTest, IgnoresSectionsBeyondTheCounts) {
    Load("[General]\r\nGameNum=0\r\n[Game1]\r\nGameShort=ar\r\n[MOD1]\r\nBasedGame=ar\r\n");
    EXPECT_EQ(program.GameNum, 0);
    EXPECT_EQ(program.Games.HighestIndex(), 0);
    EXPECT_EQ(program.Mods.HighestIndex(), 0);
}

TEST_F(modMainDefinitionsTest, FillsACountedSectionThatIsMissingWithDefaults) {
    Load("[General]\r\nGameNum=2\r\nMODNum=1\r\n[Game1]\r\nGameShort=ar\r\nMasterPort=5\r\n");
    ASSERT_EQ(program.Games.HighestIndex(), 2);
    EXPECT_EQ(program.Games[1].MasterPort, 5);
    const GameDefinition& game = program.Games[2];
    for (const std::string& text : {game.Description, game.ExeName, game.GameShort, game.Engine,
                                    game.MasterAddress, game.MasterPacket, game.MasterResponse})
        EXPECT_EQ(text, "");
    EXPECT_EQ(game.MasterPort, 1);
    EXPECT_EQ(program.Mods[1].BasedGame, "");
}

TEST_F(modMainDefinitionsTest, NumbersItsSectionsWithoutLeadingZeros) {
    Load("[General]\r\nGameNum=12\r\nMODNum=10\r\n[Game01]\r\nGameShort=no\r\n[Game 2]\r\nGameShort=no\r\n"
         "[Game12]\r\nGameShort=twelve\r\n[MOD10]\r\nBasedGame=ten\r\n");
    EXPECT_EQ(program.Games[1].GameShort, "");
    EXPECT_EQ(program.Games[2].GameShort, "");
    EXPECT_EQ(program.Games[12].GameShort, "twelve");
    EXPECT_EQ(program.Mods[10].BasedGame, "ten");
}

TEST_F(modMainDefinitionsTest, TakesNumbersByTheirLeadingDigits) {
    const struct {
        const char* text;
        std::int32_t port;
    } cases[] = {{"27960", 27960}, {"27960x", 27960}, {"-1", -1}, {"70000", 70000},
                 {"abc", 0},       {"", 0},           {"x1", 0},  {"$1", 0}};
    for (const auto& c : cases) {
        Load("[General]\r\nGameNum=1\r\n[Game1]\r\nMasterPort="s + c.text + "\r\n");
        EXPECT_EQ(program.Games[1].MasterPort, c.port) << c.text;
    }
}

TEST_F(modMainDefinitionsTest, CutsTextsBeforeTheyAreDecoded) {
    const std::string longText(300, 'x');
    Load("[General]\r\nGameNum=1\r\n[Game1]\r\nDescription=" + longText +
         "\r\nMasterPacket=" + std::string(252, 'x') + "$255\r\nMasterResponse=" + std::string(100, 'x') +
         "$32" + longText + "\r\n");
    EXPECT_EQ(program.Games[1].Description, std::string(254, 'x'));
    EXPECT_EQ(program.Games[1].MasterPacket, std::string(252, 'x') + "$2");
    EXPECT_EQ(program.Games[1].MasterResponse, std::string(100, 'x') + " " + std::string(151, 'x'));
}

TEST_F(modMainDefinitionsTest, SizesTheSetupListsAndForgetsWhatTheyHeld) {
    program.Games.Reset(5);
    program.GamePath.Reset(5);
    program.GamePath[1] = "old";
    program.GameVisible.Reset(5);
    program.GameVisible[2] = 1;
    Load("[General]\r\nGameNum=2\r\n");
    EXPECT_EQ(program.Games.HighestIndex(), 2);
    EXPECT_EQ(program.GamePath.HighestIndex(), 2);
    EXPECT_EQ(program.GameConfig.HighestIndex(), 2);
    EXPECT_EQ(program.GamePlayerName.HighestIndex(), 2);
    EXPECT_EQ(program.GameVisible.HighestIndex(), 2);
    EXPECT_EQ(program.GamePath[1], "");
    EXPECT_EQ(program.GameVisible[2], 0);
}

TEST_F(modMainDefinitionsTest, KeepsGamesOfEqualShortNames) {
    Load("[General]\r\nGameNum=2\r\n[Game1]\r\nGameShort=ar\r\nEngine=q3\r\n[Game2]\r\nGameShort="
         "ar\r\nEngine=hl\r\n");
    EXPECT_EQ(program.Games[1].Engine, "q3");
    EXPECT_EQ(program.Games[2].Engine, "hl");
}

TEST_F(modMainDefinitionsTest, RefusesImpossibleCounts) {
    const struct {
        const char* count;
        ErrorNumber error;
    } cases[] = {
        {"-1", ErrorNumber::SubscriptOutOfRange},
        {"-2147483648", ErrorNumber::SubscriptOutOfRange},
        {"4294967295", ErrorNumber::SubscriptOutOfRange}, // wraps around to -1
        {"10001", ErrorNumber::OutOfMemory},
        {"2147483647", ErrorNumber::OutOfMemory},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ErrorOf([&] { Load("[General]\r\nGameNum="s + c.count); }), c.error) << c.count;
        EXPECT_EQ(ErrorOf([&] { Load("[General]\r\nMODNum="s + c.count); }), c.error) << c.count;
    }
    Load("[General]\r\nGameNum=10000\r\nMODNum=10000\r\n");
    EXPECT_EQ(program.Games.HighestIndex(), 10000);
    EXPECT_EQ(program.Mods.HighestIndex(), 10000);
}

} // namespace
} // namespace quarn
