// Start-up, activation and resizing of the main form, and its toolbar.

#include "core/Version.h"
#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/HeadlessBrowser.h"
#include "views/LayoutRules.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::SizeIs;

const std::string Caption = std::string("Quarn ") + VersionText;

class frmMainTest : public ::testing::Test {
  protected:
    HeadlessBrowser browser;
};

TEST_F(frmMainTest, LoadsInThisOrderWithoutAnError) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    ASSERT_TRUE(browser.Start());
    EXPECT_THAT(browser.LogFile(), ElementsAre("modMain;Main;0", "frmMain;Form_Load;0"));
    EXPECT_EQ(browser.fake.files.Get("C:\\Quarn\\Quarn.log").substr(0, 13), "modMain;Main;");
    EXPECT_THAT(browser.TreeKeys(),
                ElementsAre("games", "favorites", "filters", "fltkey", "fltping", "png20", "png50", "png100",
                            "q3", "d3", "hl", "mod1", "mod2", "mod3", "fav1", "fav2"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1", "Server 2", "Server 3"));
    EXPECT_EQ(browser.Message(), "Ready.");
    EXPECT_EQ(browser.Count(), "3 servers");
    EXPECT_EQ(browser.window.caption, Caption);
    EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(frmMainTest, StartsWithoutAnyFile) {
    browser.fake.files.Remove("C:\\Quarn\\Games.ini");
    browser.fake.files.Remove("C:\\Quarn\\Quarn.ini");
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.Count(), "0 servers");
    EXPECT_EQ(browser.Controls().tmrTimeout.Interval(), 1000);
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1)); // no game is set up
}

TEST_F(frmMainTest, ShowsNoWindowWhenAnotherInstanceRuns) {
    browser.fake.system.alreadyRunning = true;
    EXPECT_FALSE(browser.Start());
    EXPECT_THAT(browser.LogFile(), ElementsAre("modMain;Main;0", "modMain;Main;0"));
    EXPECT_EQ(browser.window.caption, "");
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 0);
}

TEST_F(frmMainTest, ExpandsTheFixedFoldersAndTheSelectedNode) {
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"games", "favorites", "filters", "fltping", "q3"})
        EXPECT_TRUE(browser.Controls().trvGames.Node(key).expanded) << key;
    for (const char* key : {"fltkey", "png20", "d3", "mod1", "fav1"})
        EXPECT_FALSE(browser.Controls().trvGames.Node(key).expanded) << key;
}

TEST_F(frmMainTest, SelectsTheNodeOfTheLastRun) {
    struct Case {
        std::int32_t stored;
        const char* selected;
        std::int32_t position;
    };
    for (const Case& c : {Case{9, "q3", 9}, Case{10, "d3", 10}, Case{12, "mod1", 12}, Case{16, "fav2", 16},
                          Case{1, "games", 1}, Case{2, "favorites", 2}, Case{3, "filters", 3},
                          Case{17, "games", 1}, Case{2147483647, "games", 1}, Case{0, "games", 1},
                          Case{-1, "games", 1}, Case{-2147483647, "games", 1}}) {
        HeadlessBrowser other;
        other.Set("Selection", "LastGame", c.stored);
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.Controls().trvGames.SelectedKey(), c.selected) << c.stored;
        EXPECT_EQ(other.program.LastGame, c.position) << c.stored;
        EXPECT_THAT(other.Errors(), IsEmpty()) << c.stored;
    }
}

TEST_F(frmMainTest, ShowsTheListOfTheSelectedNode) {
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    browser.PutList("fav1", HeadlessBrowser::Addresses(1));
    browser.Set("Selection", "LastGame", 15);
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.program.CurrentGame, "fav1");
    EXPECT_EQ(browser.RowCount(), 1);
    EXPECT_FALSE(browser.Controls().tbMain.buttons[10].enabled);
}

TEST_F(frmMainTest, ChecksTheFiltersOfTheLastRun) {
    struct Case {
        std::int32_t locked;
        std::int32_t ping;
        std::vector<std::string> checked;
    };
    for (const Case& c :
         {Case{0, 0, {}}, Case{1, 0, {"fltkey"}}, Case{-7, 20, {"fltkey", "png20"}}, Case{0, 50, {"png50"}},
          Case{0, 100, {"png100"}}, Case{0, 1, {}}, Case{0, 30, {}}, Case{0, -20, {}}}) {
        HeadlessBrowser other;
        other.Set("Filter", "Locked", c.locked);
        other.Set("Filter", "Ping", c.ping);
        ASSERT_TRUE(other.Start());
        std::vector<std::string> checked;
        for (const char* key : {"fltkey", "png20", "png50", "png100"}) {
            const TreeNode& node = other.Controls().trvGames.Node(key);
            EXPECT_EQ(node.image, node.selectedImage) << key;
            EXPECT_TRUE(node.image == "checked" || node.image == "unchecked") << key;
            if (node.image == "checked")
                checked.push_back(key);
        }
        EXPECT_EQ(checked, c.checked) << c.locked << " " << c.ping;
    }
}

