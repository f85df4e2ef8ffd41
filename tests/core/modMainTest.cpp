#include "core/modMain.h"

#include "core/Version.h"
#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace quarn {
namespace {

constexpr const char* LogFile = "C:\\Quarn\\Quarn.log";
constexpr const char* DefinitionsFile = "C:\\Quarn\\Games.ini";
constexpr const char* SettingsFile = "C:\\Quarn\\Quarn.ini";
constexpr const char* StartEntry =
    "modMain;Main;11/21/26 08:05:00.000;0;Application startup, initializing\r\n";

class modMainTest : public ::testing::Test {
  protected:
    bool Run() {
        return Main(program, fake.desktop, [this] {
            ++windowsShown;
            if (whenShown)
                whenShown();
        });
    }

    FakeDesktop fake;
    ProgramState program;
    int windowsShown = 0;
    std::function<void()> whenShown;
};

TEST_F(modMainTest, ShowsTheWindowAfterLoadingEverything) {
    fake.files.Put(DefinitionsFile, "[General]\r\nGameNum=1\r\nMODNum=1\r\n[Game1]\r\nGameShort=ar\r\n"
                                    "[MOD1]\r\nBasedGame=ar\r\n");
    fake.files.Put(SettingsFile, "[Games]\r\nPath1=C:\\Arena\r\n[Scanning]\r\nPingTimeout=300\r\n");
    whenShown = [&] {
        ASSERT_NE(program.AppLog, nullptr);
        ASSERT_NE(program.IPLocation, nullptr);
        EXPECT_FALSE(program.IPLocation->Initialized());
        EXPECT_EQ(fake.system.controlsInitialised.size(), 1U);
        EXPECT_EQ(program.Games[1].GameShort, "ar");
        EXPECT_EQ(program.Mods[1].BasedGame, "ar");
        EXPECT_EQ(program.GamePath[1], "C:\\Arena");
        EXPECT_EQ(program.PingTimeout, 300);
    };
    EXPECT_TRUE(Run());
    EXPECT_EQ(windowsShown, 1);
    EXPECT_EQ(fake.files.Get(LogFile), StartEntry);
    EXPECT_EQ(program.CurrentGame, "");
}

TEST_F(modMainTest, KeepsItsFilesInTheProgramsFolder) {
    const struct {
        const char* folder;
        const char* appPath;
    } cases[] = {
        {"C:\\Quarn\\", "C:\\Quarn\\"},           {"C:\\Quarn", "C:\\Quarn\\"}, {"C:\\", "C:\\"},
        {"\\\\host\\share", "\\\\host\\share\\"}, {"C:/Quarn", "C:/Quarn\\"},   {"", "\\"},
    };
    for (const auto& c : cases) {
        FakeDesktop desktop;
        ProgramState state;
        desktop.files.programFolder = c.folder;
        EXPECT_TRUE(Main(state, desktop.desktop, [] {}));
        EXPECT_EQ(state.AppPath, c.appPath);
        EXPECT_EQ(state.AppLog->DefaultLogFilename(), std::string(c.appPath) + "Quarn.log");
        EXPECT_GT(desktop.files.Reads(std::string(c.appPath) + "Quarn.ini"), 0);
        EXPECT_GT(desktop.files.Reads(std::string(c.appPath) + "Games.ini"), 0);
    }
}

TEST_F(modMainTest, EndsWithAMessageInAFolderWithoutAName) {
    fake.files.programFolderHasName = false;
    EXPECT_FALSE(Run());
    EXPECT_EQ(windowsShown, 0);
    ASSERT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_EQ(fake.prompts.shown[0].title, "Quarn - Error");
    EXPECT_TRUE(fake.prompts.shown[0].text.starts_with("Quarn cannot use its own folder: "));
    EXPECT_EQ(fake.files.TotalWrites(), 0);
    EXPECT_TRUE(fake.system.instancesAskedFor.empty());
}

TEST_F(modMainTest, BeginsAFreshLog) {
    fake.files.Put(LogFile, "from the last run\r\n");
    EXPECT_TRUE(Run());
    EXPECT_EQ(fake.files.Get(LogFile), StartEntry);
}

TEST_F(modMainTest, NamesTheRecipientOfErrorReports) {
    EXPECT_TRUE(Run());
    EXPECT_TRUE(program.AppLog->NotifyEmailAddress.ends_with("@quarn.example"));
}

TEST_F(modMainTest, StartsWithoutAnyOfItsFiles) {
    EXPECT_TRUE(Run());
    EXPECT_EQ(fake.system.instancesShown, 0);
    EXPECT_EQ(program.GameNum, 0);
    EXPECT_EQ(program.MinToTray, 1);
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(modMainTest, ASecondInstanceLogsThatAndEnds) {
    fake.system.alreadyRunning = true;
    EXPECT_FALSE(Run());
    EXPECT_EQ(windowsShown, 0);
    EXPECT_EQ(fake.system.instancesShown, 1);
    EXPECT_EQ(fake.system.instancesAskedFor, std::vector<std::string>{ApplicationTitle});
    EXPECT_EQ(fake.files.Get(LogFile),
              std::string(StartEntry) + "modMain;Main;11/21/26 08:05:00.000;0;Quarn is already running.\r\n");
    EXPECT_EQ(fake.files.TotalWrites(), fake.files.Writes(LogFile));
    EXPECT_EQ(fake.files.Reads(SettingsFile), 0);
    EXPECT_EQ(fake.files.Reads(DefinitionsFile), 0);
    EXPECT_TRUE(fake.system.controlsInitialised.empty());
    EXPECT_EQ(program.IPLocation, nullptr);
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_TRUE(fake.shell.opened.empty());
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(modMainTest, StartsWithoutTheNewerControls) {
    fake.system.controlsFault = ErrorNumber::InternalError;
    EXPECT_TRUE(Run());
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(modMainTest, StartsWithALogThatCannotBeWritten) {
    fake.files.FailWrites(LogFile, ErrorNumber::PermissionDenied);
    EXPECT_TRUE(Run());
    EXPECT_TRUE(fake.prompts.shown.empty()); // told when the window is there
    program.AppLog->TellWriteFault();
    ASSERT_EQ(fake.prompts.shown.size(), 1U);
    EXPECT_EQ(fake.prompts.shown[0].text, "Error number 70 in class AppLog, Sub WriteLogEntry");
}

TEST_F(modMainTest, AnErrorBeforeTheWindowIsShownEndsTheProgram) {
    const struct {
        const char* definitions;
        const char* entry;
        const char* message;
    } cases[] = {
        {"[General]\r\nGameNum=10001\r\n", "modMain;Main;11/21/26 08:05:00.000;7;Out of memory\r\n",
         "A error has occurred in modMain in Main\r\nError #7: Out of memory\r\n"},
        {"[General]\r\nGameNum=-1\r\n", "modMain;Main;11/21/26 08:05:00.000;9;Subscript out of range\r\n",
         "A error has occurred in modMain in Main\r\nError #9: Subscript out of range\r\n"},
        {"[General]\r\nMODNum=10001\r\n", "modMain;Main;11/21/26 08:05:00.000;7;Out of memory\r\n",
         "A error has occurred in modMain in Main\r\nError #7: Out of memory\r\n"},
    };
    for (const auto& c : cases) {
        FakeDesktop desktop;
        ProgramState state;
        desktop.files.Put(DefinitionsFile, c.definitions);
        EXPECT_FALSE(Main(state, desktop.desktop, [] { FAIL() << "no window may be shown"; }));
        EXPECT_EQ(desktop.files.Get(LogFile), std::string(StartEntry) + c.entry);
        ASSERT_EQ(desktop.prompts.shown.size(), 1U);
        EXPECT_TRUE(desktop.prompts.shown[0].text.starts_with(c.message)) << desktop.prompts.shown[0].text;
        EXPECT_EQ(desktop.files.Writes(SettingsFile), 0);
        EXPECT_NE(state.IPLocation, nullptr) << "the countries come before the files";
    }
}

TEST_F(modMainTest, InitialisesTheControlsFirst) {
    bool initialised = false;
    fake.system.whileInitialisingControls = [&] {
        initialised = true;
        EXPECT_EQ(program.IPLocation, nullptr);
        EXPECT_EQ(fake.files.Reads(DefinitionsFile), 0);
        EXPECT_EQ(fake.files.Reads(SettingsFile), 0);
    };
    EXPECT_TRUE(Run());
    EXPECT_TRUE(initialised);
}

TEST_F(modMainTest, AWindowThatCannotBeShownEndsTheProgram) {
    whenShown = [] { throw std::runtime_error("no window"); };
    EXPECT_FALSE(Run());
    EXPECT_EQ(fake.files.Get(LogFile),
              std::string(StartEntry) + "modMain;Main;11/21/26 08:05:00.000;51;Internal error\r\n");
    EXPECT_EQ(fake.prompts.shown.size(), 1U);
}

TEST_F(modMainTest, ReadsSettingsBetweenTheTwoHalvesOfTheDefinitions) {
    fake.files.Put(SettingsFile, "[Scanning]\r\nPingTimeout=300\r\n");
    fake.files.Put(DefinitionsFile, "[General]\r\nGameNum=-1\r\n");
    EXPECT_FALSE(Run());
    EXPECT_EQ(program.PingTimeout, 1000);

    fake.files.Put(DefinitionsFile, "[General]\r\nMODNum=-1\r\n");
    EXPECT_FALSE(Run());
    EXPECT_EQ(program.PingTimeout, 300);
}

} // namespace
} // namespace quarn
