// Adding a server to a favorites folder.

#include "tests/fakes/HeadlessBrowser.h"
#include "views/GamesTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class GamesTreeFavoritesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        browser.PutList("q3", HeadlessBrowser::Addresses(3));
        ASSERT_TRUE(browser.Start());
        browser.SelectRows({2});
    }
    void AddTo(std::int32_t folder) { browser.Form().tree.mnuServAddToFavorites_Click(folder); }
    std::string File(const std::string& list) {
        return browser.fake.files.Get(HeadlessBrowser::PathOf(list));
    }

    const std::string entry = "127.0.1.2;27960;--;Server 2;2;0;16;baseq3;q3dm1;0;;;\r\n";

    HeadlessBrowser browser;
};

TEST_F(GamesTreeFavoritesTest, CreatesTheFolderWithItsFirstServer) {
    AddTo(2);
    EXPECT_EQ(File("fav2"), " 1\r\n" + entry);
    EXPECT_FALSE(browser.fake.files.Has(HeadlessBrowser::PathOf("fav1")));
}

TEST_F(GamesTreeFavoritesTest, AppendsAServerThatIsAlreadyThere) {
    browser.PutList("fav1", {"10.0.0.1:1"});
    AddTo(1);
    AddTo(1);
    EXPECT_EQ(File("fav1"), " 3\r\n10.0.0.1;1;--;Server 1;1;0;16;baseq3;q3dm1;0;;;\r\n" + entry + entry);
}

TEST_F(GamesTreeFavoritesTest, RestoresTheShownListFromItsFile) {
    browser.program.Servers[1].Name = "Unsaved";
    browser.Form().servers.AddServer("192.0.2.9", "1");
    AddTo(2);
    EXPECT_EQ(browser.program.CurrentGame, "q3");
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
    EXPECT_EQ(browser.program.ServerCount, 3);
    EXPECT_EQ(browser.program.Servers[1].Name, "Server 1");
    EXPECT_EQ(browser.RowCount(), 4); // rows stay as they were
    EXPECT_EQ(browser.fake.files.Writes(HeadlessBrowser::PathOf("q3")), 0);
}

TEST_F(GamesTreeFavoritesTest, SavesTheShownListFirstIfTheUserWantsItSaved) {
    browser.program.SaveListAtExit = 1;
    browser.program.Servers[1].Name = "Scanned";
    browser.Form().servers.AddServer("192.0.2.9", "1");
    AddTo(2);
    EXPECT_EQ(browser.program.ServerCount, 4);
    EXPECT_EQ(browser.program.Servers[1].Name, "Scanned");
    EXPECT_EQ(browser.program.Servers[4].Address, "192.0.2.9");
    EXPECT_EQ(browser.RowCount(), 4);
    EXPECT_EQ(File("fav2"), " 1\r\n" + entry);
}

TEST_F(GamesTreeFavoritesTest, AddsNothingIfTheShownListCannotBeSaved) {
    browser.program.SaveListAtExit = 1;
    browser.program.Servers[1].Name = "Scanned";
    browser.fake.files.FailWrites(HeadlessBrowser::PathOf("q3"), ErrorNumber::DiskFull);
    AddTo(2);
    EXPECT_EQ(browser.program.Servers[1].Name, "Scanned");
    EXPECT_FALSE(browser.fake.files.Has(HeadlessBrowser::PathOf("fav2")));
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServAddToFavorites_Click;61"));
}

TEST_F(GamesTreeFavoritesTest, CopiesTheWholeRecordAsItIsInMemory) {
    ServerRecord& server = browser.program.Servers[2];
    server.Name = "Scanned";
    server.Password = "secret";
    server.Variables = "\\a\\1";
    server.LastVisit = DateTime::From({2000, 1, 1, 0, 0, 0});
    AddTo(1);
    EXPECT_EQ(File("fav1"),
              " 1\r\n127.0.1.2;27960;--;Scanned;2;0;16;baseq3;q3dm1;0;;secret\\a\\1;3155673600\r\n");
}

