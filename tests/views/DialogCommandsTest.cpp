// The commands that open dialogs, and the effect of the dialogs on the main window.

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
using Shown = FakeModalForms::Shown;

class DialogCommandsTest : public ::testing::Test {
  protected:
    DialogCommandsTest() { browser.PutList("q3", {"127.0.0.1:27960", "127.0.0.2:27960"}); }

    void Start() {
        ASSERT_TRUE(browser.Start());
        browser.SelectRows({1});
    }
    DialogCommands& Commands() { return browser.Form().dialogs; }

    HeadlessBrowser browser;
};

TEST_F(DialogCommandsTest, OpenEachDialog) {
    Start();
    Commands().mnuServSetPass_Click();
    Commands().mnuServAdd_Click();
    Commands().mnuTreeAddServer_Click("q3");
    Commands().mnuExtrasGameSetup_Click();
    Commands().mnuExtrasOptions_Click();
    Commands().mnuInfoAbout_Click();
    EXPECT_THAT(browser.dialogs.shown,
                ElementsAre(Shown{"frmSetPassword"}, Shown{"frmAddServer"}, Shown{"frmAddServer"},
                            Shown{"frmGamSetup"}, Shown{"frmOptions"}, Shown{"frmAbout"}));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(DialogCommandsTest, ShowTheErrorOfADialog) {
    Start();
    const auto fail = [](auto&) { throw RunTimeError(ErrorNumber::OutOfMemory); };
    browser.dialogs.inSetPassword = fail;
    browser.dialogs.inAddServer = fail;
    browser.dialogs.inGamSetup = fail;
    browser.dialogs.inOptions = fail;
    browser.dialogs.inAbout = fail;
    Commands().mnuServSetPass_Click();
    Commands().mnuServAdd_Click();
    Commands().mnuExtrasGameSetup_Click();
    Commands().mnuExtrasOptions_Click();
    Commands().mnuInfoAbout_Click();
    EXPECT_THAT(browser.Errors(),
                ElementsAre("frmMain;mnuServSetPass_Click;7", "frmMain;mnuServAdd_Click;7",
                            "frmMain;mnuExtrasGameSetup_Click;7", "frmMain;mnuExtrasOptions_Click;7",
                            "frmMain;mnuInfoAbout_Click;7"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(5));
}

TEST_F(DialogCommandsTest, DialogsAreTopMostIfTheMainWindowIs) {
    for (const std::int32_t keepOnTop : {0, 1, 2, -1}) {
        HeadlessBrowser another;
        another.Set("General", "KeepOnTop", keepOnTop);
        another.PutList("q3", {"127.0.0.1:27960"});
        ASSERT_TRUE(another.Start());
        another.SelectRows({1});
        DialogCommands& commands = another.Form().dialogs;
        commands.mnuInfoAbout_Click();
        commands.mnuExtrasOptions_Click();
        commands.mnuExtrasGameSetup_Click();
        commands.mnuServSetPass_Click();
        commands.mnuServAdd_Click();
        another.Form().game.mnuServConnectPlay_Click(); // no executable: the game setup
        const bool onTop = keepOnTop == 1;
        EXPECT_THAT(another.dialogs.shown,
                    ElementsAre(Shown{"frmAbout", onTop}, Shown{"frmOptions", onTop},
                                Shown{"frmGamSetup", onTop}, Shown{"frmSetPassword", onTop},
                                Shown{"frmAddServer", onTop}, Shown{"frmGamSetup", onTop}));
    }
}

TEST_F(DialogCommandsTest, AddServerAddsOneAfterAnother) {
    browser.fake.hosts.addresses["one.example"] = "127.0.0.8";
    browser.dialogs.inAddServer = [](frmAddServer& form) {
        form.txtIP = "one.example";
        form.txtPort = "1";
        form.cmdOK_Click();
        form.txtPort = "2";
        form.cmdOK_Click();
    };
    Start();
    Commands().mnuServAdd_Click();
    EXPECT_THAT(browser.Column(AddressColumn),
                ElementsAre("127.0.0.1:27960", "127.0.0.2:27960", "127.0.0.8:1", "127.0.0.8:2"));
}

TEST_F(DialogCommandsTest, AddServerNamesTheListAndBringsTheNewRowIntoView) {
    struct Case {
        const char* shown;
        const char* list;
    };
    for (const Case& c :
         {Case{"q3", "Arena"}, Case{"mod1", "Arena"}, Case{"fav2", "Duels"}, Case{"games", "Games"}}) {
        HeadlessBrowser another;
        another.PutList("q3", HeadlessBrowser::Addresses(50));
        ASSERT_TRUE(another.Start());
        another.ClickNode(c.shown);
        std::string label;
        another.dialogs.inAddServer = [&](frmAddServer& form) {
            label = form.lblList;
            another.Controls().lvwServers.TakeChanges();
            form.txtIP = "5.example";
            another.fake.hosts.addresses["5.example"] = "10.0.0.5";
            form.txtPort = "5";
            form.cmdOK_Click();
            EXPECT_EQ(form.lblMessage, "Added 10.0.0.5:5.");
        };
        another.Form().dialogs.mnuServAdd_Click();
        EXPECT_EQ(label, std::string("The server is added to the list \"") + c.list + "\".");
        EXPECT_EQ(another.Cell(another.RowCount(), AddressColumn), "10.0.0.5:5");
        EXPECT_EQ(another.Controls().lvwServers.TakeChanges().ensureVisible, another.RowCount()) << c.shown;
    }
}

TEST_F(DialogCommandsTest, AddServerTellsOfAPortThatIsNotAdded) {
    browser.dialogs.inAddServer = [&](frmAddServer& form) {
        browser.fake.hosts.addresses["one.example"] = "127.0.0.8";
        form.txtIP = "one.example";
        form.txtPort = "99999999999";
        form.cmdOK_Click();
        EXPECT_EQ(form.lblMessage, "");
        EXPECT_EQ(form.focus, AddressField::Port);
    };
    Start();
    Commands().mnuServAdd_Click();
    EXPECT_EQ(browser.RowCount(), 2);
}

// The tree's menu means the node that it was opened on.
TEST_F(DialogCommandsTest, AddServerOfTheTreeShowsTheNodesListFirst) {
    struct Case {
        const char* node;
        const char* list;
    };
    for (const Case& c : {Case{"q3", "q3"}, Case{"d3", "d3"}, Case{"mod3", "hl"}, Case{"fav1", "fav1"},
                          Case{"games", "q3"}, Case{"favorites", "q3"}, Case{"filters", "q3"},
                          Case{"fltkey", "q3"}, Case{"png20", "q3"}, Case{"", "q3"}}) {
        HeadlessBrowser another;
        another.PutList("q3", HeadlessBrowser::Addresses(3));
        ASSERT_TRUE(another.Start());
        another.Controls().trvGames.Select(*c.node == '\0' ? "games" : c.node);
        std::string shown;
        another.dialogs.inAddServer = [&](frmAddServer&) { shown = another.program.CurrentGame; };
        another.Form().dialogs.mnuTreeAddServer_Click(c.node);
        EXPECT_EQ(shown, c.list) << c.node;
        EXPECT_EQ(another.program.FilterLocked, 0);
        EXPECT_EQ(another.program.FilterPing, 0);
    }
}

TEST_F(DialogCommandsTest, AddServerOfTheTreeWaitsForTheScanThatItEnds) {
    const std::vector<std::string> servers = HeadlessBrowser::Addresses(5);
    browser.PutList("q3", servers);
    browser.PutServers(servers);
    Start();
    std::string shown;
    browser.dialogs.inAddServer = [&](frmAddServer&) {
        shown = browser.program.CurrentGame + " " + browser.Message();
    };
    browser.In(5, [&] { Commands().mnuTreeAddServer_Click("fav1"); });
    browser.RefreshAll();
    EXPECT_EQ(shown, "fav1 Scanning aborted by user.");
    EXPECT_THAT(browser.network.Asked(), SizeIs(1));
}

TEST_F(DialogCommandsTest, AddServerOfTheTreeAddsToNoOtherListThanTheNodes) {
    browser.fake.files.FailWrites(HeadlessBrowser::PathOf("q3"), ErrorNumber::PermissionDenied);
    Start();
    Commands().mnuTreeAddServer_Click("fav1"); // the list in the window cannot be saved, and stays
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_THAT(browser.dialogs.shown, IsEmpty());
}

TEST_F(DialogCommandsTest, ALookUpOfAddServerEndsWithTheProgram) {
    Start();
    browser.fake.hosts.lookUpMilliseconds = 5000;
    browser.dialogs.inAddServer = [&](frmAddServer& form) {
        form.txtIP = "one.example";
        form.txtPort = "1";
        browser.In(100, [&] { browser.Form().Unload(); });
        form.cmdOK_Click();
        EXPECT_EQ(browser.fake.clock.Elapsed(), 100);
    };
    Commands().mnuServAdd_Click();
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(browser.window.destroyCalls, 1);
}

TEST_F(DialogCommandsTest, TheGameSetupDecidesWhichGamesTheTreeShows) {
    browser.dialogs.inGamSetup = [](frmGamSetup& form) {
        form.lvwGameSel_ItemClick("d3");
        form.chkVisible = 0;
        form.chkVisible_Click();
        form.lvwGameSel_ItemClick("hidden");
        form.chkVisible = 1;
        form.chkVisible_Click();
        form.cmdOK_Click();
    };
    Start();
    Commands().mnuExtrasGameSetup_Click();
    const TreeView& tree = browser.Controls().trvGames;
    EXPECT_THAT(tree.Children("games"), ElementsAre("q3", "hl", "hidden"));
    EXPECT_EQ(tree.SelectedKey(), "q3");
    EXPECT_EQ(browser.RowCount(), 2) << "the list shown stays";
    EXPECT_EQ(browser.Setting("Games", "Visible4"), "0") << "the file gets it at the end";
    browser.Form().Unload();
    EXPECT_EQ(browser.Setting("Games", "Visible4"), "1");
    EXPECT_EQ(browser.Setting("Games", "Visible2"), "0");
}

TEST_F(DialogCommandsTest, ACancelledGameSetupRefreshesTheTreeToo) {
    Start();
    browser.program.GameVisible[2] = 0;
    Commands().mnuExtrasGameSetup_Click();
    EXPECT_THAT(browser.Controls().trvGames.Children("games"), ElementsAre("q3", "hl"));
}

TEST_F(DialogCommandsTest, OptionsApplyAtOnce) {
    browser.dialogs.inOptions = [](frmOptions& form) {
        form.chkKeepOnTop = 1;
        form.txtScanPingTimeout = "123";
        form.cmbNumFavorites = 3;
        form.cmdOK_Click();
    };
    Start();
    Commands().mnuExtrasOptions_Click();
    EXPECT_TRUE(browser.window.topMost);
    EXPECT_EQ(browser.Controls().tmrTimeout.Interval(), 123);
    EXPECT_EQ(browser.fake.files.Writes("C:\\Quarn\\Quarn.ini"), 0) << "the file gets it at the end";
    EXPECT_THAT(browser.Controls().trvGames.Children("favorites"),
                ElementsAre("fav1", "fav2", "fav3", "fav4"));
    for (std::int32_t i = 1; i <= 9; ++i)
        EXPECT_EQ(browser.Controls().mnuServAddToFavorites[i].visible, i <= 4) << i;
}

TEST_F(DialogCommandsTest, CancelledOptionsAreAppliedToo) {
    Start();
    browser.program.KeepOnTop = 1;
    browser.program.PingTimeout = 321;
    browser.program.FavoritesNumber = 1;
    Commands().mnuExtrasOptions_Click();
    EXPECT_TRUE(browser.window.topMost);
    EXPECT_EQ(browser.Controls().tmrTimeout.Interval(), 321);
    EXPECT_THAT(browser.Controls().trvGames.Children("favorites"), ElementsAre("fav1"));
    EXPECT_FALSE(browser.Controls().mnuServAddToFavorites[2].visible);
}

TEST_F(DialogCommandsTest, WrongOptionsStayOpenUntilTheyAreCancelled) {
    browser.dialogs.inOptions = [](frmOptions& form) {
        form.chkKeepOnTop = 1;
        form.txtScanPingTimeout = "soon";
        form.cmdOK_Click();
    };
    Start();
    Commands().mnuExtrasOptions_Click();
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.program.KeepOnTop, 0);
    EXPECT_FALSE(browser.window.topMost);
}

TEST_F(DialogCommandsTest, AnyNumberOfFoldersKeepsTreeAndMenuConsistent) {
    for (const std::int32_t number : {-5, 0, 9, 10, 1000}) {
        HeadlessBrowser another;
        another.Set("Favorites", "Number", number);
        another.dialogs.inOptions = [](frmOptions& form) { form.cmdOK_Click(); };
        ASSERT_TRUE(another.Start());
        another.Form().dialogs.mnuExtrasOptions_Click();
        const std::int32_t expected = number < 1 ? 0 : 9;
        EXPECT_EQ(another.program.FavoritesNumber, expected);
        EXPECT_THAT(another.Controls().trvGames.Children("favorites"), SizeIs(expected));
    }
}

TEST_F(DialogCommandsTest, NoDialogOpensWhenTheProgramEndsMeanwhile) {
    Start();
    browser.fake.prompts.whileOpen = [&] { browser.Form().Unload(); };
    browser.Form().game.mnuServConnectPlay_Click(); // no executable: an error message, then the game setup
    EXPECT_THAT(browser.dialogs.shown, IsEmpty());
    EXPECT_TRUE(browser.Ended());
}

TEST_F(DialogCommandsTest, ClosingInsideADialogUnloadsWhenItHasClosed) {
    browser.dialogs.inOptions = [&](frmOptions&) {
        browser.Form().Unload();
        EXPECT_FALSE(browser.Ended());
    };
    Start();
    Commands().mnuExtrasOptions_Click();
    EXPECT_TRUE(browser.Ended());
    EXPECT_EQ(browser.window.destroyCalls, 1);
    EXPECT_THAT(browser.LogFile(), ElementsAre("frmMain;Form_Unload;0"));
}

TEST_F(DialogCommandsTest, DialogsWaitForAListThatIsBeingLoaded) {
    browser.PutList("d3", HeadlessBrowser::Addresses(50));
    Start();
    bool complete = false;
    browser.dialogs.inOptions = [&](frmOptions&) { complete = browser.RowCount() == 50; };
    browser.fake.events.Post([&] { Commands().mnuExtrasOptions_Click(); });
    browser.ClickNode("d3");
    EXPECT_THAT(browser.dialogs.shown, ElementsAre(Shown{"frmOptions"}));
    EXPECT_TRUE(complete);
}

} // namespace
} // namespace quarn
