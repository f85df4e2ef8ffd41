#include "views/ServerDetails.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ServerDetailsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        browser.PutList("q3", HeadlessBrowser::Addresses(1));
        ASSERT_TRUE(browser.Start());
        browser.program.CurrentServer = 1;
    }
    ServerRecord& Server() { return browser.program.Servers[1]; }
    std::vector<std::string> Players() {
        browser.Form().details.RefreshPlayers();
        return browser.Texts(browser.Controls().lvwPlayers);
    }
    std::vector<std::string> Variables(const std::string& text) {
        Server().Variables = text;
        browser.Form().details.RefreshVariables();
        return browser.Texts(browser.Controls().lvwServVars);
    }

    HeadlessBrowser browser;
};

TEST_F(ServerDetailsTest, ShowsThePlayersInTheirOrder) {
    Server().Players = 2;
    Server().PlayerList.Reset(3);
    Server().PlayerList[1] = {-666, 0, "Zoe"};
    Server().PlayerList[2] = {2147483647, -2147483647 - 1, "A"};
    Server().PlayerList[3] = {1, 1, "not counted"};
    EXPECT_THAT(Players(), ElementsAre("Zoe|-666|0", "A|2147483647|-2147483648"));
    EXPECT_THAT(Players(), ElementsAre("Zoe|-666|0", "A|2147483647|-2147483648"));
}

TEST_F(ServerDetailsTest, ShowsNoPlayersWhereTheListDoesNotHoldThem) {
    struct Case {
        std::int32_t players;
        std::int32_t listed;
    };
    for (const Case& c : {Case{0, 0}, Case{0, 3}, Case{1, 0}, Case{4, 3}, Case{-1, 3}, Case{2147483647, 3},
                          Case{-2147483647, 0}}) {
        Server().Players = c.players;
        Server().PlayerList.Reset(c.listed);
        EXPECT_THAT(Players(), IsEmpty()) << c.players << " of " << c.listed;
    }
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerDetailsTest, ShowsTheVariablesPairByPair) {
    struct Case {
        std::string text;
        std::vector<std::string> rows;
    };
    for (const Case& c :
         {Case{"\\a\\1\\b\\2", {"a|1", "b|2"}}, Case{"", {}}, Case{"abc", {}}, Case{"abc\\a\\1", {"a|1"}},
          Case{"\\a\\\\b\\2", {"a|", "b|2"}}, Case{"\\\\1", {"|1"}}, Case{"\\a\\", {"a|"}},
          Case{"\\b\\1\\a\\2\\b\\3", {"b|1", "a|2", "b|3"}}, Case{"\\k;x\\v|w", {"k;x|v|w"}}})
        EXPECT_EQ(Variables(c.text), c.rows) << c.text;
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_GT(browser.Controls().lvwServVars.TakeChanges().lastDirty, 0);
}

TEST_F(ServerDetailsTest, LogsANameWithoutAValueAndKeepsItsRow) {
    struct Case {
        std::string text;
        std::vector<std::string> rows;
    };
    for (const Case& c : {Case{"\\a\\1\\b", {"a|1", "b|"}}, Case{"\\a", {"a|"}}, Case{"\\", {"|"}},
                          Case{"\\a\\1\\", {"a|1", "|"}}, Case{"x\\a\\1\\b\\2\\c", {"a|1", "b|2", "c|"}}}) {
        const std::size_t errors = browser.Errors().size();
        EXPECT_EQ(Variables(c.text), c.rows) << c.text;
        ASSERT_EQ(browser.Errors().size(), errors + 1) << c.text;
        EXPECT_EQ(browser.Errors().back(), "frmMain;RefreshVariables;9");
    }
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerDetailsTest, LogsACurrentServerThatDoesNotExist) {
    for (const std::int32_t index : {2, -1, 2147483647}) {
        browser.program.CurrentServer = index;
        EXPECT_THAT(Players(), IsEmpty());
        EXPECT_EQ(browser.Errors().back(), "frmMain;RefreshPlayers;9");
        browser.Form().details.RefreshVariables();
        EXPECT_EQ(browser.Errors().back(), "frmMain;RefreshVariables;9");
    }
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());
}

TEST_F(ServerDetailsTest, ShowsNothingWhileNoServerIsCurrent) {
    Server().Variables = "\\a\\1";
    browser.program.CurrentServer = 0;
    EXPECT_THAT(Players(), IsEmpty());
    browser.Form().details.RefreshVariables();
    EXPECT_EQ(browser.Controls().lvwServVars.RowCount(), 0);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

} // namespace
} // namespace quarn