TEST_F(frmMainTest, SortsAsInTheLastRun) {
    struct Case {
        std::int32_t column;
        std::int32_t order;
        std::vector<std::string> pings;
        const char* arrow;
    };
    for (const Case& c :
         {Case{6, 0, {"7", "50", "100"}, "ascending"}, Case{6, 1, {"100", "50", "7"}, "descending"},
          Case{4, 0, {"100", "50", "7"}, "ascending"}, Case{4, 1, {"7", "50", "100"}, "descending"},
          Case{6, -3, {"100", "50", "7"}, "descending"}}) {
        HeadlessBrowser other;
        other.Set("Selection", "LastSortColumn", c.column);
        other.Set("Selection", "LastSortOrder", c.order);
        other.fake.files.Put(HeadlessBrowser::PathOf("q3"),
                             "3\r\n127.0.0.1;1;--;b;50;0;0;;;0;;;\r\n127.0.0.1;2;--;c;7;0;0;;;0;;;\r\n"
                             "127.0.0.1;3;--;A;100;0;0;;;0;;;\r\n");
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.Column(PingColumn), c.pings) << c.column << " " << c.order;
        EXPECT_EQ(other.Controls().lvwServers.columns[c.column].headerIcon, c.arrow);
        EXPECT_EQ(other.program.LastSortColumn, c.column);
        EXPECT_EQ(other.program.LastSortOrder, c.order == 0 ? 0 : 1);
    }
}

TEST_F(frmMainTest, LoadsEvenIfItCannotSortAsInTheLastRun) {
    for (const std::int32_t column : {0, -1, 10, 32768, 65537, 65546, 2147483647, -2147483647}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(2));
        other.Set("Selection", "LastSortColumn", column);
        ASSERT_TRUE(other.Start());
        EXPECT_THAT(other.Errors(), ElementsAre("clsQuickList;SortList;9")) << column;
        EXPECT_EQ(other.RowCount(), 2) << column;
        EXPECT_THAT(other.LogFile(), ::testing::Contains("frmMain;Form_Load;0"));
    }
}

TEST_F(frmMainTest, KeepsTheStoredSortWhenItCannotSortAsInTheLastRun) {
    struct Case {
        std::int32_t column;
        std::int32_t order;
    };
    for (const Case& c : {Case{9, 0}, Case{9, 1}, Case{0, 1}, Case{10, 0}, Case{-1, 0}, Case{9, 7}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(2)); // no server was visited: no date to sort by
        other.Set("Selection", "LastSortColumn", c.column);
        other.Set("Selection", "LastSortOrder", c.order);
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.program.LastSortColumn, c.column);
        EXPECT_EQ(other.program.LastSortOrder, c.order);
        other.Form().servers.lvwServers_ColumnClick(6); // the user's own click counts
        EXPECT_EQ(other.program.LastSortColumn, 6);
    }
}

TEST_F(frmMainTest, SelectsTheServerOfTheLastRun) {
    struct Case {
        std::int32_t stored;
        std::int32_t selected;
    };
    for (const Case& c : {Case{1, 1}, Case{3, 3}, Case{4, 0}, Case{0, 0}, Case{-1, 0}, Case{2147483647, 0},
                          Case{-2147483647, 0}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(3));
        other.Set("Selection", "LastServer", c.stored);
        ASSERT_TRUE(other.Start());
        ListView& list = other.Controls().lvwServers;
        EXPECT_EQ(list.SelectedRow(), c.selected) << c.stored;
        EXPECT_EQ(list.TakeChanges().ensureVisible, c.selected == 0 ? 1 : c.selected) << c.stored;
    }
}

TEST_F(frmMainTest, ShowsTheDetailsOfTheServerOfTheLastRun) {
    std::string list = HeadlessBrowser::ListFile(HeadlessBrowser::Addresses(3));
    list.replace(list.rfind(";;;"), 3, ";;\\a\\1;");
    browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), list);
    browser.Set("Selection", "LastServer", 3);
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.program.CurrentServer, 3);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), ElementsAre("a|1"));
}

