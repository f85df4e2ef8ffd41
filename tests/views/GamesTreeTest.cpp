// The tree: what it shows, its filters and its folders.

#include "views/GamesTree.h"
#include "tests/views/TreeTest.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class GamesTreeTest : public TreeTest {};

TEST_F(GamesTreeTest, BeginsWithItsFixedNodes) {
    ASSERT_TRUE(browser.Start());
    struct Fixed {
        const char* key;
        const char* text;
        const char* parent;
        const char* image;
    };
    std::int32_t position = 0;
    for (const Fixed& f :
         {Fixed{"games", "Games", "", "fldrop"}, Fixed{"favorites", "Favorites", "", "fldrop"},
          Fixed{"filters", "Filters", "", "fldrop"},
          Fixed{"fltkey", "Open servers only", "filters", "unchecked"},
          Fixed{"fltping", "Ping", "filters", "fldrop"}, Fixed{"png20", "<= 20", "fltping", "unchecked"},
          Fixed{"png50", "<= 50", "fltping", "unchecked"},
          Fixed{"png100", "<= 100", "fltping", "unchecked"}}) {
        const TreeNode& node = Tree().At(++position);
        EXPECT_EQ(node.key, f.key);
        EXPECT_EQ(node.text, f.text);
        EXPECT_EQ(node.parent, f.parent);
        EXPECT_EQ(node.image, f.image);
        EXPECT_EQ(node.selectedImage, f.image);
    }
}

TEST_F(GamesTreeTest, ShowsVisibleGamesTheirModsAndTheFolders) {
    ASSERT_TRUE(browser.Start());
    EXPECT_THAT(Tree().Children("games"), ElementsAre("q3", "d3", "hl"));
    EXPECT_THAT(Tree().Children("q3"), ElementsAre("mod1", "mod2"));
    EXPECT_THAT(Tree().Children("d3"), IsEmpty());
    EXPECT_THAT(Tree().Children("hl"), ElementsAre("mod3"));
    EXPECT_THAT(Tree().Children("favorites"), ElementsAre("fav1", "fav2"));
    EXPECT_EQ(Tree().Node("q3").text, "Arena");
    EXPECT_EQ(Tree().Node("mod1").text, "OSP Tourney");
    EXPECT_EQ(Tree().Node("fav1").text, "Friends");
    for (const char* key : {"q3", "mod1", "fav2"}) {
        EXPECT_EQ(Tree().Node(key).image, "fldrcls") << key;
        EXPECT_EQ(Tree().Node(key).selectedImage, "fldrop") << key;
    }
}

TEST_F(GamesTreeTest, TakesAGamesOwnImageOnlyForExactlyItsKey) {
    ASSERT_TRUE(browser.Start());
    Tree().images = {"fldrcls", "Q3", "hl", "d3 "};
    Form().RefreshTreeView();
    EXPECT_EQ(Tree().Node("hl").image, "hl");
    EXPECT_EQ(Tree().Node("hl").selectedImage, "hl");
    EXPECT_EQ(Tree().Node("q3").image, "fldrcls");
    EXPECT_EQ(Tree().Node("d3").selectedImage, "fldrop");
}

TEST_F(GamesTreeTest, MarksGamesByTheirFamilyAndFavoritesByTheirs) {
    ASSERT_TRUE(browser.Start());
    Tree().images = {"fldrcls", "fldrop", "family-q3", "family-d3", "favorite", "hl", "family-hl"};
    Form().RefreshTreeView();
    for (const auto& [key, image] : {std::pair{"q3", "family-q3"},
                                     {"d3", "family-d3"},
                                     {"hl", "hl"},
                                     {"fav1", "favorite"},
                                     {"fav2", "favorite"}}) {
        EXPECT_EQ(Tree().Node(key).image, image) << key;
        EXPECT_EQ(Tree().Node(key).selectedImage, image) << key;
    }
    EXPECT_EQ(Tree().Node("mod1").image, "fldrcls");
    EXPECT_EQ(Tree().Node("mod1").selectedImage, "fldrop");
    Tree().images = {"family-q3 ", "FAVORITE"};
    Form().RefreshTreeView();
    EXPECT_EQ(Tree().Node("q3").image, "fldrcls");
    EXPECT_EQ(Tree().Node("fav1").image, "fldrcls");
}

