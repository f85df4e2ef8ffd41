#include "tests/views/TreeTest.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class GamesTreeKeyboardTest : public TreeTest {};

TEST_F(GamesTreeKeyboardTest, ShowsTheListOnWhichTheKeyboardRests) {
    ASSERT_TRUE(browser.Start());
    const auto moveTo = [&](const char* key) {
        Tree().Select(key);
        Form().trvGames_SelectedByKeyboard(key);
    };
    moveTo("d3");
    browser.fake.events.RunFor(200);
    moveTo("hl");
    browser.fake.events.RunFor(200);
    moveTo("fav1");
    browser.fake.events.RunFor(249);
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_EQ(Saves("q3"), 0);
    browser.fake.events.RunFor(1);
    EXPECT_EQ(browser.program.CurrentGame, "fav1");
    EXPECT_EQ(Saves("q3"), 1);
    EXPECT_EQ(Saves("d3"), 0);
    browser.fake.events.RunFor(1000);
    EXPECT_EQ(Saves("fav1"), 0) << "once";
}

TEST_F(GamesTreeKeyboardTest, ShowsNoListAndSwitchesNoFilterForAKeyThatMovesOntoAFolderOrFilter) {
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"games", "favorites", "filters", "fltkey", "fltping", "png20", "q3"}) {
        Tree().Select(key);
        Form().trvGames_SelectedByKeyboard(key);
        browser.fake.events.RunFor(1000);
        EXPECT_EQ(browser.program.CurrentGame, "q3") << key;
        EXPECT_EQ(browser.program.FilterLocked, 0) << key;
        EXPECT_EQ(browser.program.FilterPing, 0) << key;
    }
    EXPECT_EQ(Saves("q3"), 0);
    browser.ClickNode("games"); // Space, Enter and a click do
    EXPECT_EQ(browser.program.CurrentGame, "games");
}

TEST_F(GamesTreeKeyboardTest, ShowsNothingThatTheKeyboardHasLeftBefore) {
    struct Case {
        const char* name;
        void (*leave)(HeadlessBrowser& b);
        const char* shown;
    };
    const Case cases[] = {
        {"onto a folder",
         [](HeadlessBrowser& b) {
             b.Controls().trvGames.Select("games");
             b.Form().tree.trvGames_SelectedByKeyboard("games");
         },
         "q3"},
        {"by a click", [](HeadlessBrowser& b) { b.ClickNode("hl"); }, "hl"},
        {"by the right button", [](HeadlessBrowser& b) { b.Controls().trvGames.Select("hl"); }, "q3"},
        {"with the program", [](HeadlessBrowser& b) { b.Form().Unload(); }, "q3"},
    };
    for (const Case& c : cases) {
        HeadlessBrowser other;
        ASSERT_TRUE(other.Start());
        other.Controls().trvGames.Select("d3");
        other.Form().tree.trvGames_SelectedByKeyboard("d3");
        c.leave(other);
        other.fake.events.RunFor(1000);
        EXPECT_EQ(other.program.CurrentGame, c.shown) << c.name;
    }
}

TEST_F(GamesTreeKeyboardTest, WaitsForADialogBeforeItShowsWhereTheKeyboardRests) {
    ASSERT_TRUE(browser.Start());
    Tree().Select("d3");
    Form().trvGames_SelectedByKeyboard("d3");
    browser.dialogs.inAddServer = [&](frmAddServer&) {
        browser.fake.events.RunFor(5000);
        EXPECT_EQ(browser.program.CurrentGame, "q3");
    };
    browser.Form().dialogs.mnuServAdd_Click();
    browser.fake.events.RunFor(250);
    EXPECT_EQ(browser.program.CurrentGame, "d3");
}

TEST_F(GamesTreeKeyboardTest, ShowsInBoldWhoseListIsShown) {
    ASSERT_TRUE(browser.Start());
    const auto bold = [&] {
        std::vector<std::string> keys;
        for (std::int32_t position = 1; position <= Tree().Count(); ++position)
            if (Tree().At(position).bold)
                keys.push_back(Tree().At(position).key);
        return keys;
    };
    EXPECT_THAT(bold(), ElementsAre("q3"));
    for (const char* key : {"mod2", "d3", "fav1", "games"}) {
        browser.ClickNode(key);
        EXPECT_THAT(bold(), ElementsAre(key));
        Tree().Select("hl");
        browser.ClickNode("png50");
        Form().RefreshTreeView();
        EXPECT_THAT(bold(), ElementsAre(key));
    }
    browser.ClickNode("d3");
    browser.program.GameVisible[2] = 0;
    Form().RefreshTreeView();
    EXPECT_THAT(bold(), IsEmpty());
}

TEST_F(GamesTreeKeyboardTest, BringsTheFirstRowIntoViewAfterEveryListing) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    browser.PutList("d3", HeadlessBrowser::Addresses(2));
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"d3", "fltkey", "png100", "fltping", "q3"}) {
        browser.Controls().lvwServers.TakeChanges();
        browser.ClickNode(key);
        EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().ensureVisible, 1) << key;
    }
    browser.ClickNode("hl"); // empty
    EXPECT_EQ(browser.Controls().lvwServers.TakeChanges().ensureVisible, 0);
}

} // namespace
} // namespace quarn
