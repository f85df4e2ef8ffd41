// Which list is shown after a click in the tree, and what happens to the one that was.

#include "tests/fakes/HeadlessBrowser.h"
#include "views/GamesTree.h"

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

class ShownListTest : public ::testing::Test {
  protected:
    void Definitions(const std::string& text) { browser.fake.files.Put("C:\\Quarn\\Games.ini", text); }
    GamesTree& Form() { return browser.Form().tree; }
    std::string File(const std::string& list) {
        return browser.fake.files.Get(HeadlessBrowser::PathOf(list));
    }
    std::int32_t Saves(const std::string& list) {
        return browser.fake.files.Writes(HeadlessBrowser::PathOf(list));
    }
    std::int32_t Loads(const std::string& list) {
        return browser.fake.files.Reads(HeadlessBrowser::PathOf(list));
    }

    HeadlessBrowser browser;
};

TEST_F(ShownListTest, SwitchesTheListAndSavesTheOneItLeaves) {
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    browser.PutList("d3", HeadlessBrowser::Addresses(4));
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(Saves("q3"), 0);
    browser.program.Servers[1].Name = "Changed";
    browser.ClickNode("d3");
    EXPECT_NE(File("q3").find(";Changed;"), std::string::npos);
    EXPECT_EQ(browser.program.CurrentGame, "d3");
    EXPECT_EQ(browser.program.LastGame, HeadlessBrowser::D3);
    EXPECT_EQ(browser.RowCount(), 4);
    EXPECT_EQ(browser.Count(), "4 servers");
    EXPECT_EQ(browser.program.CurrentServer, 0);
    EXPECT_EQ(Saves("d3"), 0);
    browser.ClickNode("q3");
    EXPECT_EQ(Saves("d3"), 1);
    EXPECT_EQ(browser.Cell(1, NameColumn), "Changed");
}

TEST_F(ShownListTest, SavesThenSetsTheCommandsThenLoadsThenShows) {
    browser.PutList("q3", HeadlessBrowser::Addresses(1));
    browser.PutList("fav1", HeadlessBrowser::Addresses(4));
    ASSERT_TRUE(browser.Start());
    std::vector<std::string> steps; // what the events of each step find
    browser.fake.events.whenYielding = [&](std::int32_t) {
        const bool forFolder = !browser.Controls().tbMain.buttons[10].enabled;
        steps.push_back((forFolder ? "folder " : "game ") + Form().ShownList() + " " +
                        browser.program.CurrentGame + " " + std::to_string(browser.RowCount()));
    };
    browser.ClickNode("fav1");
    ASSERT_GE(steps.size(), 5U);
    EXPECT_EQ(steps[0], "game q3 q3 1");
    for (std::size_t loaded = 1; loaded <= 4; ++loaded)
        EXPECT_EQ(steps[loaded], "folder fav1 q3 1");
    EXPECT_EQ(browser.program.CurrentGame, "fav1");
    EXPECT_EQ(browser.RowCount(), 4);
}

TEST_F(ShownListTest, SavesAndReloadsBetweenAGameAndItsMods) {
    struct Step {
        const char* key;
        std::int32_t saves;
        std::int32_t loads;
        std::int32_t modFilter;
        std::vector<std::string> tags;
    };
    browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), "3\r\n127.0.0.1;1;--;a;1;0;0;osp;;0;;\r\n"
                                                          "127.0.0.1;2;--;b;1;0;0;ra3;;0;;\r\n"
                                                          "127.0.0.1;3;--;c;1;0;0;OSP;;0;;\r\n");
    ASSERT_TRUE(browser.Start());
    ASSERT_EQ(Loads("q3"), 1);
    const std::vector<std::string> all = {"1", "2", "3"};
    for (const Step& s :
         {Step{"mod1", 1, 2, 1, {"1"}}, Step{"mod2", 1, 3, 2, {"2"}}, Step{"mod2", 1, 3, 2, {"2"}},
          Step{"q3", 1, 4, 0, all}, Step{"q3", 2, 4, 0, all}, Step{"mod1", 3, 5, 1, {"1"}}}) {
        browser.ClickNode(s.key);
        EXPECT_EQ(Saves("q3"), s.saves) << s.key;
        EXPECT_EQ(Loads("q3"), s.loads) << s.key;
        EXPECT_EQ(browser.Form().servers.ModFilter, s.modFilter) << s.key;
        EXPECT_EQ(browser.Tags(), s.tags) << s.key;
        EXPECT_EQ(browser.program.CurrentGame, "q3");
        EXPECT_EQ(browser.Count(), "3 servers");
    }
    // Left under a MOD filter: what was found out there is lost.
    browser.program.Servers[1].Name = "Lost";
    browser.ClickNode("d3");
    EXPECT_EQ(Saves("q3"), 3);
    EXPECT_EQ(browser.Form().servers.ModFilter, 0);
}