TEST_F(GamesTreeTest, RebuildsWithoutDuplicatesAndLeavesTheFilters) {
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("png50");
    const std::vector<std::string> keys = browser.TreeKeys();
    for (int i = 0; i < 3; ++i)
        Form().RefreshTreeView();
    EXPECT_EQ(browser.TreeKeys(), keys);
    EXPECT_THAT(Checked(), ElementsAre("png50"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GamesTreeTest, FollowsTheSettings) {
    ASSERT_TRUE(browser.Start());
    browser.program.GameVisible[1] = 0;
    browser.program.GameVisible[4] = -1;
    browser.program.FavoritesNumber = 3;
    browser.program.FavoriteNames[3] = "";
    Form().RefreshTreeView();
    EXPECT_THAT(Tree().Children("games"), ElementsAre("d3", "hl", "hidden"));
    EXPECT_THAT(Tree().Children("hidden"), ElementsAre("mod4"));
    EXPECT_THAT(Tree().Children("favorites"), ElementsAre("fav1", "fav2", "fav3"));
    EXPECT_FALSE(Tree().Has("mod1"));
}

TEST_F(GamesTreeTest, BuildsTheRestWhenANodeCannotBeAdded) {
    struct Case {
        const char* name;
        const char* shorts; // of games 2 and 3
        const char* shortOfThird;
        std::vector<std::string> games;
        std::vector<std::string> errors;
    };
    for (const Case& c : {Case{"the same key twice", "a", "b", {"a", "b"}, {"frmMain;RefreshTreeView;35602"}},
                          Case{"a fixed key", "games", "b", {"a", "b"}, {"frmMain;RefreshTreeView;35602"}},
                          Case{"a filter's key", "png20", "b", {"a", "b"}, {"frmMain;RefreshTreeView;35602"}},
                          Case{"no key", "", "b", {"a", "b"}, {"frmMain;RefreshTreeView;5"}},
                          Case{"two without a key",
                               "",
                               "",
                               {"a"},
                               {"frmMain;RefreshTreeView;5", "frmMain;RefreshTreeView;5"}}}) {
        HeadlessBrowser other;
        other.fake.files.Put("C:\\Quarn\\Games.ini",
                             "[General]\nGameNum=3\nMODNum=2\n[Game1]\nGameShort=a\n[Game2]\nGameShort=" +
                                 std::string(c.shorts) + "\n[Game3]\nGameShort=" + c.shortOfThird +
                                 "\n[MOD1]\nBasedGame=a\n[MOD2]\nBasedGame=" + c.shorts + "\n");
        other.Set("Selection", "LastGame", 1);
        ASSERT_TRUE(other.Start());
        const TreeView& tree = other.Controls().trvGames;
        EXPECT_EQ(tree.Children("games"), c.games) << c.name;
        EXPECT_EQ(tree.Children("a").front(), "mod1") << c.name;
        EXPECT_THAT(tree.Children(""), ElementsAre("games", "favorites", "filters")) << c.name;
        EXPECT_THAT(tree.Children("png20"), IsEmpty()) << c.name;
        EXPECT_THAT(tree.Children("favorites"), ElementsAre("fav1", "fav2")) << c.name;
        EXPECT_EQ(other.Errors(), c.errors) << c.name;
        EXPECT_THAT(other.fake.prompts.shown, IsEmpty()) << c.name;
        const std::vector<std::string> keys = other.TreeKeys();
        other.Form().tree.RefreshTreeView();
        EXPECT_EQ(other.TreeKeys(), keys) << c.name;
    }
}

TEST_F(GamesTreeTest, ShowsNoModWithoutItsGame) {
    Definitions("[General]\nGameNum=2\nMODNum=5\n[Game1]\nGameShort=a\n[Game2]\nGameShort=b\n"
                "[MOD1]\nBasedGame=A\n[MOD2]\nBasedGame=nowhere\n[MOD3]\nBasedGame=games\n"
                "[MOD4]\nBasedGame=fltping\n[MOD5]\nBasedGame=b\n");
    browser.Set("Games", "Visible2", 0);
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"mod1", "mod2", "mod3", "mod4", "mod5"})
        EXPECT_FALSE(Tree().Has(key)) << key;
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GamesTreeTest, BuildsNineFoldersAndShowsAnErrorForMore) {
    for (const std::int32_t number : {0, -1, 9, 10, 1000, 2147483647}) {
        HeadlessBrowser other;
        other.Set("Favorites", "Number", number);
        ASSERT_TRUE(other.Start());
        const std::int32_t built = std::min(std::max(number, 0), 9);
        EXPECT_THAT(other.Controls().trvGames.Children("favorites"), SizeIs(built)) << number;
        EXPECT_THAT(other.Errors(), SizeIs(number > 9 ? 1 : 0)) << number;
        if (number > 9) {
            EXPECT_EQ(other.Errors().front(), "frmMain;RefreshTreeView;9");
        }
        for (std::int32_t i = 1; i <= 9; ++i)
            EXPECT_EQ(other.Controls().mnuServAddToFavorites[i].visible, i <= number) << number;
    }
}

