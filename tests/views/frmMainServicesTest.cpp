// The main form with its tray icon, its help and its game setup.

#include "core/Version.h"
#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string TitleAndVersion = std::string("Quarn ") + VersionText;

class frmMainServicesTest : public ::testing::Test {
  protected:
    void Start() { ASSERT_TRUE(browser.Start()); }
    FakeNotificationArea& Area() { return browser.fake.notifications; }
    bool InTray() {
        return !browser.window.visible && !browser.window.shownInTaskbar && Area().icons.size() == 1;
    }
    bool Shown() { return browser.window.visible && browser.window.shownInTaskbar && Area().icons.empty(); }
    void Minimize() { browser.window.SetState(WindowState::Minimized); }

    HeadlessBrowser browser;
};

TEST_F(frmMainServicesTest, PreparesTrayIconAndHelp) {
    Start();
    EXPECT_EQ(&browser.Form().SysTray.SourceWindow(), &browser.window);
    ASSERT_THAT(Area().calls, SizeIs(1));
    EXPECT_EQ(Area().calls[0].command, NotifyCommand::Modify);
    EXPECT_EQ(Area().calls[0].record.icon, FakeFormWindow::TheIcon);
    EXPECT_EQ(browser.Form().HTMLHelp.CHMFile, "C:\\Quarn\\..\\Kestrune.chm");
    EXPECT_EQ(browser.Form().HTMLHelp.HelpWindow, "Main");
    EXPECT_TRUE(Shown());
}

TEST_F(frmMainServicesTest, MinimisesIntoTheTrayForAnyNonzeroSetting) {
    for (const std::int32_t setting : {1, 2, -1}) {
        HeadlessBrowser another;
        another.Set("General", "MinToTray", setting);
        ASSERT_TRUE(another.Start());
        another.window.SetState(WindowState::Minimized);
        EXPECT_FALSE(another.window.visible) << setting;
        EXPECT_FALSE(another.window.shownInTaskbar);
        EXPECT_THAT(another.fake.notifications.icons, SizeIs(1));
        EXPECT_EQ(another.fake.notifications.calls.back().Tip(), TitleAndVersion);
        EXPECT_EQ(another.window.caption, TitleAndVersion);
    }
}

TEST_F(frmMainServicesTest, MinimisesToTheTaskbarWithoutTheSetting) {
    browser.Set("General", "MinToTray", 0);
    Start();
    Minimize();
    EXPECT_TRUE(browser.window.visible);
    EXPECT_TRUE(browser.window.shownInTaskbar);
    EXPECT_THAT(Area().icons, IsEmpty());
}

TEST_F(frmMainServicesTest, ComesBackOnADoubleClickOrFromItsMenu) {
    Start();
    for (int cycle = 0; cycle < 3; ++cycle) {
        Minimize();
        ASSERT_TRUE(InTray());
        if (cycle == 1)
            browser.Form().mnuSysOpen_Click();
        else
            Area().Mouse(515);
        EXPECT_TRUE(Shown());
        EXPECT_EQ(browser.window.state, WindowState::Normal);
    }
}

TEST_F(frmMainServicesTest, ComesBackWhenTheProgramIsStartedAgain) {
    Start();
    Minimize();
    ASSERT_TRUE(InTray());
    browser.Form().StartedAgain();
    EXPECT_TRUE(Shown());
    EXPECT_EQ(browser.window.state, WindowState::Normal);
    EXPECT_EQ(browser.window.broughtToFront, 1);

    browser.Form().StartedAgain();
    EXPECT_TRUE(Shown());
    EXPECT_EQ(browser.window.broughtToFront, 2);
}

TEST_F(frmMainServicesTest, ComesBackFromTheTaskbarWhenTheProgramIsStartedAgain) {
    browser.Set("General", "MinToTray", 0);
    Start();
    Minimize();
    const std::vector<WindowState> setBefore = browser.window.statesSet;
    browser.Form().StartedAgain();
    EXPECT_EQ(browser.window.state, WindowState::Normal);
    EXPECT_EQ(browser.window.statesSet, setBefore) << "whether it is maximised again is the system's to know";
}

