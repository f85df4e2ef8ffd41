#include "win32/Screens.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quarn {
namespace {

// Two monitors side by side, the right one with twice the dots; taskbar below the left one.
const std::vector<Screen> TwoScreens = {{{0, 0, 1920, 1040}, Dpi(96)}, {{1920, 0, 5760, 2160}, Dpi(192)}};

TwipsRect At96(int left, int top, int width, int height) {
    return {left * 15, top * 15, width * 15, height * 15};
}

struct Place {
    const char* what;
    TwipsRect stored;
    RECT shown;
};

TEST(ScreensTest, LeaveAWindowWhereItsTitleBarIsWithinReach) {
    for (const Place& place :
         {Place{"inside", At96(100, 50, 800, 600), {100, 50, 900, 650}},
          Place{"over the left edge", At96(-700, 50, 800, 600), {-700, 50, 100, 650}},
          Place{"below the taskbar", At96(100, 1000, 800, 600), {100, 1000, 900, 1600}},
          Place{"on the second screen", {30000, 1440, 7200, 7200}, {4000, 192, 4960, 1152}}}) {
        const RECT shown = PlaceOnScreens(place.stored, TwoScreens);
        EXPECT_TRUE(EqualRect(&shown, &place.shown)) << place.what << ": " << shown.left << ',' << shown.top;
    }
}

TEST(ScreensTest, BringALostWindowBackOntoTheFirst) {
    for (const Place& place :
         {Place{"left of all", At96(-2000, 50, 800, 600), {0, 50, 800, 650}},
          Place{"above", At96(100, -200, 800, 600), {100, 0, 900, 600}},
          Place{"below", At96(100, 5000, 800, 600), {100, 440, 900, 1040}},
          Place{"hardly on", At96(-790, 50, 800, 600), {0, 50, 800, 650}},
          Place{"right of all", At96(9000, 50, 800, 600), {1120, 50, 1920, 650}},
          Place{"too big as well", At96(-5000, -5000, 3000, 2000), {0, 0, 3000, 2000}}}) {
        const RECT shown = PlaceOnScreens(place.stored, TwoScreens);
        EXPECT_TRUE(EqualRect(&shown, &place.shown)) << place.what << ": " << shown.left << ',' << shown.top;
    }
}

TEST(ScreensTest, ThereIsAlwaysOne) {
    const std::vector<Screen> screens = ConnectedScreens();
    ASSERT_FALSE(screens.empty());
    EXPECT_GT(screens.front().workArea.right, screens.front().workArea.left);
    EXPECT_GE(screens.front().dpi.Value(), 96);
}

} // namespace
} // namespace quarn
