#include "views/ColumnWidths.h"

#include "tests/fakes/HeadlessBrowser.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

class ColumnWidthsTest : public ::testing::Test {
  protected:
    ColumnWidthsTest() { browser.Start(); }

    MainControls& Controls() { return browser.Controls(); }
    std::int32_t WidthOf(std::int32_t column) { return Controls().lvwServers.columns[column].Width(); }

    HeadlessBrowser browser;
};

TEST_F(ColumnWidthsTest, AreEmptyUntilTheUserChangesOne) {
    EXPECT_EQ(ColumnWidthsText(Controls()), "");
    ListColumn& name = Controls().lvwServers.columns[NameColumn + 1];
    name.chosenWidth = name.width;
    EXPECT_EQ(ColumnWidthsText(Controls()), "");
    name.chosenWidth = 3000;
    EXPECT_EQ(ColumnWidthsText(Controls()), "0,0,0,3000,0,0,0,0,0,0,0,0,0,0");
    Controls().lvwPlayers.columns[1].chosenWidth = 15;
    Controls().lvwServVars.columns[2].chosenWidth = 4500;
    EXPECT_EQ(ColumnWidthsText(Controls()), "0,0,0,3000,0,0,0,0,0,15,0,0,0,4500");
}

TEST_F(ColumnWidthsTest, AreReadAsTheyWereWritten) {
    const std::string text = "1,2,3,4,5,6,7,8,9,10,11,12,13,30000";
    ApplyColumnWidths(text, Controls());
    for (std::int32_t column = 1; column <= 9; ++column)
        EXPECT_EQ(WidthOf(column), column);
    EXPECT_EQ(Controls().lvwPlayers.columns[1].Width(), 10);
    EXPECT_EQ(Controls().lvwServVars.columns[2].Width(), 30000);
    EXPECT_EQ(ColumnWidthsText(Controls()), text);
    ApplyColumnWidths("", Controls());
    EXPECT_EQ(ColumnWidthsText(Controls()), "");
}

// What is not a width leaves its column as designed, and the others as they are given.
TEST_F(ColumnWidthsTest, ADamagedNumberCostsItsColumnOnly) {
    const std::int32_t design = WidthOf(2);
    for (const char* const damaged :
         {"", " ", "x", "0", "-5", "30001", "2147483647", "99999999999", "1e9", "12px", "0x10", ";", "--"}) {
        ApplyColumnWidths(std::string("450,") + damaged + ",900", Controls());
        EXPECT_EQ(WidthOf(1), 450) << damaged;
        EXPECT_EQ(WidthOf(2), design) << damaged;
        EXPECT_EQ(WidthOf(3), 900) << damaged;
    }
}

TEST_F(ColumnWidthsTest, TooFewOrTooManyAreNoFault) {
    const std::int32_t design = WidthOf(2);
    ApplyColumnWidths("450", Controls());
    EXPECT_EQ(WidthOf(1), 450);
    EXPECT_EQ(WidthOf(2), design);
    std::string many;
    for (int number = 0; number < 1000; ++number)
        many += "600,";
    ApplyColumnWidths(many, Controls());
    EXPECT_EQ(Controls().lvwServVars.columns[2].Width(), 600);
}

TEST_F(ColumnWidthsTest, AreInTheSettingsOnlyWhenTheyWereChanged) {
    browser.Form().Unload();
    EXPECT_EQ(browser.Setting("Extras", "ColumnWidths"), "(missing)");

    HeadlessBrowser second;
    ASSERT_TRUE(second.Start());
    second.Controls().lvwServers.columns[2].chosenWidth = 3333;
    second.Form().Unload();
    EXPECT_EQ(second.Setting("Extras", "ColumnWidths"), "0,3333,0,0,0,0,0,0,0,0,0,0,0,0");

    HeadlessBrowser third;
    third.Set("Extras", "ColumnWidths", "0,3333");
    ASSERT_TRUE(third.Start());
    EXPECT_EQ(third.Controls().lvwServers.columns[2].Width(), 3333);
    ListColumn& address = third.Controls().lvwServers.columns[2];
    address.chosenWidth = address.width;
    third.Form().Unload();
    EXPECT_EQ(third.Setting("Extras", "ColumnWidths"), "(missing)");
}

} // namespace
} // namespace quarn
