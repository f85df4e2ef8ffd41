// Servers of several games in one favorites folder: each is asked, joined and set up as one of its own game.

#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* GamesFile = "C:\\Quarn\\Favorites.ini";
const std::string Q3Server = "127.0.0.1:27960";
const std::string D3Server = "127.0.0.2:27666";
const std::string HLServer = "127.0.0.3:27015";

class GameCommandsFavoritesTest : public ::testing::Test {
  protected:
    GameCommandsFavoritesTest() {
        const char* const names[] = {"Arena", "Demons", "Crowbar"};
        for (int game = 1; game <= 3; ++game) {
            const std::string name = names[game - 1];
            const std::string number = std::to_string(game);
            browser.Set("Games", "Path" + number, "C:\\" + name);
            browser.Set("Games", "Config" + number, name + ".cfg");
            browser.Set("Games", "Name" + number, "Player of " + name);
        }
        for (const char* exe : {"C:\\Arena\\arena.exe", "C:\\Demons\\demons.exe", "C:\\Crowbar\\crowbar.exe"})
            browser.fake.files.Put(exe, "");
        browser.network.servers[Q3Server] = MakeServer(gamenet::Family::Quake3, "Q", "q3dm17", "osp");
        browser.network.servers[D3Server] = MakeServer(gamenet::Family::Doom3, "D", "d3ctf1", "d3xp");
        browser.network.servers[HLServer] = MakeServer(gamenet::Family::HalfLife, "H", "crossfire", "valve");
        browser.PutList("q3", {Q3Server});
        browser.PutList("d3", {D3Server});
        browser.PutList("hl", {HLServer});
    }

    // A folder with one server of each game, as it is after a restart.
    void StartWithFolder() {
        browser.PutList("fav1", {Q3Server, D3Server, HLServer});
        browser.fake.files.Put(GamesFile, "[fav1]\r\n" + Q3Server + "=q3\r\n" + D3Server + "=d3\r\n" +
                                              HLServer + "=hl\r\n");
        ASSERT_TRUE(browser.Start());
        browser.ClickNode("fav1");
    }
    void Add(const std::string& list, std::initializer_list<std::int32_t> rows, std::int32_t folder = 1) {
        browser.ClickNode(list);
        browser.SelectRows(rows);
        browser.Form().tree.mnuServAddToFavorites_Click(folder);
    }
    void Join(std::int32_t row) {
        browser.SelectRows({row});
        browser.Form().game.mnuServConnectPlay_Click();
    }
    std::vector<std::string> Started() const {
        std::vector<std::string> started;
        for (const Shell::Request& request : browser.fake.shell.opened)
            started.push_back(request.folder + "|" + request.file + "|" + request.parameters);
        return started;
    }
    std::string File() const { return browser.fake.files.Get(GamesFile); }
    bool HasFile() const { return browser.fake.files.Has(GamesFile); }
    ServerRecord& Server(std::int32_t index) { return browser.program.Servers[index]; }

    HeadlessBrowser browser;
};

TEST_F(GameCommandsFavoritesTest, AFavoriteKeepsItsGame) {
    ASSERT_TRUE(browser.Start());
    Add("q3", {1});
    Add("d3", {1});
    Add("hl", {1});
    Add("hl", {1}, 2);
    EXPECT_EQ(File(), "[fav1]\r\n" + Q3Server + "=q3\r\n" + D3Server + "=d3\r\n" + HLServer +
                          "=hl\r\n[fav2]\r\n" + HLServer + "=hl\r\n");
    EXPECT_EQ(browser.fake.files.Get(HeadlessBrowser::PathOf("fav2")),
              " 1\r\n127.0.0.3;27015;--;Server 1;1;0;16;baseq3;q3dm1;0;;;\r\n");
    EXPECT_EQ(Server(1).Game, 0) << "a game's own list has no need of it";
}

TEST_F(GameCommandsFavoritesTest, AFavoriteTakesItsGameToAnotherFolder) {
    StartWithFolder();
    Add("fav1", {2}, 2);
    EXPECT_NE(File().find("[fav2]\r\n" + D3Server + "=d3\r\n"), std::string::npos);
}