TEST_F(GamesTreeTest, KeepsSelectionAndExpansionByKey) {
    struct Case {
        const char* selected;
        const char* after; // after d3 and mod3's game were removed
    };
    for (const Case& c :
         {Case{"q3", "q3"}, Case{"mod2", "mod2"}, Case{"fav2", "fav2"}, Case{"png20", "png20"},
          Case{"d3", "games"}, Case{"mod3", "games"}, Case{"fav1", "fav1"}}) {
        HeadlessBrowser other;
        ASSERT_TRUE(other.Start());
        TreeView& tree = other.Controls().trvGames;
        tree.Select(c.selected);
        tree.Node("q3").expanded = true;
        tree.Node("fav2").expanded = true;
        tree.Node("fltping").expanded = false;
        other.program.GameVisible[2] = 0;
        other.program.GameVisible[3] = 0;
        const std::int32_t reads = other.fake.files.Reads(HeadlessBrowser::PathOf("q3"));
        const std::int32_t writes = other.fake.files.TotalWrites();
        other.Form().tree.RefreshTreeView();
        EXPECT_EQ(tree.SelectedKey(), c.after) << c.selected;
        EXPECT_TRUE(tree.Node("q3").expanded);
        EXPECT_TRUE(tree.Node("fav2").expanded);
        EXPECT_FALSE(tree.Node("fltping").expanded);
        EXPECT_FALSE(tree.Node("fav1").expanded);
        EXPECT_EQ(other.program.CurrentGame, "q3") << "no click was handled";
        EXPECT_EQ(other.fake.files.Reads(HeadlessBrowser::PathOf("q3")), reads);
        EXPECT_EQ(other.fake.files.TotalWrites(), writes);
    }
}

TEST_F(GamesTreeTest, SelectsTheFolderOfARemovedFavorite) {
    ASSERT_TRUE(browser.Start());
    Tree().Select("fav2");
    browser.program.FavoritesNumber = 1;
    Form().RefreshTreeView();
    EXPECT_EQ(Tree().SelectedKey(), "favorites");
    Tree().SelectNone();
    Form().RefreshTreeView();
    EXPECT_EQ(Tree().SelectedKey(), "");
}

TEST_F(GamesTreeTest, SwitchesTheOpenServersFilterAtEveryClick) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    ASSERT_TRUE(browser.Start());
    browser.program.Servers[2].Locked = 1;
    browser.program.CurrentServer = 3;
    browser.ClickNode("fltkey");
    EXPECT_EQ(browser.program.FilterLocked, 1);
    EXPECT_THAT(Checked(), ElementsAre("fltkey"));
    EXPECT_EQ(Tree().Node("fltkey").selectedImage, "checked");
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "3"));
    EXPECT_EQ(browser.Count(), "3 servers");
    EXPECT_EQ(browser.program.CurrentServer, 0);
    browser.ClickNode("fltkey");
    EXPECT_EQ(browser.program.FilterLocked, 0);
    EXPECT_THAT(Checked(), IsEmpty());
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(Saves("q3"), 0);
}

