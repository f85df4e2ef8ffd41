#include "views/EmptyTexts.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

class EmptyTextsTest : public testing::Test {
  protected:
    std::string Servers() { return browser.Controls().lvwServers.emptyText(); }
    std::string Players() { return browser.Controls().lvwPlayers.emptyText(); }
    std::string Variables() { return browser.Controls().lvwServVars.emptyText(); }

    HeadlessBrowser browser;
};

TEST_F(EmptyTextsTest, SayHowToFillAList) {
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("d3");
    EXPECT_EQ(Servers(), "Press Renew to ask the master server for its servers.");
    browser.ClickNode("fav1");
    EXPECT_EQ(Servers(), "This folder is empty. Select a server of a game and press Favorites to add it.");
    browser.ClickNode("favorites");
    EXPECT_EQ(Servers(), "Select a favorites folder in the tree.");
    browser.ClickNode("filters");
    EXPECT_EQ(Servers(), "Select a game or a favorites folder in the tree.");
    browser.ClickNode("games");
    EXPECT_EQ(Servers(), "Select a game in the tree.");
    EXPECT_EQ(Players(), "");
    EXPECT_EQ(Variables(), "");
}

TEST_F(EmptyTextsTest, SayThatNoGameIsSetUp) {
    for (const char* game : {"Visible1", "Visible2", "Visible3"})
        browser.Set("Games", game, 0);
    browser.Set("Selection", "LastGame", 1);
    ASSERT_TRUE(browser.Start());
    EXPECT_EQ(Servers(), "No game is set up. Choose Game Setup in the menu Extras.");
}

TEST_F(EmptyTextsTest, SayThatTheFiltersHideAllServers) {
    browser.PutList("q3", HeadlessBrowser::Block(1, 60));
    browser.PutList("d3", HeadlessBrowser::Block(2, 1));
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("q3");
    ASSERT_EQ(browser.RowCount(), 60);
    for (std::int32_t index = 1; index <= 60; ++index)
        browser.program.Servers[index].Ping = 999;
    browser.ClickNode("png20");
    ASSERT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(Servers(), "60 servers, none passes the filters.");
    browser.ClickNode("d3");
    browser.program.Servers[1].Ping = 999;
    browser.ClickNode("png50");
    ASSERT_EQ(browser.RowCount(), 0);
    EXPECT_EQ(Servers(), "1 server, which does not pass the filters.");
}

TEST_F(EmptyTextsTest, SayWhyThereAreNoDetails) {
    browser.PutList("q3", HeadlessBrowser::Block(1, 3));
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("q3");
    EXPECT_EQ(Players(), "Select a server to see its players.");
    EXPECT_EQ(Variables(), "Select a server to see its variables.");
    browser.ClickRow(2);
    ServerRecord& server = browser.program.Servers[2];
    server.Variables.clear();
    server.Players = 0;
    EXPECT_EQ(Players(), "Refresh the server to see its players.");
    EXPECT_EQ(Variables(), "Refresh the server to see its variables.");
    server.Variables = "\\a\\1";
    EXPECT_EQ(Players(), "This server has no players.");
    server.Players = 3; // whose names no list file keeps
    EXPECT_EQ(Players(), "Refresh the server to see its players.");
}

TEST_F(EmptyTextsTest, SayThatTheMasterHasSentNothingYet) {
    ASSERT_TRUE(browser.Start());
    browser.ClickNode("d3");
    browser.fake.prompts.yesNoAnswers = {true};
    browser.Form().tbMain_ButtonClick("querymaster");
    EXPECT_EQ(Servers(), "The master server has sent no servers yet. Press Renew to ask it again.");
}

TEST_F(EmptyTextsTest, SayNothingWhileAListIsMadeOrScanned) {
    browser.PutList("q3", HeadlessBrowser::Addresses(3000));
    browser.PutList("d3", HeadlessBrowser::Addresses(2));
    ASSERT_TRUE(browser.Start());
    int looks = 0;
    const auto look = [&] {
        ++looks;
        EXPECT_EQ(Servers(), "");
        EXPECT_EQ(Players(), "");
    };
    browser.ClickNode("d3");
    browser.fake.events.whenYielding = [&](std::int32_t) { look(); };
    browser.ClickNode("q3");
    EXPECT_GT(looks, 0);
    browser.fake.events.whenYielding = nullptr;
    browser.ClickNode("d3");
    looks = 0;
    browser.network.whenAsked = [&](const std::string&) {
        ++looks;
        EXPECT_EQ(Players(), "");
    };
    browser.RefreshAll();
    EXPECT_EQ(looks, 2);
}

} // namespace
} // namespace quarn
