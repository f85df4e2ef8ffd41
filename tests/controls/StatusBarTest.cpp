#include "controls/StatusBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

using testing::ElementsAre;

// A message of at least 300, a panel that shrinks, one that does not, and two that vanish.
StatusBar BarOfFive() {
    StatusBar bar;
    bar.panels.Reset(5);
    bar.panels[1] = {.leastWidth = 300};
    bar.panels[2] = {.designWidth = 200, .leastWidth = 80};
    bar.panels[3] = {.designWidth = 150, .leastWidth = 150};
    bar.panels[4] = {.designWidth = 50};
    bar.panels[5] = {.designWidth = 50};
    return bar;
}

TEST(StatusBarTest, GivesTheMessageWhatIsLeft) {
    EXPECT_THAT(PanelWidths(BarOfFive(), 1000), ElementsAre(550, 200, 150, 50, 50));
    EXPECT_THAT(PanelWidths(BarOfFive(), 750), ElementsAre(300, 200, 150, 50, 50));
}

TEST(StatusBarTest, ShrinksTheOthersBeforeTheMessage) {
    EXPECT_THAT(PanelWidths(BarOfFive(), 700), ElementsAre(300, 150, 150, 50, 50));
    EXPECT_THAT(PanelWidths(BarOfFive(), 630), ElementsAre(300, 80, 150, 50, 50));
    EXPECT_THAT(PanelWidths(BarOfFive(), 600), ElementsAre(300, 80, 150, 20, 50));
    EXPECT_THAT(PanelWidths(BarOfFive(), 530), ElementsAre(300, 80, 150, 0, 0));
}

TEST(StatusBarTest, ShrinksTheMessageWhenNothingElseIsLeft) {
    EXPECT_THAT(PanelWidths(BarOfFive(), 400), ElementsAre(170, 80, 150, 0, 0));
    EXPECT_THAT(PanelWidths(BarOfFive(), 100), ElementsAre(0, 80, 150, 0, 0));
    EXPECT_THAT(PanelWidths(BarOfFive(), -20), ElementsAre(0, 80, 150, 0, 0));
}

TEST(StatusBarTest, HasNoWidthsWithoutPanels) {
    EXPECT_THAT(PanelWidths(StatusBar(), 100), ElementsAre());
}

} // namespace
} // namespace quarn