TEST_F(ShownListTest, ShowsNothingInAFolderAndSavesItWhenItIsLeft) {
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    ASSERT_TRUE(browser.Start());
    for (const char* folder : {"games", "favorites", "filters"}) {
        browser.ClickNode(folder);
        EXPECT_EQ(browser.RowCount(), 0) << folder;
        EXPECT_EQ(browser.Count(), "0 servers") << folder;
        EXPECT_EQ(browser.program.CurrentGame, folder);
        EXPECT_EQ(Saves(folder), 0);
        browser.ClickNode("q3");
        EXPECT_EQ(File(folder), " 0\r\n");
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ShownListTest, EnablesTheCommandsThatSuitTheList) {
    struct Case {
        const char* key;
        bool menus;
        std::int32_t enabledButtons; // from the left
        bool firstFolder;
    };
    ASSERT_TRUE(browser.Start());
    for (const Case& c :
         {Case{"q3", true, 10, true}, Case{"fav1", true, 9, false}, Case{"fav2", true, 9, false},
          Case{"games", false, 0, false}, Case{"mod1", true, 10, true}, Case{"favorites", false, 0, true},
          Case{"filters", true, 10, true}, Case{"fav1", true, 9, false}, Case{"favorites", false, 0, false},
          Case{"d3", true, 10, true}}) {
        browser.ClickNode(c.key);
        const MainControls& controls = browser.Controls();
        EXPECT_EQ(controls.mnuServer.enabled, c.menus) << c.key;
        EXPECT_EQ(controls.mnuServerList.enabled, c.menus) << c.key;
        EXPECT_EQ(controls.mnuServerListExport.enabled, c.menus) << c.key;
        EXPECT_EQ(controls.mnuServAddToFavorites[1].enabled, c.firstFolder) << c.key;
        for (std::int32_t i = 2; i <= 9; ++i)
            EXPECT_TRUE(controls.mnuServAddToFavorites[i].enabled) << c.key;
        for (std::int32_t i = 1; i <= 10; ++i)
            EXPECT_EQ(controls.tbMain.buttons[i].enabled, i <= c.enabledButtons) << c.key << " " << i;
    }
}

TEST_F(ShownListTest, SwitchesNotWhenTheListCannotBeSaved) {
    browser.PutList("q3", HeadlessBrowser::Addresses(2));
    browser.PutList("d3", HeadlessBrowser::Addresses(4));
    ASSERT_TRUE(browser.Start());
    browser.program.Servers[1].Name = "Changed";
    for (const ErrorNumber error : {ErrorNumber::PermissionDenied, ErrorNumber::DiskFull}) {
        browser.fake.files.FailWrites(HeadlessBrowser::PathOf("q3"), error);
        const std::size_t boxes = browser.fake.prompts.shown.size();
        browser.ClickNode("d3");
        EXPECT_EQ(browser.program.CurrentGame, "q3");
        EXPECT_EQ(Form().ShownList(), "q3");
        EXPECT_EQ(browser.RowCount(), 2);
        EXPECT_EQ(browser.Errors().back(),
                  "frmMain;SetGameFilter;" + std::to_string(static_cast<int>(error)));
        EXPECT_EQ(browser.fake.prompts.shown.size(), boxes + 1);
    }
    browser.fake.files.ClearFaults();
    browser.ClickNode("d3");
    EXPECT_NE(File("q3").find(";Changed;"), std::string::npos);
    EXPECT_EQ(browser.RowCount(), 4);
}

TEST_F(ShownListTest, LosesNothingOfAFileThatItCouldNotRead) {
    browser.fake.files.Put(HeadlessBrowser::PathOf("q3"), "damaged");
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(browser.Count(), "0 servers");
    EXPECT_EQ(browser.program.ServerCount, 0);
    browser.ClickNode("d3");
    EXPECT_EQ(File("q3"), " 0\r\n");
    EXPECT_EQ(browser.fake.files.Get("C:\\Quarn\\servers-q3.bak"), "damaged");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ShownListTest, IgnoresANodeThatIsGone) {
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"", "mod99", "fav3", "nothing"})
        Form().trvGames_NodeClick(key);
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ShownListTest, TellsOfAKeyThatOnlyLooksLikeAMods) {
    Definitions("[General]\nGameNum=1\n[Game1]\nGameShort=modern\nEngine=q3\n");
    browser.Set("Selection", "LastGame", 1);
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("modern");
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;SetGameFilter;13"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.program.CurrentGame, "games");
}

} // namespace
} // namespace quarn
