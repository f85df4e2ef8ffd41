// Joining and monitoring the selected server, from the whole browser.

#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Velmar = "C:\\Quarn\\..\\Velmar\\Velmar.exe";

class GameCommandsTest : public ::testing::Test {
  protected:
    GameCommandsTest() {
        browser.Set("Games", "Path1", "C:\\Games\\Arena");
        browser.Set("Games", "Path3", "C:\\Games\\Crowbar\\");
        browser.Set("General", "MinToTray", 0);
        browser.fake.files.Put("C:\\Games\\Arena\\arena.exe", "");
        browser.fake.files.Put("C:\\Games\\Crowbar\\crowbar.exe", "");
        browser.PutList("q3", {"127.0.0.1:27960", "127.0.0.2:27961", "127.0.0.3:27962"});
        browser.PutList("hl", {"10.0.0.1:27015"});
    }

    void Start() { ASSERT_TRUE(browser.Start()); }
    GameCommands& Commands() { return browser.Form().game; }
    ServerRecord& Server(std::int32_t index) { return browser.program.Servers[index]; }
    std::vector<std::string> Started() const {
        std::vector<std::string> started;
        for (const Shell::Request& request : browser.fake.shell.opened)
            started.push_back(request.file + " " + request.parameters);
        return started;
    }
    std::vector<std::string> Dialogs() const {
        std::vector<std::string> names;
        for (const FakeModalForms::Shown& dialog : browser.dialogs.shown)
            names.push_back(dialog.form);
        return names;
    }
    static std::string ArenaLine(const std::string& address) {
        return "C:\\Games\\Arena\\arena.exe +set fs_game baseq3 +exec  +name  +set password  +connect " +
               address;
    }

    HeadlessBrowser browser;
};

TEST_F(GameCommandsTest, JoinsTheSelectedServerAsPlayerOrSpectator) {
    Start();
    browser.SelectRows({2});
    Commands().mnuServConnectPlay_Click();
    Commands().mnuServConnectSpec_Click();
    EXPECT_THAT(Started(),
                ElementsAre(ArenaLine("127.0.0.2:27961"), ArenaLine("127.0.0.2:27961") + " +setu team s"));
    EXPECT_EQ(browser.fake.files.Get("server.txt"), "Server 2 127.0.0.2:27961\r\n");
    EXPECT_EQ(browser.program.GamePath[1], "C:\\Games\\Arena\\");
    EXPECT_THAT(Dialogs(), IsEmpty());
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsTest, JoinsFromTheToolbar) {
    Start();
    browser.SelectRows({3});
    browser.Form().tbMain_ButtonClick("join");
    EXPECT_THAT(Started(), ElementsAre(ArenaLine("127.0.0.3:27962")));
}

TEST_F(GameCommandsTest, JoinsTheRowThatIsDoubleClicked) {
    Start();
    browser.SelectRows({1, 3});
    const ListView& list = browser.Controls().lvwServers;
    browser.Form().lvwServers_DblClick(list.Row(2).identity);
    EXPECT_THAT(Started(), ElementsAre(ArenaLine("127.0.0.2:27961")));
    EXPECT_EQ(list.SelectedRow(), 1); // where the user, or a scan, has gone on since

    browser.Form().lvwServers_DblClick(0);
    browser.Form().lvwServers_DblClick(4711);
    EXPECT_THAT(Started(), SizeIs(1)) << "no such row";
}

TEST_F(GameCommandsTest, FocusDecidesAmongSeveralSelectedRows) {
    Start();
    browser.SelectRows({3, 1, 2});
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(Started(), ElementsAre(ArenaLine("127.0.0.3:27962")));
}