// The window gets its size after it was loaded, in its first activation.
TEST_F(frmMainTest, ScrollsToTheServerOfTheLastRunWhenTheWindowHasItsSize) {
    for (const std::int32_t winState : {0, 1, 2}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(3));
        other.Set("Selection", "LastServer", 3);
        other.Set("General", "WinState", winState);
        other.Set("General", "RemWinPos", 1);
        other.window.whenSized = [&] { other.Controls().lvwServers.TakeChanges(); };
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.Controls().lvwServers.TakeChanges().ensureVisible, 3) << winState;
    }
}

TEST_F(frmMainTest, CountsTheServerOfTheLastRunInTheSortedList) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    browser.Set("Selection", "LastSortColumn", 6);
    browser.Set("Selection", "LastSortOrder", 1);
    browser.Set("Selection", "LastServer", 1);
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.Cell(browser.Controls().lvwServers.SelectedRow(), NameColumn), "Server 3");
}

TEST_F(frmMainTest, KeepsTheWindowOnTopOnlyForExactlyOne) {
    for (const std::int32_t value : {0, 1, 2, -1, 2147483647}) {
        HeadlessBrowser other;
        other.Set("General", "KeepOnTop", value);
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.window.topMost, value == 1) << value;
        other.program.KeepOnTop = 1;
        other.Form().RefreshInterface();
        EXPECT_TRUE(other.window.topMost);
        other.program.KeepOnTop = 0;
        other.Form().RefreshInterface();
        EXPECT_FALSE(other.window.topMost);
    }
}

TEST_F(frmMainTest, TicksAtTheTimeOutOrOnceASecondWithoutOne) {
    struct Case {
        std::int32_t stored;
        std::int32_t interval;
    };
    for (const Case& c : {Case{250, 250}, Case{1, 1}, Case{70000, 70000}, Case{0, 1000}, Case{-1, 1000},
                          Case{-2147483647, 1000}}) {
        HeadlessBrowser other;
        other.Set("Scanning", "PingTimeout", c.stored);
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.Controls().tmrTimeout.Interval(), c.interval) << c.stored;
        EXPECT_EQ(other.program.PingTimeout, c.stored);
    }
}

TEST_F(frmMainTest, AppliesANewTimeOutWithTheInterface) {
    ASSERT_TRUE(browser.Start());
    browser.program.PingTimeout = 333;
    browser.Form().RefreshInterface();
    EXPECT_EQ(browser.Controls().tmrTimeout.Interval(), 333);
}

TEST_F(frmMainTest, RestoresTheWindowOnItsFirstActivation) {
    struct Case {
        std::int32_t winState;
        std::int32_t remWinPos;
        WindowState state;
        TwipsRect bounds;
    };
    const TwipsRect design = {0, 0, 13500, 9600};
    const TwipsRect stored = {600, 700, 9000, 8000};
    const TwipsRect centred = {28800 / 2 - 13500 / 2, 16200 / 2 - 9600 / 2, 13500, 9600};
    for (const Case& c :
         {Case{0, 0, WindowState::Normal, centred}, Case{0, 1, WindowState::Normal, stored},
          Case{0, 2, WindowState::Normal, centred}, Case{0, -1, WindowState::Normal, centred},
          Case{1, 1, WindowState::Minimized, stored}, Case{2, 1, WindowState::Maximized, stored},
          Case{1, 0, WindowState::Minimized, design}, Case{2, 0, WindowState::Maximized, design},
          Case{3, 1, WindowState::Normal, stored}, Case{-1, 0, WindowState::Normal, centred}}) {
        HeadlessBrowser other;
        other.Set("General", "WinState", c.winState);
        other.Set("General", "RemWinPos", c.remWinPos);
        other.Set("General", "WinLeft", stored.left);
        other.Set("General", "WinTop", stored.top);
        other.Set("General", "WinWidth", stored.width);
        other.Set("General", "WinHeight", stored.height);
        ASSERT_TRUE(other.Start());
        EXPECT_EQ(other.window.state, c.state) << c.winState;
        EXPECT_EQ(other.window.bounds, c.bounds) << c.winState << " " << c.remWinPos;
    }
}

