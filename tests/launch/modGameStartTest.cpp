#include "launch/modGameStart.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quarn {
namespace {

constexpr const char* MessageOfNoExecutable =
    "The game executable could not be found. Please check game path!";
constexpr const char* ServerFile = "server.txt";

class modGameStartTest : public ProgramTest {
  protected:
    modGameStartTest() {
        ResetGames(program, 2);
        program.Games[1] = {"Other", "other.exe", "", 0, "", "", "other", "q3"};
        program.Games[2] = {"Arena", "arena.exe", "", 0, "", "", "ar", "q3"};
        program.GamePath[2] = "C:\\Games\\Arena";
        program.CurrentGame = "ar";
        program.Servers.Reset(2);
        program.ServerCount = 2;
        program.CurrentServer = 2;
        server().Address = "1.2.3.4";
        server().Port = 27960;
        server().Name = "The server";
        fake.files.Put("C:\\Games\\Arena\\arena.exe", "");
    }

    ServerRecord& server() { return program.Servers[2]; }
    bool Start(bool asSpectator = false) {
        return StartGame(program, fake.desktop, program.Servers[program.CurrentServer], asSpectator);
    }

    std::string Parameters(bool asSpectator) {
        fake.shell.opened.clear();
        EXPECT_TRUE(Start(asSpectator));
        EXPECT_EQ(fake.shell.opened.size(), 1U);
        return fake.shell.opened.at(0).parameters;
    }
};

TEST_F(modGameStartTest, AppendsAMissingBackslashToThePath) {
    const struct {
        const char* path;
        const char* after;
    } cases[] = {
        {"C:\\Games\\Arena", "C:\\Games\\Arena\\"},
        {"C:\\Games\\Arena\\", "C:\\Games\\Arena\\"},
        {"C:\\Games\\Arena\\\\", "C:\\Games\\Arena\\\\"},
        {"C:", "C:\\"},
        {"C:\\", "C:\\"},
        {"", "\\"},
        {"\\", "\\"},
        {"C:/Games/", "C:/Games/\\"},
        {" ", " \\"},
        {"C:\\Games\\ ", "C:\\Games\\ \\"},
        {"D:\\nowhere", "D:\\nowhere\\"},
        {"\\\\host\\share", "\\\\host\\share\\"},
        {"not\"a|path", "not\"a|path\\"},
        {"C:\\Sp\xefle\xdf", "C:\\Sp\xefle\xdf\\"},
    };
    for (const auto& c : cases) {
        std::string path = c.path;
        GetGameExePath(program, fake.desktop, path, "ar");
        EXPECT_EQ(path, c.after);
        GetGameExePath(program, fake.desktop, path, "ar");
        EXPECT_EQ(path, c.after) << "the second time";
    }
}

// In the Japanese code page the last character of the second row is "so", whose bytes are 83 5C.
TEST_F(modGameStartTest, TellsABackslashFromTheSecondByteOfACharacter) {
    const struct {
        const char* path;
        const char* after;
    } cases[] = {
        {"C:\\Games\\\x83\x41", "C:\\Games\\\x83\x41\\"},
        {"C:\\Games\\\x83\x5C", "C:\\Games\\\x83\x5C\\"},
        {"C:\\Games\\\x83\x5C\\", "C:\\Games\\\x83\x5C\\"},
        {"C:\\\x83\x83\\", "C:\\\x83\x83\\"},
        {"\x83\x83\x5C", "\x83\x83\x5C"},
        {"\x83\x83\x83\x5C", "\x83\x83\x83\x5C\\"},
        {"C:\\\xB1\\", "C:\\\xB1\\"},
        {"C:\\cut\x83", "C:\\cut\x83\\"},
        {"C:\\", "C:\\"},
        {"", "\\"},
    };
    fake.locale.japaneseCodePage = true;
    for (const auto& c : cases) {
        std::string path = c.path;
        GetGameExePath(program, fake.desktop, path, "ar");
        EXPECT_EQ(path, c.after);
    }
    fake.locale.japaneseCodePage = false;
    std::string western = "C:\\Games\\\x83\x5C";
    GetGameExePath(program, fake.desktop, western, "ar");
    EXPECT_EQ(western, "C:\\Games\\\x83\x5C");
}

TEST_F(modGameStartTest, FindsTheExecutableOfTheGameItIsGiven) {
    fake.files.Put("C:\\Games\\Arena\\other.exe", "");
    std::string path = "C:\\Games\\Arena";
    EXPECT_EQ(GetGameExePath(program, fake.desktop, path, "ar"), "C:\\Games\\Arena\\arena.exe");
    EXPECT_EQ(GetGameExePath(program, fake.desktop, path, "other"), "C:\\Games\\Arena\\other.exe");
}

TEST_F(modGameStartTest, FindsNoExecutable) {
    fake.files.PutFolder("C:\\Games\\Folder\\arena.exe");
    fake.files.Put("C:\\Games\\Other\\arena.exe.bak", "");
    fake.files.Put("C:\\Games\\FileAsPath", "");
    for (const char* folder :
         {"", "\\", "C:", "C:\\Games", "C:\\Games\\Folder", "C:\\Games\\Other", "C:\\Games\\FileAsPath",
          "D:\\Games\\Arena", "Games\\Arena", "C:\\Games\\Aren", "C:\\Games\\Arena\\arena.exe"}) {
        std::string path = folder;
        EXPECT_EQ(GetGameExePath(program, fake.desktop, path, "ar"), "") << folder;
    }
    for (const char* game : {"", "AR", "a", "ar ", "fav1", "games"}) {
        std::string path = "C:\\Games\\Arena";
        EXPECT_EQ(GetGameExePath(program, fake.desktop, path, game), "") << game;
        EXPECT_EQ(path, "C:\\Games\\Arena\\") << game;
    }
}

TEST_F(modGameStartTest, AGameWithoutExecutableNameIsNeverFound) {
    program.Games[2].ExeName = "";
    std::string path = "C:\\Games\\Arena";
    EXPECT_EQ(GetGameExePath(program, fake.desktop, path, "ar"), "");
}

TEST_F(modGameStartTest, AsksTheShellForTheGameInItsFolder) {
    ASSERT_TRUE(Start());
    ASSERT_EQ(fake.shell.opened.size(), 1U);
    const Shell::Request& request = fake.shell.opened[0];
    EXPECT_EQ(request.verb, "open");
    EXPECT_EQ(request.file, "C:\\Games\\Arena\\arena.exe");
    EXPECT_EQ(request.folder, "C:\\Games\\Arena\\");
    EXPECT_EQ(static_cast<int>(request.show), 5);
    EXPECT_TRUE(request.ownedByWindow);
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(program.GamePath[2], "C:\\Games\\Arena\\");
}

TEST_F(modGameStartTest, BuildsTheCommandLineOfEachEngine) {
    const struct {
        const char* engine;
        const char* mod;
        const char* config;
        const char* name;
        const char* password;
        const char* player;
        const char* spectator; // what it adds
    } cases[] = {
        {"q3", "osp", "my.cfg", "Visor", "secret",
         "+set fs_game osp +exec my.cfg +name Visor +set password secret +connect 1.2.3.4:27960",
         " +setu team s"},
        {"q3", "", "", "", "", "+set fs_game  +exec  +name  +set password  +connect 1.2.3.4:27960",
         " +setu team s"},
        {"q3", "", "", "", "x", "+set fs_game  +exec  +name  +set password x +connect 1.2.3.4:27960",
         " +setu team s"},
        {"q3", "two words", "a b.cfg", "The Player", "pass word",
         "+set fs_game two words +exec a b.cfg +name The Player +set password pass word +connect "
         "1.2.3.4:27960",
         " +setu team s"},
        {"q3", "\"osp\"", "+exec", "a+quit", "\\\"",
         "+set fs_game \"osp\" +exec +exec +name a+quit +set password \\\" +connect 1.2.3.4:27960",
         " +setu team s"},
        {"q3", "%PATH%", "$(x)", "&|<>^", "'`;",
         "+set fs_game %PATH% +exec $(x) +name &|<>^ +set password '`; +connect 1.2.3.4:27960",
         " +setu team s"},
        {"q3", "\xff\x80", "\x01", "^1R\xe9\xe0", "\xa0",
         "+set fs_game \xff\x80 +exec \x01 +name ^1R\xe9\xe0 +set password \xa0 +connect 1.2.3.4:27960",
         " +setu team s"},
        {"hl", "cstrike", "my.cfg", "Visor", "secret", "+connect 1.2.3.4:27960 -game cstrike", " -s"},
        {"hl", "", "", "", "", "+connect 1.2.3.4:27960 -game ", " -s"},
        {"hl", "two words", "", "", "", "+connect 1.2.3.4:27960 -game two words", " -s"},
        {"hl", "+quit \"x\"", "", "", "", "+connect 1.2.3.4:27960 -game +quit \"x\"", " -s"},
        {"d3", "base", "my.cfg", "Visor", "secret", "", ""},
        {"", "base", "my.cfg", "Visor", "secret", "", ""},
        {"Q3", "base", "my.cfg", "Visor", "secret", "", ""},
        {"HL", "base", "my.cfg", "Visor", "secret", "", ""},
        {"q3 ", "base", "my.cfg", "Visor", "secret", "", ""},
        {" hl", "base", "my.cfg", "Visor", "secret", "", ""},
        {"q", "base", "my.cfg", "Visor", "secret", "", ""},
        {"q33", "base", "my.cfg", "Visor", "secret", "", ""},
    };
    for (const auto& c : cases) {
        program.Games[2].Engine = c.engine;
        program.GameConfig[2] = c.config;
        program.GamePlayerName[2] = c.name;
        server().ModName = c.mod;
        server().Password = c.password;
        EXPECT_EQ(Parameters(false), c.player) << c.engine;
        EXPECT_EQ(Parameters(true), std::string(c.player) + c.spectator) << c.engine;
    }
}

TEST_F(modGameStartTest, WritesPortsAsTheyAreStored) {
    program.Games[2].Engine = "hl";
    for (const std::int32_t port :
         {0, 1, -1, 27960, 65535, 65536, 99999, std::numeric_limits<std::int32_t>::max(),
          std::numeric_limits<std::int32_t>::min()}) {
        server().Port = port;
        const std::string address = "1.2.3.4:" + std::to_string(port);
        EXPECT_EQ(Parameters(false), "+connect " + address + " -game ");
        EXPECT_EQ(fake.files.Get(ServerFile), "The server " + address + "\r\n");
    }
}

TEST_F(modGameStartTest, PassesTextsOfAnyLengthWhole) {
    const std::string longText(10'000, 'n');
    program.GamePlayerName[2] = program.GameConfig[2] = longText;
    server().ModName = server().Password = server().Name = longText;
    EXPECT_EQ(Parameters(true), "+set fs_game " + longText + " +exec " + longText + " +name " + longText +
                                    " +set password " + longText + " +connect 1.2.3.4:27960 +setu team s");
    EXPECT_EQ(fake.files.Get(ServerFile), longText + " 1.2.3.4:27960\r\n");
}

TEST_F(modGameStartTest, NamesTheServerInAFileOfTheCurrentDirectory) {
    const struct {
        std::string name;
        std::string line;
    } cases[] = {
        {"The server", "The server 1.2.3.4:27960\r\n"},
        {"", " 1.2.3.4:27960\r\n"},
        {" ", "  1.2.3.4:27960\r\n"},
        {"\"quoted\"; + 100%", "\"quoted\"; + 100% 1.2.3.4:27960\r\n"},
        {"\xff\x80\x01\t", "\xff\x80\x01\t 1.2.3.4:27960\r\n"},
        {std::string("a\0b", 3), std::string("a\0b 1.2.3.4:27960\r\n", 19)},
        {"line\r\nline", "line  line 1.2.3.4:27960\r\n"}, // it is one line whatever the name contains
        {"\n\r\r", "    1.2.3.4:27960\r\n"},
    };
    for (const auto& c : cases) {
        fake.files.Put(ServerFile, "what the launch before left, which was longer than the new line");
        server().Name = c.name;
        ASSERT_TRUE(Start());
        EXPECT_EQ(fake.files.Get(ServerFile), c.line);
    }
}

TEST_F(modGameStartTest, WritesTheFileForEveryEngineAndBeforeItAsksTheShell) {
    for (const char* engine : {"q3", "hl", "d3", "", "unknown"}) {
        fake.files.Put(ServerFile, "");
        program.Games[2].Engine = engine;
        ASSERT_TRUE(Start());
        EXPECT_EQ(fake.files.Get(ServerFile), "The server 1.2.3.4:27960\r\n") << engine;
    }
    fake.shell.openFault = ErrorNumber::PermissionDenied;
    fake.files.Put(ServerFile, "");
    EXPECT_EQ(ErrorOf([&] { Start(); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(fake.files.Get(ServerFile), "The server 1.2.3.4:27960\r\n");
}

TEST_F(modGameStartTest, WithoutAnExecutableItOnlyShowsAnError) {
    const struct {
        const char* path;
        const char* exeName;
        const char* pathAfter;
    } cases[] = {
        {"", "arena.exe", "\\"},
        {"C:\\Games\\Wrong", "arena.exe", "C:\\Games\\Wrong\\"},
        {"C:\\Games\\Wrong\\", "arena.exe", "C:\\Games\\Wrong\\"},
        {"C:\\Games\\Arena", "", "C:\\Games\\Arena\\"},
        {"C:\\Games\\Arena", "gone.exe", "C:\\Games\\Arena\\"},
        {"Z:", "arena.exe", "Z:\\"},
    };
    fake.files.Put(ServerFile, "as it was");
    for (const auto& c : cases) {
        fake.prompts.shown.clear();
        program.GamePath[2] = c.path;
        program.Games[2].ExeName = c.exeName;
        EXPECT_FALSE(Start());
        ASSERT_EQ(fake.prompts.shown.size(), 1U);
        EXPECT_EQ(fake.prompts.shown[0].text, MessageOfNoExecutable);
        EXPECT_EQ(fake.prompts.shown[0].title, "Quarn - Error");
        EXPECT_EQ(program.GamePath[2], c.pathAfter);
        EXPECT_EQ(fake.files.Get(ServerFile), "as it was");
        EXPECT_TRUE(fake.shell.opened.empty());
    }
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(modGameStartTest, AListThatBelongsToNoGameHasNoExecutable) {
    for (const char* list : {"", "fav1", "AR"}) {
        program.CurrentGame = list;
        EXPECT_FALSE(Start()) << list;
    }
    EXPECT_EQ(program.GamePath[0], "");
    EXPECT_EQ(fake.prompts.shown.size(), 3U);
}

TEST_F(modGameStartTest, AFolderThatCannotBeWrittenStopsNoGame) {
    fake.files.FailWrites(ServerFile, ErrorNumber::PermissionDenied);
    EXPECT_TRUE(Start());
    ASSERT_EQ(fake.shell.opened.size(), 1U);
    EXPECT_EQ(fake.shell.opened[0].file, "C:\\Games\\Arena\\arena.exe");
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(program.AppLog->HistoryLog(),
              "modGameStart;StartGame;11/21/26 08:05:00.000;70;Permission denied\r\n");
}

TEST_F(modGameStartTest, JoinsTheServerThatWasSelectedWhenItBegan) {
    fake.files.whileWriting = [this](const std::string& path) {
        if (path == ServerFile)
            program.CurrentServer = 1;
    };
    program.Servers[1].Address = "9.9.9.9";
    EXPECT_NE(Parameters(false).find("+connect 1.2.3.4:27960"), std::string::npos);
    EXPECT_EQ(fake.files.Get(ServerFile), "The server 1.2.3.4:27960\r\n");
}

TEST_F(modGameStartTest, LeavesErrorsToItsCaller) {
    for (const std::int32_t server : {-1, 3, std::numeric_limits<std::int32_t>::max()}) {
        program.CurrentServer = server;
        EXPECT_EQ(ErrorOf([&] { Start(); }), ErrorNumber::SubscriptOutOfRange) << server;
    }
    EXPECT_TRUE(fake.shell.opened.empty());
}

} // namespace
} // namespace quarn