TEST_F(GameCommandsTest, DoesNothingWithoutASelectedServer) {
    Start();
    browser.SelectRows({});
    Commands().mnuServConnectPlay_Click();
    Commands().mnuServConnectSpec_Click();
    Commands().mnuServMonitor_Click();
    browser.Form().dialogs.mnuServSetPass_Click();
    browser.ClickNode("games");
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_THAT(Dialogs(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_FALSE(browser.fake.files.Has("server.txt"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsTest, RecordsTheVisitInRecordAndRow) {
    Start();
    browser.SelectRows({2});
    browser.fake.clock.SetNow({2026, 12, 24, 18, 30, 5}, 999);
    Commands().mnuServConnectPlay_Click();
    EXPECT_EQ(Server(2).LastVisit, DateTime::From({2026, 12, 24, 18, 30, 5}));
    EXPECT_EQ(browser.Cell(2, LastVisitColumn), "12/24/2026 6:30:05 PM");
    EXPECT_EQ(browser.Cell(1, LastVisitColumn), "");
    EXPECT_TRUE(Server(1).LastVisit.IsZero());
}

TEST_F(GameCommandsTest, AFailedLaunchCountsAsAVisitAndOpensTheGameSetup) {
    for (const std::int32_t afterwards : {0, 1, 2}) {
        HeadlessBrowser another;
        another.Set("Launcher", "QuitAfterStart", afterwards);
        another.PutList("q3", {"127.0.0.1:27960"});
        ASSERT_TRUE(another.Start());
        another.SelectRows({1});
        another.Form().game.mnuServConnectSpec_Click();
        EXPECT_FALSE(another.program.Servers[1].LastVisit.IsZero());
        EXPECT_NE(another.Cell(1, LastVisitColumn), "");
        EXPECT_THAT(another.fake.prompts.shown, SizeIs(1));
        EXPECT_THAT(another.dialogs.shown, ElementsAre(FakeModalForms::Shown{"frmGamSetup", false}));
        EXPECT_THAT(another.window.statesSet, IsEmpty());
        EXPECT_FALSE(another.Ended());
        EXPECT_EQ(another.program.GamePath[1], "\\");
    }
}

TEST_F(GameCommandsTest, TheGameSetupThatFollowsBeginsWithTheGameThatFailed) {
    browser.PutList("d3", {"127.0.0.1:27960"});
    browser.dialogs.inGamSetup = [&](frmGamSetup& form) { EXPECT_EQ(form.SelectedGame(), "d3"); };
    Start();
    browser.ClickNode("d3");
    browser.SelectRows({1});
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(browser.dialogs.shown, ElementsAre(FakeModalForms::Shown{"frmGamSetup", false}));
}

TEST_F(GameCommandsTest, TheGameSetupThatFollowsCanCorrectThePath) {
    browser.Set("Games", "Path1", "D:\\gone");
    browser.dialogs.inGamSetup = [&](frmGamSetup& form) {
        EXPECT_EQ(form.txtPath, "D:\\gone\\");
        browser.fake.prompts.folderAnswers.push_back("C:\\Games\\Arena");
        form.cmdBrowse_Click();
        form.cmdOK_Click();
    };
    Start();
    browser.SelectRows({1});
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(Started(), IsEmpty());
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(Started(), ElementsAre(ArenaLine("127.0.0.1:27960")));
}

TEST_F(GameCommandsTest, ActsAfterTheLaunchAsTheUserChose) {
    const struct {
        std::int32_t setting;
        bool minimized;
        bool ended;
    } cases[] = {
        {0, false, false}, {1, true, false},   {2, false, true},
        {3, false, false}, {-1, false, false}, {std::numeric_limits<std::int32_t>::max(), false, false},
    };
    for (const auto& c : cases) {
        HeadlessBrowser another;
        another.fake.files.Put("C:\\Games\\Arena\\arena.exe", "");
        another.PutList("q3", {"127.0.0.1:27960"});
        ASSERT_TRUE(another.Start());
        another.program.GamePath[1] = "C:\\Games\\Arena";
        another.program.QuitAfterStart = c.setting;
        another.program.MinToTray = 0;
        another.SelectRows({1});
        another.Form().game.mnuServConnectPlay_Click();
        EXPECT_THAT(another.fake.shell.opened, SizeIs(1));
        EXPECT_EQ(another.window.state == WindowState::Minimized, c.minimized) << c.setting;
        EXPECT_EQ(another.Ended(), c.ended) << c.setting;
        if (c.ended) {
            EXPECT_THAT(another.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
            EXPECT_EQ(another.Setting("Games", "Path1"), "C:\\Games\\Arena\\");
        }
    }
}

TEST_F(GameCommandsTest, AServerWithPasswordIsJoinedWithTheOneThatWasEntered) {
    browser.dialogs.inSetPassword = [](frmSetPassword& form) {
        form.txtPass = "open sesame";
        form.cmdOK_Click();
    };
    Start();
    browser.SelectRows({2});
    browser.Form().dialogs.mnuServSetPass_Click();
    browser.SelectRows({1});
    Commands().mnuServConnectPlay_Click();
    browser.SelectRows({2});
    Commands().mnuServConnectPlay_Click();
    EXPECT_THAT(
        Started(),
        ElementsAre(ArenaLine("127.0.0.1:27960"),
                    "C:\\Games\\Arena\\arena.exe +set fs_game baseq3 +exec  +name  +set password open "
                    "sesame +connect 127.0.0.2:27961"));
}

TEST_F(GameCommandsTest, StartsTheGameOfTheListShown) {
    Start();
    browser.ClickNode("hl");
    browser.SelectRows({1});
    Commands().mnuServConnectSpec_Click();
    EXPECT_THAT(Started(),
                ElementsAre("C:\\Games\\Crowbar\\crowbar.exe +connect 10.0.0.1:27015 -game baseq3 -s"));
}

TEST_F(GameCommandsTest, LogsAndShowsErrors) {
    Start();
    browser.SelectRows({1});
    browser.Controls().lvwServers.Edit(1).main.tag = "x";
    Commands().mnuServConnectPlay_Click();
    Commands().mnuServConnectSpec_Click();
    EXPECT_THAT(browser.Errors(),
                ElementsAre("frmMain;mnuServConnectPlay_Click;13", "frmMain;mnuServConnectSpec_Click;13"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(2));
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_THAT(Dialogs(), IsEmpty());
    EXPECT_TRUE(Server(1).LastVisit.IsZero());
}

TEST_F(GameCommandsTest, AStaleRowJoinsNothing) {
    Start();
    browser.SelectRows({3});
    browser.Controls().lvwServers.Edit(3).main.tag = "4"; // as after a delete, until the next listing
    Commands().mnuServConnectPlay_Click();
    Commands().mnuServMonitor_Click();
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsTest, DuringAScanJoinsWhatTheUserSelected) {
    browser.PutServers({"127.0.0.1:27960", "127.0.0.2:27961"}); // 3 never answers
    Start();
    browser.In(500, [&] { // server 3 is being queried
        EXPECT_EQ(browser.program.CurrentServer, 3);
        browser.SelectRows({1});
        Commands().mnuServConnectPlay_Click();
    });
    browser.RefreshAll();
    EXPECT_THAT(Started(), ElementsAre(ArenaLine("127.0.0.1:27960")));
    EXPECT_FALSE(Server(1).LastVisit.IsZero());
    EXPECT_TRUE(Server(3).LastVisit.IsZero());
    EXPECT_EQ(Server(3).Ping, 1000) << "the time-out belongs to the server that was asked";
    EXPECT_EQ(Server(1).Players, 0);
}

TEST_F(GameCommandsTest, SendsTheSelectedServerToVelmar) {
    browser.fake.peers.versions[Velmar] = {2, 1, 5};
    browser.fake.peers.openWindows = {"Velmar 215"};
    Start();
    browser.SelectRows({2});
    Commands().mnuServMonitor_Click();
    browser.Form().tbMain_ButtonClick("monitor");
    ASSERT_THAT(browser.fake.peers.received, SizeIs(2));
    EXPECT_EQ(browser.fake.peers.received[0].payload, std::string("ConGam:127.0.0.2:27961\0", 23));
    EXPECT_EQ(browser.fake.peers.received[1].payload, browser.fake.peers.received[0].payload);
    EXPECT_TRUE(Server(2).LastVisit.IsZero());
}

TEST_F(GameCommandsTest, MonitoringShowsNoErrors) {
    Start();
    browser.SelectRows({1});
    Commands().mnuServMonitor_Click(); // no Velmar
    EXPECT_THAT(browser.Errors(), IsEmpty());
    browser.fake.shell.openFault = ErrorNumber::OutOfMemory;
    Commands().mnuServMonitor_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServMonitor_Click;7"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

} // namespace
} // namespace quarn
