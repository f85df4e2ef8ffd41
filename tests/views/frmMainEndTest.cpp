// How the main form ends, and what remains.

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class frmMainEndTest : public ::testing::Test {
  protected:
    HeadlessBrowser browser;
};

TEST_F(frmMainEndTest, EndsWithOneLogEntryAndAllSettings) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("hl");
    browser.window.bounds = {111, 222, 3333, 4444};
    browser.Form().mnuFileQuit_Click();
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
    EXPECT_NE(browser.fake.files.Get("C:\\Quarn\\Quarn.log").find(";0;Application terminated normally\r\n"),
              std::string::npos);
    EXPECT_EQ(browser.Setting("Selection", "LastGame"), "11");
    EXPECT_EQ(browser.Setting("General", "WinLeft"), "111");
    EXPECT_EQ(browser.Setting("General", "WinTop"), "222");
    EXPECT_EQ(browser.Setting("General", "WinWidth"), "3333");
    EXPECT_EQ(browser.Setting("General", "WinHeight"), "4444");
    EXPECT_EQ(browser.Setting("General", "WinState"), "0");
    EXPECT_EQ(browser.Setting("Favorites", "Name2"), "Duels");
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 1);
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Games.ini"), 0);
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(frmMainEndTest, KeepsTheStoredPositionOfAWindowThatIsNotNormal) {
    for (const WindowState state : {WindowState::Minimized, WindowState::Maximized}) {
        HeadlessBrowser other;
        other.Set("General", "WinLeft", 600);
        ASSERT_TRUE(other.Start());
        other.window.state = state;
        other.window.bounds = {-32000, -32000, 160, 30};
        other.Form().Unload();
        EXPECT_EQ(other.Setting("General", "WinLeft"), "600");
        EXPECT_EQ(other.Setting("General", "WinState"), std::to_string(static_cast<int>(state)));
    }
}

TEST_F(frmMainEndTest, RecordsTheNodeThatWasClickedUnlessItIsAFilter) {
    struct Case {
        const char* clicked;
        const char* stored;
    };
    for (const Case& c :
         {Case{"q3", "9"}, Case{"mod2", "13"}, Case{"fav1", "15"}, Case{"games", "1"}, Case{"filters", "3"},
          Case{"fltkey", "9"}, Case{"fltping", "9"}, Case{"png50", "9"}}) {
        HeadlessBrowser other;
        ASSERT_TRUE(other.Start());
        other.ClickNode(c.clicked);
        other.Form().Unload();
        EXPECT_EQ(other.Setting("Selection", "LastGame"), c.stored) << c.clicked;
    }
}

// A right click selects a node and shows no list, and so do keys on a folder.
TEST_F(frmMainEndTest, RecordsTheNodeWhoseListIsShownWhateverIsSelected) {
    for (const char* selected : {"d3", "games", "favorites", "fav1", "fltkey", "png50"}) {
        HeadlessBrowser other;
        ASSERT_TRUE(other.Start());
        other.ClickNode("mod1");
        other.Controls().trvGames.Select(selected);
        other.Form().Unload();
        EXPECT_EQ(other.Setting("Selection", "LastGame"), "12") << selected;
    }
    ASSERT_TRUE(browser.Start());
    browser.Controls().trvGames.SelectNone();
    browser.Form().Unload();
    EXPECT_EQ(browser.Setting("Selection", "LastGame"), "9");
}

TEST_F(frmMainEndTest, RecordsTheListsNodeAlsoWhenPositionsHaveShifted) {
    struct Case {
        const char* shown;
        const char* stored; // d3, position 10, is hidden while a filter is selected
    };
    for (const Case& c :
         {Case{"q3", "9"}, Case{"hl", "10"}, Case{"mod1", "11"}, Case{"fav2", "15"}, Case{"d3", "1"}}) {
        HeadlessBrowser other;
        ASSERT_TRUE(other.Start());
        other.ClickNode(c.shown);
        other.ClickNode("png50");
        other.program.GameVisible[2] = 0;
        other.Form().tree.RefreshTreeView();
        other.Form().Unload();
        EXPECT_EQ(other.Setting("Selection", "LastGame"), c.stored) << c.shown;
    }
}