TEST_F(GameCommandsFavoritesTest, EachFavoriteIsAskedInItsOwnWay) {
    StartWithFolder();
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Q", "D", "H"));
    EXPECT_THAT(browser.Column(MapColumn), ElementsAre("q3dm17", "d3ctf1", "crossfire"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsFavoritesTest, SeveralFavoritesAtOnceAreEachAskedInTheirOwnWay) {
    StartWithFolder();
    browser.program.Simultaneous = 8;
    browser.RefreshAll();
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Q", "D", "H"));
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(GameCommandsFavoritesTest, EachFavoriteIsJoinedWithItsOwnGame) {
    StartWithFolder();
    for (const std::int32_t row : {1, 2, 3})
        Join(row);
    browser.Form().game.mnuServConnectSpec_Click();
    EXPECT_THAT(
        Started(),
        ElementsAre("C:\\Arena\\|C:\\Arena\\arena.exe|+set fs_game baseq3 +exec Arena.cfg +name "
                    "Player of Arena +set password  +connect " +
                        Q3Server,
                    "C:\\Demons\\|C:\\Demons\\demons.exe|",
                    "C:\\Crowbar\\|C:\\Crowbar\\crowbar.exe|+connect " + HLServer + " -game baseq3",
                    "C:\\Crowbar\\|C:\\Crowbar\\crowbar.exe|+connect " + HLServer + " -game baseq3 -s"));
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(GameCommandsFavoritesTest, AFavoriteGetsItsPasswordAndIsMonitored) {
    StartWithFolder();
    browser.fake.peers.versions["C:\\Quarn\\..\\Velmar\\Velmar.exe"] = {2, 1, 5};
    browser.fake.peers.openWindows = {"Velmar 215"};
    browser.dialogs.inSetPassword = [](frmSetPassword& form) {
        form.txtPass = "sesame";
        form.cmdOK_Click();
    };
    browser.SelectRows({1});
    browser.Form().dialogs.mnuServSetPass_Click();
    Join(1);
    EXPECT_NE(Started().at(0).find(" +set password sesame "), std::string::npos);
    browser.Form().game.mnuServMonitor_Click();
    ASSERT_THAT(browser.fake.peers.received, SizeIs(1));
    EXPECT_EQ(browser.fake.peers.received[0].payload, "ConGam:" + Q3Server + '\0');
}

TEST_F(GameCommandsFavoritesTest, AFailedJoinOpensTheSetupOfItsGame) {
    StartWithFolder();
    browser.program.GamePath[3] = "C:\\gone";
    std::string selected;
    browser.dialogs.inGamSetup = [&](frmGamSetup& form) { selected = form.SelectedGame(); };
    Join(3);
    EXPECT_THAT(Started(), IsEmpty());
    EXPECT_EQ(selected, "hl");
    EXPECT_EQ(browser.fake.prompts.shown.back().text,
              "The game executable could not be found. Please check game path!");
}

TEST_F(GameCommandsFavoritesTest, WithoutAnEntryAFavoriteIsOfNoGame) {
    for (const char* file : {"", "[fav1]\r\n", "[fav2]\r\n127.0.0.1:27960=q3\r\n",
                             "[fav1]\r\n127.0.0.1:27960=gone\r\n", "[fav1]\r\n127.0.0.1:27961=q3\r\n"}) {
        HeadlessBrowser other;
        if (*file != '\0')
            other.fake.files.Put(GamesFile, file);
        other.PutList("fav1", {Q3Server});
        ASSERT_TRUE(other.Start());
        other.ClickNode("fav1");
        other.RefreshAll();
        EXPECT_THAT(other.network.Asked(), IsEmpty()) << file;
        other.SelectRows({1});
        std::string selected;
        other.dialogs.inGamSetup = [&](frmGamSetup& form) { selected = form.SelectedGame(); };
        other.Form().game.mnuServConnectPlay_Click();
        EXPECT_THAT(other.fake.shell.opened, IsEmpty()) << file;
        EXPECT_EQ(selected, "q3") << "the first game";
        other.ClickNode("d3");
        EXPECT_EQ(other.fake.files.Has(GamesFile), *file != '\0');
    }
}

TEST_F(GameCommandsFavoritesTest, TheGameOfARemovedFavoriteIsForgotten) {
    browser.PutList("fav1", {Q3Server, D3Server, Q3Server});
    browser.fake.files.Put(GamesFile, "[fav1]\r\n" + Q3Server + "=q3\r\n" + D3Server + "=d3\r\n");
    const std::string whole = File();
    ASSERT_TRUE(browser.Start());
    const auto removeRow = [&](std::int32_t row) {
        browser.ClickNode("fav1");
        browser.SelectRows({row});
        browser.Form().servers.mnuServDelete_Click();
        browser.ClickNode("d3");
    };
    removeRow(1);
    EXPECT_EQ(File(), whole) << "the address is still there";
    removeRow(2);
    EXPECT_EQ(File(), "[fav1]\r\n" + D3Server + "=d3\r\n");
    removeRow(1);
    EXPECT_EQ(File(), "[fav1]\r\n");
}

TEST_F(GameCommandsFavoritesTest, TheGamesOfADamagedListAreKept) {
    StartWithFolder();
    browser.ClickNode("d3");
    browser.fake.files.Put(HeadlessBrowser::PathOf("fav1"), "5\r\ndamaged\r\n");
    const std::string games = File();
    browser.ClickNode("fav1");
    browser.ClickNode("d3");
    EXPECT_EQ(File(), games);
    EXPECT_TRUE(browser.fake.files.Has("C:\\Quarn\\servers-fav1.bak"));
}

TEST_F(GameCommandsFavoritesTest, AFileThatCannotBeReadCostsNothing) {
    StartWithFolder();
    const std::string games = File();
    browser.ClickNode("d3");
    browser.fake.files.FailReads(GamesFile, ErrorNumber::PermissionDenied);
    browser.ClickNode("fav1");
    EXPECT_EQ(Server(1).Game, 0);
    browser.SelectRows({1});
    browser.Form().servers.mnuServDelete_Click();
    browser.ClickNode("d3");
    EXPECT_EQ(browser.RowCount(), 1);
    EXPECT_EQ(browser.program.CurrentGame, "d3");
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
    EXPECT_EQ(File(), games);
    browser.fake.files.ClearFaults();
    browser.ClickNode("fav1");
    EXPECT_EQ(Server(1).Game, 2);
}

TEST_F(GameCommandsFavoritesTest, TellsWhenTheGameCannotBeKept) {
    for (const bool isRead : {true, false}) {
        HeadlessBrowser other;
        other.PutList("q3", {Q3Server});
        other.fake.files.Put(GamesFile, "[fav1]\r\n9.9.9.9:9=hl\r\n");
        ASSERT_TRUE(other.Start());
        if (isRead)
            other.fake.files.Protect(GamesFile);
        else
            other.fake.files.FailReads(GamesFile, ErrorNumber::PermissionDenied);
        other.SelectRows({1});
        other.Form().tree.mnuServAddToFavorites_Click(1);
        EXPECT_TRUE(other.fake.files.Get(HeadlessBrowser::PathOf("fav1")).starts_with(" 1\r\n"));
        EXPECT_EQ(other.fake.files.Get(GamesFile), "[fav1]\r\n9.9.9.9:9=hl\r\n");
        ASSERT_THAT(other.fake.prompts.shown, SizeIs(1));
        EXPECT_EQ(other.fake.prompts.shown[0].text,
                  "The file \"Favorites.ini\" could not be read or written.\r\n"
                  "Quarn has added to the folder what you selected, but will not know there which game it is "
                  "for.");
        EXPECT_EQ(other.program.CurrentGame, "q3");
        EXPECT_EQ(other.program.Servers.HighestIndex(), 1);
    }
}

TEST_F(GameCommandsFavoritesTest, SeveralServersAreAddedAtOnceInTheOrderOfTheirRows) {
    browser.PutList("q3", HeadlessBrowser::Addresses(5));
    ASSERT_TRUE(browser.Start());
    Add("q3", {4, 1, 3});
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("fav1")), 1);
    EXPECT_EQ(File(), "[fav1]\r\n127.0.1.1:27960=q3\r\n127.0.1.3:27960=q3\r\n127.0.1.4:27960=q3\r\n");
    browser.ClickNode("fav1");
    EXPECT_THAT(browser.Column(AddressColumn),
                ElementsAre("127.0.1.1:27960", "127.0.1.3:27960", "127.0.1.4:27960"));
}

TEST_F(GameCommandsFavoritesTest, AFolderOfManyFavoritesIsReadAndSaved) {
    const std::vector<std::string> addresses = HeadlessBrowser::Addresses(5000);
    browser.PutList("q3", addresses);
    ASSERT_TRUE(browser.Start());
    browser.Controls().lvwServers.NoteSelected(1, 5000, true);
    browser.Controls().lvwServers.NoteFocused(2500);
    browser.Form().tree.mnuServAddToFavorites_Click(1);
    browser.ClickNode("fav1");
    ASSERT_EQ(browser.program.Servers.HighestIndex(), 5000);
    for (std::int32_t i = 1; i <= 5000; ++i)
        ASSERT_EQ(Server(i).Game, 1) << i;
    std::set<std::string> added;
    for (const std::string& address : browser.Column(AddressColumn))
        added.insert(address);
    EXPECT_EQ(added, std::set<std::string>(addresses.begin(), addresses.end()));
}

} // namespace
} // namespace quarn