TEST_F(GamesTreeTest, ListsAgainForTheFolderOfThePingFilters) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    browser.Set("Filter", "Locked", 7);
    ASSERT_TRUE(browser.Start());
    browser.Controls().lvwServers.Remove(2);
    browser.program.CurrentServer = 3;
    browser.ClickNode("fltping");
    EXPECT_EQ(browser.program.FilterLocked, 7);
    EXPECT_EQ(browser.program.FilterPing, 0);
    EXPECT_EQ(browser.program.CurrentServer, 0);
    EXPECT_EQ(Tree().Node("fltping").image, "fldrop");
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(browser.program.CurrentGame, "q3");
}

TEST_F(GamesTreeTest, ChecksAtMostOnePingFilter) {
    browser.PutList("q3", HeadlessBrowser::Addresses(120));
    ASSERT_TRUE(browser.Start());
    struct Click {
        const char* key;
        std::int32_t limit;
        std::vector<std::string> checked;
        std::int32_t rows;
    };
    for (const Click& c : {Click{"png50", 50, {"png50"}, 50}, Click{"png20", 20, {"png20"}, 20},
                           Click{"png20", 0, {}, 120}, Click{"png100", 100, {"png100"}, 100},
                           Click{"png50", 50, {"png50"}, 50}, Click{"png50", 0, {}, 120}}) {
        browser.program.CurrentServer = 1;
        browser.ClickNode(c.key);
        EXPECT_EQ(browser.program.CurrentServer, 0) << c.key;
        EXPECT_EQ(browser.program.FilterPing, c.limit) << c.key;
        EXPECT_EQ(Checked(), c.checked) << c.key;
        EXPECT_EQ(browser.RowCount(), c.rows) << c.key;
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GamesTreeTest, TreatsAnUnknownStoredLimitAsNone) {
    for (const std::int32_t stored : {1, 30, -20, 2147483647}) {
        HeadlessBrowser other;
        other.Set("Filter", "Ping", stored);
        ASSERT_TRUE(other.Start());
        other.ClickNode("fltkey");
        EXPECT_EQ(other.program.FilterPing, stored);
        other.ClickNode("png50");
        EXPECT_EQ(other.program.FilterPing, 50) << stored;
        EXPECT_THAT(other.Errors(), IsEmpty()) << stored;
    }
}

// The beginning of a key decides what a click does, and a game's key may begin like a filter's.
TEST_F(GamesTreeTest, SwitchesNoFilterForAGameNamedLikeOne) {
    Definitions("[General]\nGameNum=3\n[Game1]\nGameShort=q3\n[Game2]\nGameShort=fltx\n"
                "[Game3]\nGameShort=png20x\n");
    browser.PutList("q3", HeadlessBrowser::Addresses(3));
    browser.Set("Filter", "Ping", 50);
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"fltx", "png20x"}) {
        browser.Controls().lvwServers.Remove(2);
        browser.ClickNode(key);
        EXPECT_EQ(browser.program.FilterLocked, 0) << key;
        EXPECT_EQ(browser.program.FilterPing, 50) << key;
        EXPECT_THAT(Checked(), ElementsAre("png50")) << key;
        EXPECT_EQ(Tree().Node(key).image, "fldrcls");
        EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3")) << key;
        EXPECT_EQ(browser.program.CurrentGame, "q3") << key;
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GamesTreeTest, ShowsAnErrorForAMalformedPingLimit) {
    Definitions("[General]\nGameNum=2\n[Game1]\nGameShort=q3\n[Game2]\nGameShort=pngx\n");
    ASSERT_TRUE(browser.Start());
    Tree().Node("pngx").image = "unchecked";
    browser.ClickNode("pngx");
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;trvGames_NodeClick;13"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.program.FilterPing, 0);
}

// The keyboard's selection shows a list where it rests.
TEST_F(GamesTreeTest, RenamesTheFolderThatWasMeant) {
    ASSERT_TRUE(browser.Start());
    browser.fake.prompts.textAnswers = {"Old friends"};
    Tree().Select("fav2");
    Form().mnuTreeRename_Click("fav1");
    EXPECT_EQ(browser.program.FavoriteNames[1], "Old friends");
    EXPECT_EQ(browser.program.FavoriteNames[2], "Duels");
    for (const char* key : {"fav1", "fav9"})
        EXPECT_TRUE(GamesTree::CanRename(key)) << key;
    for (const char* key : {"favorites", "games", "q3", "mod1", "fltkey", "png20", ""})
        EXPECT_FALSE(GamesTree::CanRename(key)) << key;
}