TEST_F(frmMainEndTest, RecordsTheNodesPositionAsTheTreeIsAtTheEnd) {
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("fav2");
    browser.program.GameVisible[2] = 0;
    browser.Form().tree.RefreshTreeView();
    browser.Form().Unload();
    EXPECT_EQ(browser.Setting("Selection", "LastGame"), "15");
}

TEST_F(frmMainEndTest, SavesNoListAtTheEnd) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    ASSERT_TRUE(browser.Start());
    browser.program.Servers[1].Name = "changed";
    browser.Form().Unload();
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 0);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
}

TEST_F(frmMainEndTest, ReleasesTheCountryDatabaseAtTheEnd) {
    browser.fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n0;4294967295;XX\r\n");
    ASSERT_TRUE(browser.Start());
    browser.Form().countries.EnsureIPDatabase();
    ASSERT_TRUE(browser.program.IPLocation->Initialized());
    browser.Form().Unload();
    EXPECT_FALSE(browser.program.IPLocation->Initialized());
}

TEST_F(frmMainEndTest, OffersAReportAtTheEndOnlyAfterErrors) {
    ASSERT_TRUE(browser.Start());
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    browser.fake.prompts.yesNoAnswers = {false};
    browser.Form().Unload();
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Send error log?");
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(frmMainEndTest, AsksNothingAtTheEndOfTheSession) {
    ASSERT_TRUE(browser.Start());
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    browser.Form().EndSession();
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.Setting("General", "WinState"), "0");
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainEndTest, UnloadsOnceHoweverOftenItIsAsked) {
    ASSERT_TRUE(browser.Start());
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    browser.fake.prompts.yesNoAnswers = {false};
    browser.fake.prompts.whileOpen = [&] {
        browser.Form().Unload();
        browser.Form().EndSession();
    };
    browser.Form().Unload();
    browser.Form().Unload();
    browser.Form().EndSession();
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

// Windows kills the program once its answer is given, so everything is stored by then.
TEST_F(frmMainEndTest, StoresTheSettingsWhenTheSystemEndsDuringTheLastQuestion) {
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("hl");
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    std::string stored;
    std::vector<std::string> log;
    browser.fake.prompts.whileOpen = [&] {
        browser.Form().EndSession();
        stored = browser.Setting("Selection", "LastGame");
        log = browser.LogFile();
        EXPECT_EQ(browser.window.destroyCalls, 1);
    };
    browser.fake.prompts.yesNoAnswers = {true};
    browser.Form().Unload();
    EXPECT_THAT(browser.fake.shell.opened, IsEmpty()) << "the answer came too late";
    EXPECT_EQ(stored, "11");
    EXPECT_THAT(log, ElementsAre("frmMain;Form_Unload;0"));
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 1);
}