TEST_F(frmMainServicesTest, AStartAgainComesTooLateForAWindowThatCloses) {
    Start();
    browser.Form().Unload();
    browser.Form().StartedAgain();
    EXPECT_EQ(browser.window.broughtToFront, 0);
}

TEST_F(frmMainServicesTest, StaysInTheTrayWhenTheSystemTellsItsStateTwice) {
    Start();
    Minimize();
    browser.Form().Form_Resize();
    EXPECT_TRUE(InTray());
    std::size_t added = 0;
    for (const FakeNotificationArea::Call& call : Area().calls)
        added += call.command == NotifyCommand::Add ? 1 : 0;
    EXPECT_EQ(added, 1U);
}

TEST_F(frmMainServicesTest, OpensTheTrayMenuWhenTheRightButtonIsReleased) {
    Start();
    Minimize();
    for (const int message : {512, 513, 514, 516, 518})
        Area().Mouse(message);
    EXPECT_THAT(browser.window.poppedUp, IsEmpty());
    EXPECT_TRUE(InTray());
    Area().Mouse(517);
    EXPECT_THAT(browser.window.poppedUp, ElementsAre(PopupMenu::SysTray));
}

TEST_F(frmMainServicesTest, QuitsFromTheTrayWithoutLeavingItsIcon) {
    Start();
    Minimize();
    browser.Form().mnuSysQuit_Click();
    EXPECT_TRUE(browser.Ended());
    EXPECT_THAT(Area().icons, IsEmpty());
    EXPECT_EQ(browser.Setting("General", "WinState"), "1");
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainServicesTest, RemovesItsIconBeforeItsLastQuestion) {
    Start();
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    Minimize();
    browser.fake.prompts.yesNoAnswers = {false};
    std::size_t iconsThen = 1;
    browser.fake.prompts.whileOpen = [&] { iconsThen = Area().icons.size(); };
    browser.Form().mnuSysQuit_Click();
    EXPECT_EQ(iconsThen, 0U);
    EXPECT_TRUE(browser.Ended());
}

TEST_F(frmMainServicesTest, LeavesNoIconHoweverItEnds) {
    for (const bool atOnce : {false, true}) {
        HeadlessBrowser another;
        ASSERT_TRUE(another.Start());
        another.window.SetState(WindowState::Minimized);
        if (atOnce)
            another.Form().EndSession();
        else
            another.Form().Unload();
        EXPECT_TRUE(another.Ended());
        EXPECT_THAT(another.fake.notifications.icons, IsEmpty());
    }
}

TEST_F(frmMainServicesTest, MinimisesIntoTheTrayAfterALaunch) {
    browser.fake.files.Put("C:\\Arena\\arena.exe", "");
    browser.Set("Games", "Path1", "C:\\Arena");
    browser.Set("Launcher", "QuitAfterStart", 1);
    browser.PutList("q3", {"127.0.0.1:27960"});
    Start();
    browser.SelectRows({1});
    browser.Form().game.mnuServConnectPlay_Click();
    EXPECT_TRUE(InTray());
}

TEST_F(frmMainServicesTest, AMinimisedStartGoesIntoTheTray) {
    browser.Set("General", "WinState", 1);
    Start();
    EXPECT_TRUE(InTray());
}

