#include "launch/JoinQuestion.h"

#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* Before =
    "The name of this server's MOD could give commands to the game. The game would be started with this "
    "line:\r\n\r\n";
constexpr const char* After = "\r\n\r\nDo you want to start it?";

class JoinQuestionTest : public ProgramTest {
  protected:
    JoinQuestionTest() {
        ResetGames(program, 4);
        program.Games[1].GameShort = "ar";
        program.Games[1].Engine = "q3";
        program.Games[2].GameShort = "cb";
        program.Games[2].Engine = "hl";
        program.Games[3].GameShort = "dm";
        program.Games[3].Engine = "d3";
        program.Games[4].GameShort = "other";
        program.MODNum = 2;
        program.Mods.Reset(2);
        program.Mods[1].BasedGame = "ar";
        program.Mods[1].GameName = "JA+ Mod v2.4 B7";
        program.Mods[2].BasedGame = "cb";
        program.Mods[2].GameName = "-dod";
        program.CurrentGame = "cb";
        server.Address = "1.2.3.4";
        server.Port = 27960;
    }

    std::string Question(const std::string& mod, bool asSpectator = false) {
        server.ModName = mod;
        return JoinQuestion(program, fake.locale, server, asSpectator);
    }
    bool Asks(const std::string& mod) { return !Question(mod).empty(); }

    ServerRecord server;
};

TEST_F(JoinQuestionTest, AsksForNamesThatCouldBeCommands) {
    const std::string suspicious[] = {"\"",
                                      "osp\"",
                                      "\"osp\"",
                                      "osp;quit",
                                      ";",
                                      "a\nb",
                                      "\r",
                                      "\x01",
                                      "\x1f",
                                      "\x7f",
                                      "a\tb",
                                      "..",
                                      "../..",
                                      "a..",
                                      "c:",
                                      "C:\\games",
                                      "a:b",
                                      "/etc",
                                      "/",
                                      "\\",
                                      "\\\\host\\share",
                                      "+",
                                      "+quit",
                                      "osp+quit",
                                      "osp +quit",
                                      "osp+",
                                      "c++",
                                      "-",
                                      "-game",
                                      "osp -dev",
                                      "a  -b",
                                      " -b",
                                      "JA+ Mod v2.4 B",
                                      "ja+ mod v2.4 b7",
                                      "JA+ Mod v2.4 B7 ",
                                      "-dod x",
                                      "+a\0b"s};
    for (const std::string& mod : suspicious)
        EXPECT_TRUE(Asks(mod)) << ::testing::PrintToString(mod);
}

TEST_F(JoinQuestionTest, DoesNotAskForPlainNames) {
    const std::string plain[] = {
        "",    "osp",          "baseq3",    "two words", "a-b",   "a- b", "v1.2",        ".",    "a.",
        ". .", "mods/osp",     "mods\\osp", "osp/",      "osp\\", "^1R",  "%PATH%",      "$(x)", "&|<>^",
        "'`",  "\xff\x80\xe4", "\x80",      "-dod",      "a=b,c", "!",    "osp\0+quit"s, "\0;"s};
    for (const std::string& mod : plain)
        EXPECT_FALSE(Asks(mod)) << ::testing::PrintToString(mod);
}

TEST_F(JoinQuestionTest, OnlyAModOfTheSameGameIsKnown) {
    EXPECT_TRUE(Asks("JA+ Mod v2.4 B7"));
    program.CurrentGame = "ar";
    EXPECT_FALSE(Asks("JA+ Mod v2.4 B7"));
    EXPECT_FALSE(Asks("JA+ Mod v2.4 B7\0+quit"s));
    EXPECT_TRUE(Asks("-dod"));
}

TEST_F(JoinQuestionTest, AsksOnlyForGamesThatAreToldTheName) {
    for (const char* list : {"dm", "other", "", "fav1", "CB"}) {
        program.CurrentGame = list;
        EXPECT_FALSE(Asks("+quit")) << list;
    }
    program.CurrentGame = "fav1";
    server.Game = 2;
    EXPECT_TRUE(Asks("+quit"));
    server.Game = 3;
    EXPECT_FALSE(Asks("+quit"));
}

TEST_F(JoinQuestionTest, ShowsTheLineThatWouldBePassed) {
    EXPECT_EQ(Question("x+quit"), Before + "+connect 1.2.3.4:27960 -game x+quit"s + After);
    EXPECT_EQ(Question("x+quit", true), Before + "+connect 1.2.3.4:27960 -game x+quit -s"s + After);
    program.CurrentGame = "ar";
    program.GameConfig[1] = "my.cfg";
    program.GamePlayerName[1] = "Visor";
    server.Password = "secret";
    EXPECT_EQ(Question("x;y"), Before +
                                   "+set fs_game x;y +exec my.cfg +name Visor +set password secret "
                                   "+connect 1.2.3.4:27960"s +
                                   After);
}

TEST_F(JoinQuestionTest, ShowsControlCharactersByTheirCode) {
    EXPECT_THAT(Question("a\r\n\tb\x7f\x1f\xff"), HasSubstr("-game a\\x0D\\x0A\\x09b\\x7F\\x1F\xff\r\n"));
    EXPECT_THAT(Question("+a\0b"s), HasSubstr("-game +a\r\n")) << "a NUL ends the name";
    EXPECT_THAT(Question("&+&&"), HasSubstr("-game &+&&\r\n"));
}

TEST_F(JoinQuestionTest, BreaksLongWords) {
    const std::string start = Before + "+connect 1.2.3.4:27960 -game "s;
    const std::string forty(40, '+');
    EXPECT_EQ(Question(forty), start + forty + After);
    EXPECT_EQ(Question(forty + "x"), start + forty + "\r\nx" + After);
    EXPECT_EQ(Question(forty + forty + "x y"), start + forty + "\r\n" + forty + "\r\nx y" + After);
    EXPECT_EQ(Question(forty + " " + forty), start + forty + " " + forty + After);
    EXPECT_EQ(Question(forty.substr(2) + "\x01y"), start + forty.substr(2) + "\r\n\\x01y" + After);
}

TEST_F(JoinQuestionTest, BreaksNoCharacterInTwo) {
    const std::string start = Before + "+connect 1.2.3.4:27960 -game "s;
    const std::string filler(39, '+');
    EXPECT_EQ(Question(filler + "\x83\x41x"), start + filler + "\x83\r\n\x41x" + After);
    fake.locale.japaneseCodePage = true;
    EXPECT_EQ(Question(filler + "\x83\x41x"), start + filler + "\r\n\x83\x41x" + After);
    EXPECT_EQ(Question(filler.substr(1) + "\x83\x41x"), start + filler.substr(1) + "\x83\x41\r\nx" + After);
    EXPECT_THAT(Question("+\x83"), HasSubstr("-game +\x83\r\n")) << "one that is cut off";
}

TEST_F(JoinQuestionTest, ShowsTheStartOfALineThatIsTooLong) {
    const std::string fits(1000 - 29 - 1, ' '); // 29 characters are in front of the name
    EXPECT_THAT(Question(fits + "+"), Not(HasSubstr("more")));
    EXPECT_THAT(Question(fits + "+y"), EndsWith(" +\r\n... and 1 characters more."s + After));
    EXPECT_THAT(Question(std::string(60'000, '+')), EndsWith("+\r\n... and 59029 characters more."s + After));
}

} // namespace
} // namespace quarn
