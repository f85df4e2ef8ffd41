#include "views/MainControls.h"

#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/FakeUdpSockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

class MainControlsTest : public ::testing::Test {
  protected:
    static std::vector<std::string> Columns(const ListView& list) {
        std::vector<std::string> columns;
        for (std::int32_t i = 1; i <= list.columns.HighestIndex(); ++i)
            columns.push_back(list.columns[i].text + "/" + list.columns[i].tag);
        return columns;
    }

    static std::vector<std::string> LayoutOf(const ListView& list) {
        std::vector<std::string> columns;
        for (std::int32_t i = 1; i <= list.columns.HighestIndex(); ++i) {
            const ListColumn& column = list.columns[i];
            columns.push_back(column.text + (column.alignment == Alignment::Right ? ", right" : "") +
                              (column.fills ? ", fills" : ""));
        }
        return columns;
    }

    FakeDesktop fake;
    FakeUdpSocket master{fake.clock, fake.events, fake.hosts};
    FakeUdpSockets servers{fake.clock, fake.events, fake.hosts};
    MainControls controls{master, servers, fake.clock};
};

TEST_F(MainControlsTest, NamesTheColumnsOfTheLowerListsAndHowTheySort) {
    EXPECT_THAT(Columns(controls.lvwPlayers), ElementsAre("Name/STRING", "Score/NUMBER", "Ping/NUMBER"));
    EXPECT_THAT(Columns(controls.lvwServVars), ElementsAre("Variable/", "Value/"));
}

TEST_F(MainControlsTest, AlignsNumbersRightAndGivesOneColumnTheRestOfTheWidth) {
    EXPECT_THAT(LayoutOf(controls.lvwPlayers), ElementsAre("Name, fills", "Score, right", "Ping, right"));
    EXPECT_THAT(LayoutOf(controls.lvwServVars), ElementsAre("Variable", "Value, fills"));
    EXPECT_THAT(LayoutOf(controls.lvwServers),
                ElementsAre("", "IP Address", "Location", "Name, fills", "Players", "Ping, right", "Game",
                            "Map", "Last Visit"));
}

TEST_F(MainControlsTest, HasSixStatusPanels) {
    const OneBased<StatusPanel>& panels = controls.sbMain.panels;
    ASSERT_EQ(panels.HighestIndex(), 6);
    EXPECT_EQ(panels[1].text, "Ready.");
    EXPECT_EQ(panels[1].toolTip, "Current program messages");
    EXPECT_EQ(panels[2].text, "");
    EXPECT_EQ(panels[2].toolTip, "Server query status");
    EXPECT_EQ(panels[3].text, "");
    EXPECT_EQ(panels[3].toolTip, "Number of servers in current list");
    for (const std::int32_t panel : {1, 2, 3})
        EXPECT_EQ(panels[panel].kind, StatusPanel::Kind::Text) << panel;
    EXPECT_EQ(panels[4].kind, StatusPanel::Kind::CapsLock);
    EXPECT_EQ(panels[5].kind, StatusPanel::Kind::NumLock);
    EXPECT_EQ(panels[6].kind, StatusPanel::Kind::ScrollLock);
}

TEST_F(MainControlsTest, HasNineFavoritesEntriesThatWaitForTheirNames) {
    ASSERT_EQ(controls.mnuServAddToFavorites.HighestIndex(), 9);
    for (std::int32_t i = 1; i <= 9; ++i)
        EXPECT_EQ(controls.mnuServAddToFavorites[i].caption, "fav") << i;
}

TEST_F(MainControlsTest, StartsIdle) {
    EXPECT_FALSE(controls.tmrTimeout.Enabled());
    EXPECT_EQ(controls.sckMaster.CurrentState(), UdpSocket::State::Closed);
    EXPECT_EQ(controls.sckServer.OpenCount(), 0);
    EXPECT_EQ(controls.lvwServers.RowCount(), 0);
}

} // namespace
} // namespace quarn