TEST_F(frmMainEndTest, AnotherCloseDuringTheLastQuestionSaysNo) {
    ASSERT_TRUE(browser.Start());
    browser.program.AppLog->Log("frmMain", "Something", 5, "failed");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.fake.prompts.whileOpen = [&] { browser.Form().Unload(); };
    browser.Form().Unload();
    EXPECT_THAT(browser.fake.shell.opened, IsEmpty());
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(frmMainEndTest, OpensNoFurtherBoxAndNoDialogOnceItIsClosed) {
    struct Case {
        const char* name;
        void (*run)(HeadlessBrowser& b);
    };
    const Case cases[] = {
        {"no game is set up",
         [](HeadlessBrowser& b) {
             for (const char* key : {"Visible1", "Visible2", "Visible3"})
                 b.Set("Games", key, 0);
             ASSERT_TRUE(b.Start());
         }},
        {"a failed join",
         [](HeadlessBrowser& b) {
             ASSERT_TRUE(b.Start());
             b.SelectRows({1});
             b.Form().game.mnuServConnectPlay_Click();
         }},
        {"a game that is not in the folder",
         [](HeadlessBrowser& b) {
             ASSERT_TRUE(b.Start());
             b.fake.prompts.folderAnswers = {"C:\\Elsewhere"};
             b.dialogs.inGamSetup = [](frmGamSetup& form) { form.cmdBrowse_Click(); };
             b.Form().dialogs.mnuExtrasGameSetup_Click();
         }},
        {"a folder that cannot be renamed",
         [](HeadlessBrowser& b) {
             ASSERT_TRUE(b.Start());
             b.Controls().trvGames.Select("fav1");
             b.fake.prompts.textAnswers = {""};
             b.Form().tree.mnuTreeRename_Click();
         }},
        {"an export",
         [](HeadlessBrowser& b) {
             ASSERT_TRUE(b.Start());
             b.fake.prompts.fileAnswers = {"C:\\out.txt"};
             b.fake.files.FailWrites("C:\\out.txt", ErrorNumber::PermissionDenied);
             b.Form().servers.mnuServerListExport_Click();
         }},
    };
    struct Way {
        const char* name;
        void (*close)(HeadlessBrowser& b);
    };
    const Way ways[] = {
        {"closed", [](HeadlessBrowser& b) { b.Form().Unload(); }},
        {"the menu's quit", [](HeadlessBrowser& b) { b.Form().mnuFileQuit_Click(); }},
        {"the tray's quit", [](HeadlessBrowser& b) { b.Form().mnuSysQuit_Click(); }},
        {"the end of the session", [](HeadlessBrowser& b) { b.Form().EndSession(); }},
    };
    for (const Case& c : cases) {
        for (const Way& way : ways) {
            SCOPED_TRACE(std::string(c.name) + ", " + way.name);
            HeadlessBrowser b;
            b.PutList("q3", HeadlessBrowser::Addresses(3));
            b.fake.prompts.whileOpen = [&] { way.close(b); };
            c.run(b);
            b.fake.events.RunFor(1000);
            EXPECT_THAT(b.fake.prompts.shown, SizeIs(1));
            for (const FakeModalForms::Shown& dialog : b.dialogs.shown)
                EXPECT_EQ(dialog.form, "frmGamSetup");
            EXPECT_THAT(b.dialogs.shown, SizeIs(b.dialogs.inGamSetup ? 1 : 0));
            EXPECT_EQ(b.window.destroyCalls, 1);
            EXPECT_THAT(b.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
            EXPECT_EQ(b.Setting("Favorites", "Name1"), "Friends");
            EXPECT_FALSE(b.fake.files.Has("C:\\out.txt"));
        }
    }
}

// A box that is open outside every command: closing waits until it is gone.
TEST_F(frmMainEndTest, UnloadsAfterABoxThatBelongsToNoCommand) {
    ASSERT_TRUE(browser.Start());
    bool unloadedInTheBox = true;
    browser.fake.prompts.whileOpen = [&] {
        browser.Form().Unload();
        unloadedInTheBox = browser.Ended();
    };
    browser.program.AppLog->ErrorMessage("Something failed.");
    EXPECT_FALSE(unloadedInTheBox);
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainEndTest, RunsNoCommandOnceItIsUnloaded) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    ASSERT_TRUE(browser.Start());
    browser.Form().Unload();
    const std::int32_t writes = browser.fake.files.TotalWrites();
    browser.ClickNode("d3");
    browser.RefreshAll();
    browser.Form().servers.mnuServDelete_Click();
    browser.Form().servers.mnuServerListClear_Click();
    browser.Form().master.mnuServerListGet_Click();
    EXPECT_EQ(browser.fake.files.TotalWrites(), writes);
    EXPECT_THAT(browser.sckServer.sent, IsEmpty());
    EXPECT_THAT(browser.sckMaster.sent, IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(frmMainEndTest, EndsEvenIfTheSettingsCannotBeWritten) {
    ASSERT_TRUE(browser.Start());
    browser.fake.files.FailWrites("C:\\Quarn\\Quarn.ini", ErrorNumber::PermissionDenied);
    browser.Form().Unload();
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainEndTest, CanBeClosedWhileItLoads) {
    browser.PutList("q3", HeadlessBrowser::Addresses(5));
    browser.In(0, [&] { browser.Form().Unload(); });
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(frmMainEndTest, StartsAgainWhereItEnded) {
    browser.PutList("hl", HeadlessBrowser::Addresses(4));
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("hl");
    browser.Form().servers.lvwServers_ColumnClick(4);
    browser.ClickRow(3);
    browser.ClickNode("png50");
    const std::vector<std::string> names = browser.Column(NameColumn);
    browser.Form().Unload();

    HeadlessBrowser next;
    for (const std::string& path : browser.fake.files.Paths())
        next.fake.files.Put(path, browser.fake.files.Get(path));
    ASSERT_TRUE(next.Start());
    EXPECT_EQ(next.Controls().trvGames.SelectedKey(), "hl");
    EXPECT_EQ(next.program.FilterPing, 50);
    EXPECT_EQ(next.program.LastSortColumn, 4);
    EXPECT_EQ(next.program.LastSortOrder, 1);
    EXPECT_EQ(next.Controls().lvwServers.SelectedRow(), 3);
    EXPECT_THAT(next.Errors(), IsEmpty());
}

TEST_F(frmMainEndTest, EndsEvenIfItFailsToUnload) {
    ASSERT_TRUE(browser.Start());
    browser.fake.help.windowComes = false;
    browser.Form().mnuInfoHelp_Click();
    browser.fake.help.fault = ErrorNumber::FileNotFound;
    browser.Form().Unload();
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.Errors().back(), "frmMain;Form_Unload;53");
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
}

TEST_F(frmMainEndTest, ShowsNoMessageBoxIfItFailsAtTheEndOfTheSession) {
    ASSERT_TRUE(browser.Start());
    browser.fake.help.windowComes = false;
    browser.Form().mnuInfoHelp_Click();
    browser.fake.help.fault = ErrorNumber::FileNotFound;
    browser.Form().EndSession();
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_EQ(browser.Errors().back(), "frmMain;Form_Unload;53");
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(frmMainEndTest, HasSavedOnlyTheListsThatWereLeft) {
    const std::vector<std::string> servers = HeadlessBrowser::Addresses(4);
    browser.PutList("q3", servers);
    browser.PutServers(servers);
    ASSERT_TRUE(browser.Start());
    browser.fake.prompts.yesNoAnswers = {true, true};
    browser.fake.prompts.fileAnswers = {"C:\\out.txt"};
    browser.RefreshAll();
    browser.ClickNode("fltkey");
    browser.ClickNode("png50");
    browser.Form().servers.lvwServers_ColumnClick(6);
    browser.SelectRows({1});
    browser.Form().servers.mnuServDelete_Click();
    browser.Form().servers.AddServer("192.0.2.1", "1");
    browser.Form().countries.mnuRecheckCountries_Click();
    browser.Form().servers.mnuServerListExport_Click();
    browser.Form().servers.mnuServerListClear_Click();
    browser.Form().master.mnuServerListGet_Click();
    browser.Form().tree.RefreshTreeView();
    browser.fake.prompts.yesNoAnswers = {false};
    browser.Form().Unload();
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("q3")), HeadlessBrowser::ListFile(servers));
    for (const std::string& path : browser.fake.files.Paths())
        EXPECT_TRUE(path == HeadlessBrowser::PathOf("q3") || path.find("servers-") == std::string::npos)
            << path;
}

} // namespace
} // namespace quarn