TEST_F(GamesTreeTest, AsksForAFoldersNewName) {
    ASSERT_TRUE(browser.Start());
    browser.fake.prompts.textAnswers = {"Old friends"};
    Tree().Select("fav1");
    Form().mnuTreeRename_Click();
    ASSERT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.fake.prompts.shown[0].kind, FakePrompts::Kind::Text);
    EXPECT_EQ(browser.fake.prompts.shown[0].text, "Enter a new name:");
    EXPECT_EQ(browser.fake.prompts.shown[0].title, "Change name");
    EXPECT_EQ(Tree().Node("fav1").text, "Old friends");
    EXPECT_EQ(Tree().Node("fav2").text, "Duels");
    EXPECT_EQ(browser.Controls().mnuServAddToFavorites[1].caption, "Old friends");
    EXPECT_EQ(Tree().SelectedKey(), "fav1");
    EXPECT_EQ(browser.Setting("Favorites", "Name1"), "Friends");
    browser.Form().Unload();
    EXPECT_EQ(browser.Setting("Favorites", "Name1"), "Old friends");
}

TEST_F(GamesTreeTest, AcceptsAnyFolderName) {
    ASSERT_TRUE(browser.Start());
    Tree().Select("fav2");
    for (const char* answer : {"x", "", " ", "a;b", "&Name", "-"}) {
        browser.fake.prompts.textAnswers = {answer};
        Form().mnuTreeRename_Click();
        EXPECT_EQ(browser.program.FavoriteNames[2], answer);
        EXPECT_EQ(Tree().Node("fav2").text, answer);
        EXPECT_EQ(browser.Controls().mnuServAddToFavorites[2].caption, answer);
    }
    EXPECT_EQ(browser.program.FavoriteNames[1], "Friends");
}

TEST_F(GamesTreeTest, RenamesFavoritesFoldersOnly) {
    ASSERT_TRUE(browser.Start());
    for (const char* key : {"games", "favorites", "filters", "q3", "mod1", "fltkey", "png20"}) {
        Tree().Select(key);
        Form().mnuTreeRename_Click();
    }
    Tree().SelectNone();
    Form().mnuTreeRename_Click();
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GamesTreeTest, ShowsAnErrorIfAFolderHasNoName) {
    Definitions("[General]\nGameNum=3\n[Game1]\nGameShort=fav10\n[Game2]\nGameShort=fav-1\n[Game3]"
                "\nGameShort=favx\n");
    browser.Set("Selection", "LastGame", 1);
    ASSERT_TRUE(browser.Start());
    struct Case {
        const char* key;
        const char* error;
    };
    for (const Case& c : {Case{"fav10", "9"}, Case{"fav-1", "9"}, Case{"favx", "13"}}) {
        Tree().Select(c.key);
        Form().mnuTreeRename_Click();
        EXPECT_EQ(browser.Errors().back(), std::string("frmMain;mnuTreeRename_Click;") + c.error) << c.key;
    }
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(3));
    for (const FakePrompts::Prompt& prompt : browser.fake.prompts.shown)
        EXPECT_EQ(prompt.kind, FakePrompts::Kind::Error);
}

TEST_F(GamesTreeTest, NamesTheEntriesOfTheFavoritesMenu) {
    ASSERT_TRUE(browser.Start());
    const OneBased<MenuEntry>& entries = browser.Controls().mnuServAddToFavorites;
    EXPECT_EQ(entries[1].caption, "Friends");
    EXPECT_EQ(entries[2].caption, "Duels");
    EXPECT_TRUE(entries[2].visible);
    EXPECT_FALSE(entries[3].visible);
    browser.program.FavoritesNumber = 4;
    browser.program.FavoriteNames[4] = "Four";
    Form().RefreshFavMenu();
    EXPECT_TRUE(entries[4].visible);
    EXPECT_EQ(entries[4].caption, "Four");
    EXPECT_FALSE(entries[5].visible);
}

} // namespace
} // namespace quarn
