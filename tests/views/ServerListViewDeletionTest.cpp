#include "tests/views/ListedServersTest.h"

#include <gmock/gmock.h>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ServerListViewDeletionTest : public ListedServersTest {};

TEST_F(ServerListViewDeletionTest, DeletesTheSelectedRowsAndTheirRecords) {
    struct Case {
        std::vector<std::int32_t> selected;
        std::vector<std::string> tags;
        std::vector<std::string> names;
    };
    for (const Case& c :
         {Case{{2, 3}, {"1", "4", "5"}, {"Server 1", "Server 4", "Server 5"}},
          Case{{1}, {"2", "3", "4", "5"}, {"Server 2", "Server 3", "Server 4", "Server 5"}},
          Case{{5}, {"1", "2", "3", "4"}, {"Server 1", "Server 2", "Server 3", "Server 4"}},
          Case{{1, 3, 5}, {"2", "4"}, {"Server 2", "Server 4"}}, Case{{1, 2, 3, 4, 5}, {}, {}}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(5));
        ASSERT_TRUE(other.Start());
        for (const std::int32_t row : c.selected)
            other.Controls().lvwServers.NoteSelected(row, row, true);
        other.program.CurrentServer = 4;
        other.Form().servers.mnuServDelete_Click();
        EXPECT_EQ(other.Tags(), c.tags);
        std::vector<std::string> names;
        for (std::int32_t i = 1; i <= other.program.Servers.HighestIndex(); ++i)
            names.push_back(other.program.Servers[i].Name);
        EXPECT_EQ(names, c.names);
        EXPECT_EQ(other.program.ServerCount, static_cast<std::int32_t>(c.names.size()));
        EXPECT_EQ(other.program.CurrentServer == 0, c.names.empty());
        EXPECT_EQ(other.Count(), std::to_string(c.names.size()) + " servers");
        EXPECT_THAT(other.Errors(), IsEmpty());
        EXPECT_THAT(other.fake.prompts.shown, IsEmpty());
    }
}

TEST_F(ServerListViewDeletionTest, ShowsTheNewLengthOfTheListAtOnce) {
    StartWith(5);
    EXPECT_EQ(browser.Count(), "5 servers");
    View().AddServer("192.0.2.9", "1");
    EXPECT_EQ(browser.Count(), "6 servers");
    browser.SelectRows({2, 3});
    View().mnuServDelete_Click();
    EXPECT_EQ(browser.Count(), "4 servers");
    browser.SelectRows({1});
    browser.Form().tree.mnuServAddToFavorites_Click(1); // brings back what the file holds
    EXPECT_EQ(browser.Count(), "5 servers");
    browser.fake.prompts.yesNoAnswers = {true};
    View().mnuServerListClear_Click();
    EXPECT_EQ(browser.Count(), "0 servers");
}

TEST_F(ServerListViewDeletionTest, ShowsThatRenewHasClearedTheList) {
    StartWith(3);
    browser.fake.prompts.yesNoAnswers = {true};
    browser.Form().master.mnuServerListGet_Click();
    EXPECT_EQ(browser.Count(), "0 servers");
}

TEST_F(ServerListViewDeletionTest, DeletesNoRowBeyondTheEntryCountAndCompacts) {
    StartWith(5);
    browser.fake.files.Remove(HeadlessBrowser::PathOf("q3"));
    browser.SelectRows({1});
    browser.Form().tree.mnuServAddToFavorites_Click(1); // the list is empty now, its rows are not
    ASSERT_EQ(browser.program.ServerCount, 0);
    browser.SelectRows({5});
    View().mnuServDelete_Click();
    EXPECT_EQ(browser.RowCount(), 5);
    EXPECT_THAT(browser.Errors(), IsEmpty());
    EXPECT_THAT(browser.fake.prompts.shown, IsEmpty());

    browser.program.Servers.Reset(3);
    for (std::int32_t i = 1; i <= 3; ++i)
        browser.program.Servers[i].Address = "10.0.0." + std::to_string(i);
    browser.program.ServerCount = 3;
    browser.SelectRows({1, 2, 5});
    browser.Controls().lvwServers.Edit(5).main.tag = "3";
    View().mnuServDelete_Click(); // the last row moves up to position 3, which is within the count
    EXPECT_THAT(browser.Tags(), ElementsAre("3", "4"));
    EXPECT_EQ(browser.program.ServerCount, 0);
    EXPECT_THAT(browser.Errors(), IsEmpty());
}