TEST_F(GamesTreeFavoritesTest, NeedsASelectedServer) {
    browser.SelectRows({});
    browser.program.CurrentServer = 2;
    AddTo(1);
    browser.Controls().lvwServers.SelectOnly(1);
    browser.Controls().lvwServers.Edit(1).main.tag = "9";
    AddTo(1);
    EXPECT_FALSE(browser.fake.files.Has(HeadlessBrowser::PathOf("fav1")));
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(GamesTreeFavoritesTest, ShowsAnErrorForARowWithoutAServer) {
    browser.Controls().lvwServers.Edit(2).main.tag = "x";
    AddTo(1);
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServAddToFavorites_Click;13"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_FALSE(browser.fake.files.Has(HeadlessBrowser::PathOf("fav1")));
}

TEST_F(GamesTreeFavoritesTest, ReloadsTheShownListWhateverNodeIsSelected) {
    struct Case {
        const char* selected;
        bool click;
    };
    for (const Case& c :
         {Case{"mod1", true}, Case{"fltkey", false}, Case{"png20", false}, Case{"games", false}}) {
        HeadlessBrowser other;
        other.fake.files.Put(HeadlessBrowser::PathOf("q3"), "1\r\n127.0.0.1;1;--;a;1;0;0;osp;;0;;\r\n");
        ASSERT_TRUE(other.Start());
        if (c.click)
            other.ClickNode(c.selected);
        else
            other.Controls().trvGames.Select(c.selected);
        other.SelectRows({1});
        other.Form().tree.mnuServAddToFavorites_Click(1);
        EXPECT_EQ(other.program.Servers.HighestIndex(), 1) << c.selected;
        EXPECT_EQ(other.Form().tree.ShownList(), "q3");
        other.ClickNode("d3");
        EXPECT_NE(other.fake.files.Get(HeadlessBrowser::PathOf("q3")).find(";a;"), std::string::npos)
            << c.selected;
    }
}

TEST_F(GamesTreeFavoritesTest, AddsFromOneFolderToAnother) {
    browser.PutList("fav1", {"10.0.0.1:1", "10.0.0.2:2"});
    browser.ClickNode("fav1");
    browser.SelectRows({2});
    AddTo(2);
    EXPECT_EQ(File("fav2"), " 1\r\n10.0.0.2;2;--;Server 2;2;0;16;baseq3;q3dm1;0;;;\r\n");
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 2);
}

TEST_F(GamesTreeFavoritesTest, ReplacesAnUnreadableFolderFileAndKeepsACopy) {
    browser.fake.files.Put(HeadlessBrowser::PathOf("fav1"), "5\r\ndamaged\r\n");
    AddTo(1);
    EXPECT_EQ(File("fav1"), " 1\r\n" + entry);
    EXPECT_EQ(browser.fake.files.Get("C:\\Quarn\\servers-fav1.bak"), "5\r\ndamaged\r\n");
}

TEST_F(GamesTreeFavoritesTest, LeavesAFolderAloneWhoseFileAnotherProgramHolds) {
    browser.PutList("fav1", {"10.0.0.1:1"});
    // Its file can be read again right after the folder was loaded.
    browser.fake.files.FailReads(HeadlessBrowser::PathOf("fav1"), ErrorNumber::PermissionDenied, 1);
    AddTo(1);
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServAddToFavorites_Click;70"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(File("fav1"), HeadlessBrowser::ListFile({"10.0.0.1:1"}));
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
    AddTo(1);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
    EXPECT_TRUE(File("fav1").ends_with(entry));
}

TEST_F(GamesTreeFavoritesTest, TellsWhenItCannotSaveTheFolderAndShowsTheListAgain) {
    browser.PutList("fav1", {"10.0.0.1:1"});
    browser.fake.files.FailWrites(HeadlessBrowser::PathOf("fav1"), ErrorNumber::DiskFull);
    AddTo(1);
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServAddToFavorites_Click;61"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
    EXPECT_EQ(browser.program.ServerCount, 3);
    browser.ClickNode("d3");
    EXPECT_EQ(File("q3"), HeadlessBrowser::ListFile(HeadlessBrowser::Addresses(3)));
    EXPECT_EQ(File("fav1"), HeadlessBrowser::ListFile({"10.0.0.1:1"}));
}

TEST_F(GamesTreeFavoritesTest, LeavesTheListEmptyIfItsFileIsMissing) {
    browser.fake.files.Remove(HeadlessBrowser::PathOf("q3"));
    AddTo(1);
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 0);
    EXPECT_EQ(browser.program.ServerCount, 0);
    EXPECT_EQ(browser.RowCount(), 3);
    browser.ClickRow(3); // its record does not exist
    EXPECT_EQ(browser.Errors().front(), "frmMain;RefreshPlayers;9");
}

TEST_F(GamesTreeFavoritesTest, ShowsDetailsOfTheShownListOnly) {
    browser.PutList("fav1", {"10.0.0.1:1", "10.0.0.2:2"});
    std::string favorites = browser.fake.files.Get(HeadlessBrowser::PathOf("fav1"));
    for (std::size_t at = 0; (at = favorites.find(";;;", at)) != std::string::npos; at += 10)
        favorites.insert(at + 2, "\\of\\favorites");
    browser.fake.files.Put(HeadlessBrowser::PathOf("fav1"), favorites);
    browser.fake.events.whenYielding = [&](std::int32_t) { browser.ClickRow(1); };
    AddTo(1);
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), IsEmpty());
    EXPECT_EQ(browser.program.CurrentServer, 1);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

} // namespace
} // namespace quarn