TEST_F(frmMainTest, DoesItsWorkOnTheFirstActivationOnly) {
    ASSERT_TRUE(browser.Start());
    browser.window.bounds = {1, 2, 3, 4};
    const std::int32_t calls = browser.window.boundsCalls;
    browser.Form().Form_Activate();
    EXPECT_EQ(browser.window.boundsCalls, calls);
    EXPECT_EQ(browser.window.bounds, (TwipsRect{1, 2, 3, 4}));
}

// A message box that closes activates the window again, in the middle of the first activation.
TEST_F(frmMainTest, AnActivationInsideTheFirstDoesNothing) {
    for (const char* key : {"Visible1", "Visible2", "Visible3"})
        browser.Set("Games", key, 0);
    browser.fake.prompts.whileOpen = [&] { browser.Form().Form_Activate(); };
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.window.boundsCalls, 1);
    EXPECT_THAT(browser.dialogs.shown, SizeIs(1));
}

TEST_F(frmMainTest, ShowsOnceThatNoGameIsSetUp) {
    for (const char* key : {"Visible1", "Visible2", "Visible3"})
        browser.Set("Games", key, 0);
    ASSERT_TRUE(browser.Start());
    browser.Form().Form_Activate();
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    const FakePrompts::Prompt& prompt = browser.fake.prompts.shown[0];
    EXPECT_EQ(prompt.kind, FakePrompts::Kind::Error);
    EXPECT_EQ(prompt.title, "Quarn - Error");
    EXPECT_EQ(prompt.text, "Quarn has detected that no game has been set up yet.\r\n"
                           "Therefore, the game setup menu will be opened now, please set up\r\n"
                           "the games to your liking.");
}

TEST_F(frmMainTest, PlacesTheProgressBarIntoItsPanelOnActivationAndResize) {
    ASSERT_TRUE(browser.Start());
    StatusPanel& panel = browser.Controls().sbMain.panels[ProgressPanel];
    panel.left = 3000;
    panel.width = 2000;
    browser.Controls().sbMain.top = 9000;
    browser.Controls().sbMain.height = 375;
    browser.Form().Form_Resize();
    EXPECT_EQ(browser.Controls().pbScanning.bounds, (TwipsRect{3025, 9045, 1955, 300}));
    EXPECT_TRUE(browser.Controls().pbScanning.flat);

    HeadlessBrowser other;
    other.Set("General", "WinState", 1); // minimised: no layout
    ASSERT_TRUE(other.Start());
    EXPECT_TRUE(other.Controls().pbScanning.inFront);
}

TEST_F(frmMainTest, LaysItsListsOutWhenItIsResized) {
    ASSERT_TRUE(browser.Start());
    browser.Controls().tbMain.height = 400;
    browser.window.innerSize = {12345, 6789};
    browser.Form().Form_Resize();
    EXPECT_EQ(browser.Controls().layout, LayOut({12345, 6789}, 400));
    browser.window.innerSize = {160, 0};
    browser.Form().Form_Resize();
    EXPECT_EQ(browser.Controls().layout.lvwPlayers.height, 0);
}

TEST_F(frmMainTest, LaysNothingOutWhileItIsMinimised) {
    ASSERT_TRUE(browser.Start());
    const MainLayout before = browser.Controls().layout;
    browser.window.innerSize = {0, 0};
    browser.window.SetState(WindowState::Minimized);
    EXPECT_EQ(browser.Controls().layout, before);
}

TEST_F(frmMainTest, ShowsTitleAndVersionInItsCaption) {
    ASSERT_TRUE(browser.Start());
    for (const std::int32_t minToTray : {1, -1, 7}) {
        browser.window.caption = "x";
        browser.program.MinToTray = minToTray;
        browser.Form().Form_Resize();
        EXPECT_EQ(browser.window.caption, Caption) << minToTray;
    }
    browser.window.caption = "x";
    browser.program.MinToTray = 0;
    browser.Form().Form_Resize();
    EXPECT_EQ(browser.window.caption, "x");

    HeadlessBrowser withoutTray;
    withoutTray.Set("General", "MinToTray", 0);
    ASSERT_TRUE(withoutTray.Start());
    EXPECT_EQ(withoutTray.window.caption, Caption) << "from the start";
}

TEST_F(frmMainTest, ShowsErrorsWhileItLoadsAndContinues) {
    browser.window.fault = ErrorNumber::InvalidPropertyValue;
    ASSERT_TRUE(browser.Start());
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;Form_Load;380", "frmMain;Form_Activate;380"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(2));
    browser.window.fault.reset();
    browser.fake.prompts.yesNoAnswers = {false};
    browser.Form().Unload();
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

} // namespace
} // namespace quarn