TEST_F(ServerListViewDeletionTest, SelectsTheRowThatMovedUpAndShowsItsDetails) {
    struct Case {
        std::vector<std::int32_t> deleted;
        std::int32_t selected;
        std::string variables;
    };
    for (const Case& c :
         {Case{{2}, 2, "of|3"}, Case{{2, 3}, 2, "of|4"}, Case{{1}, 1, "of|2"}, Case{{5}, 4, "of|4"},
          Case{{4, 5}, 3, "of|3"}, Case{{3, 1}, 2, "of|4"}, Case{{1, 2, 3, 4, 5}, 0, ""}}) {
        HeadlessBrowser other;
        other.PutList("q3", HeadlessBrowser::Addresses(5));
        ASSERT_TRUE(other.Start());
        for (std::int32_t i = 1; i <= 5; ++i)
            other.program.Servers[i].Variables = "\\of\\" + std::to_string(i);
        for (const std::int32_t row : c.deleted)
            other.Controls().lvwServers.NoteSelected(row, row, true);
        other.Controls().lvwServers.NoteFocused(c.deleted.front());
        other.Form().servers.mnuServDelete_Click();
        const ListView& list = other.Controls().lvwServers;
        EXPECT_EQ(list.SelectedRow(), c.selected);
        EXPECT_EQ(list.FocusedRow(), c.selected);
        EXPECT_EQ(list.SelectedCount(), c.selected == 0 ? 0 : 1);
        const std::vector<std::string> variables = other.Texts(other.Controls().lvwServVars);
        EXPECT_EQ(variables.empty() ? "" : variables.front(), c.variables);
        EXPECT_THAT(other.Errors(), IsEmpty());
    }
}

// A deletion that had to wait leaves the user where he went meanwhile.
TEST_F(ServerListViewDeletionTest, LeavesASelectionOutsideTheDeletedRowsAlone) {
    StartWith(5);
    for (std::int32_t i = 1; i <= 5; ++i)
        browser.program.Servers[i].Variables = "\\of\\" + std::to_string(i);
    browser.fake.events.doEventsCalls = 0;
    browser.fake.events.whenYielding = [&](std::int32_t call) {
        if (call != 1)
            return;
        browser.SelectRows({2});
        View().mnuServDelete_Click();
        browser.SelectRows({4});
    };
    View().lvwServers_ColumnClick(4);
    EXPECT_EQ(browser.Cell(browser.Controls().lvwServers.SelectedRow(), NameColumn), "Server 4");
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), ElementsAre("of|4"));
}

TEST_F(ServerListViewDeletionTest, DeletesNothingWithoutASelection) {
    StartWith(3);
    browser.program.Servers[2].Address.clear();
    View().mnuServDelete_Click();
    EXPECT_EQ(browser.program.Servers.HighestIndex(), 3);
    EXPECT_EQ(browser.RowCount(), 3);
}

TEST_F(ServerListViewDeletionTest, DeletesInASortedViewWhatTheRowsShow) {
    StartWith(5);
    View().lvwServers_ColumnClick(6); // 5, 4, 3, 2, 1
    browser.SelectRows({1, 2});
    View().mnuServDelete_Click();
    EXPECT_THAT(Names(), ElementsAre("Server 1", "Server 2", "Server 3"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 3", "Server 2", "Server 1"));
}

TEST_F(ServerListViewDeletionTest, DeletesEmptySlotsToo) {
    StartWith(4);
    browser.program.Servers[3].Address.clear();
    browser.program.ServerCount = 5; // one past the end of the list
    browser.SelectRows({1});
    View().mnuServDelete_Click();
    EXPECT_THAT(Names(), ElementsAre("Server 2", "Server 4"));
    EXPECT_EQ(browser.program.ServerCount, 2);
}

TEST_F(ServerListViewDeletionTest, AssignsNewTagsAtTheNextListing) {
    StartWith(5);
    browser.SelectRows({2, 3});
    View().mnuServDelete_Click();
    browser.ClickNode("fltping");
    EXPECT_THAT(browser.Tags(), ElementsAre("1", "2", "3"));
    EXPECT_THAT(browser.Column(NameColumn), ElementsAre("Server 1", "Server 4", "Server 5"));
    EXPECT_EQ(browser.Count(), "3 servers");
}

TEST_F(ServerListViewDeletionTest, StopsADeletionAtARowWithoutARecord) {
    StartWith(5);
    browser.SelectRows({2, 3});
    View().mnuServDelete_Click(); // rows tagged 1, 4, 5; records 1 to 3
    browser.SelectRows({1, 2});
    View().mnuServDelete_Click();
    EXPECT_THAT(browser.Errors(), ElementsAre("frmMain;mnuServDelete_Click;9"));
    EXPECT_THAT(browser.fake.prompts.shown, SizeIs(1));
    EXPECT_THAT(browser.Tags(), ElementsAre("4", "5"));
    EXPECT_EQ(browser.program.Servers[1].Address, ""); // an empty slot, which the next deletion removes
    browser.ClickNode("fltping");
    EXPECT_THAT(browser.Tags(), ElementsAre("2", "3"));
}

TEST_F(ServerListViewDeletionTest, ClearsTheDetailsOnlyOfADeletedServer) {
    StartWith(3);
    browser.program.Servers[2].Variables = "\\a\\1";
    browser.ClickRow(2);
    browser.SelectRows({1});
    View().mnuServDelete_Click();
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), ElementsAre("a|1"));
    browser.ClickNode("fltping");
    browser.ClickRow(1);
    ASSERT_THAT(browser.Texts(browser.Controls().lvwServVars), ElementsAre("a|1"));
    View().mnuServDelete_Click();
    EXPECT_THAT(browser.Texts(browser.Controls().lvwServVars), IsEmpty());
}

} // namespace
} // namespace quarn