TEST_F(frmMainServicesTest, WithoutANotificationAreaTheWindowIsNeverLost) {
    Area().absent = true;
    Start();
    Minimize();
    EXPECT_TRUE(browser.window.visible);
    EXPECT_TRUE(browser.window.shownInTaskbar);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(frmMainServicesTest, ShowsItsHelp) {
    Start();
    browser.Form().mnuInfoHelp_Click();
    ASSERT_THAT(browser.fake.help.calls, SizeIs(1));
    EXPECT_EQ(browser.fake.help.calls[0].caller, FakeFormWindow::TheReference);
    EXPECT_EQ(browser.fake.help.calls[0].file, "C:\\Quarn\\..\\Kestrune.chm>Main");
    EXPECT_EQ(browser.fake.help.calls[0].topic, "Progs\\Quarn\\Main.htm");
    browser.Form().Unload();
    EXPECT_THAT(browser.fake.help.calls, SizeIs(1));
}

TEST_F(frmMainServicesTest, EndsInThisOrder) {
    browser.fake.help.windowComes = false;
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    Start();
    browser.Form().countries.EnsureIPDatabase();
    Minimize();
    browser.Form().mnuInfoHelp_Click();
    browser.program.AppLog->Log("test", "error", 5, "");
    browser.fake.prompts.yesNoAnswers = {false};
    browser.fake.prompts.whileOpen = [&] { // the question about the report
        EXPECT_THAT(browser.fake.help.calls, SizeIs(2)) << "help is closed before";
        EXPECT_TRUE(browser.program.IPLocation->Initialized()) << "the countries go later";
        EXPECT_TRUE(InTray()) << "the icon goes later";
        EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 0);
        browser.program.LastGame = 1;
    };
    int deletions = 0;
    Area().whenDeleted = [&] {
        ++deletions;
        EXPECT_FALSE(browser.program.IPLocation->Initialized());
        EXPECT_EQ(browser.program.LastGame, HeadlessBrowser::Q3) << "the selection is recorded before";
        EXPECT_EQ(browser.program.WinState, 1) << "as is the state of the window";
        EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 0) << "the settings are written later";
    };
    browser.Form().Unload();
    EXPECT_EQ(deletions, 1);
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 1);
    EXPECT_EQ(browser.fake.help.calls.back().command, HelpCommand::CloseAll);
    EXPECT_THAT(Area().icons, IsEmpty());
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainServicesTest, OffersTheGameSetupWhenNoGameIsShown) {
    for (int game = 1; game <= 3; ++game)
        browser.Set("Games", "Visible" + std::to_string(game), 0);
    browser.dialogs.inGamSetup = [&](frmGamSetup& form) {
        EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)) << "the message comes first";
        form.chkVisible = 1;
        form.chkVisible_Click();
        form.cmdOK_Click();
    };
    Start();
    EXPECT_EQ(browser.fake.prompts.shown.at(0).text,
              "Quarn has detected that no game has been set up yet.\r\n"
              "Therefore, the game setup menu will be opened now, please set up\r\n"
              "the games to your liking.");
    EXPECT_THAT(browser.dialogs.shown, ElementsAre(FakeModalForms::Shown{"frmGamSetup"}));
    EXPECT_THAT(browser.Controls().trvGames.Children("games"), ElementsAre("q3"));

    browser.Form().Form_Activate();
    EXPECT_THAT(browser.dialogs.shown, SizeIs(1)) << "on the first activation only";
}

TEST_F(frmMainServicesTest, ShowsTheErrorOfTheGameSetup) {
    for (int game = 1; game <= 3; ++game)
        browser.Set("Games", "Visible" + std::to_string(game), 0);
    browser.dialogs.inGamSetup = [](frmGamSetup&) { throw RunTimeError(ErrorNumber::OutOfMemory); };
    Start();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;Form_Activate;7"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(2)) << "the offer and the error";
}

TEST_F(frmMainServicesTest, OffersNoGameSetupWhenTheProgramEndsMeanwhile) {
    browser.fake.files.Remove("C:\\Quarn\\Quarn.ini");
    browser.fake.prompts.whileOpen = [&] { browser.Form().Unload(); };
    Start();
    EXPECT_THAT(browser.dialogs.shown, IsEmpty());
    EXPECT_TRUE(browser.Ended());
}

} // namespace
} // namespace quarn
