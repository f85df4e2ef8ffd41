#include "controls/Toolbar.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(ToolbarTest, FindsAButtonByItsKey) {
    Toolbar toolbar;
    EXPECT_EQ(toolbar.PositionOf("join"), 0);
    toolbar.buttons.Reset(3);
    toolbar.buttons[1].key = "refresh";
    toolbar.buttons[3].key = "join";
    EXPECT_EQ(toolbar.PositionOf("refresh"), 1);
    EXPECT_EQ(toolbar.PositionOf("join"), 3);
    EXPECT_EQ(toolbar.PositionOf("Join"), 0);
    EXPECT_EQ(toolbar.PositionOf(""), 0) << "a separator is no button";
}

} // namespace
} // namespace quarn
