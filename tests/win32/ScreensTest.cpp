#include "win32/Screens.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quarn {
namespace {

// Two monitors side by side, the right one with twice the dots; taskbar below the left one.
const std::vector<Screen> TwoScreens = {{{0, 0, 1920, 1040}, Dpi(96)}, {{1920, 0, 5760, 2160}, Dpi(192)}};

// The same with the first monitor on the right.
const std::vector<Screen> FirstOnTheRight = {{{0, 0, 3840, 2160}, Dpi(192)}, {{-1920, 0, 0, 1040}, Dpi(96)}};

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
          Place{"on the second screen", At96(4000, 192, 800, 600), {4000, 192, 5600, 1392}},
          Place{"at the left of the second screen", At96(1920, 0, 500, 400), {1920, 0, 2920, 800}},
          Place{"more on the second", At96(1500, 50, 800, 600), {1500, 50, 3100, 1250}},
          Place{"just enough at the left", At96(-752, 50, 800, 600), {-752, 50, 48, 650}},
          Place{"just enough at the bottom", At96(100, 1024, 800, 600), {100, 1024, 900, 1624}},
          Place{"at the top", At96(100, 0, 800, 600), {100, 0, 900, 600}},
          Place{"hardly on the second", At96(1200, 50, 740, 600), {1200, 50, 1940, 650}}}) {
        const RECT shown = PlaceOnScreens(place.stored, TwoScreens);
        EXPECT_TRUE(EqualRect(&shown, &place.shown)) << place.what << ": " << shown.left << ',' << shown.top
                                                     << ',' << shown.right << ',' << shown.bottom;
    }
}

TEST(ScreensTest, TakeAWindowBackToWhereItWas) {
    struct Case {
        const std::vector<Screen>& screens;
        RECT window;
        unsigned dpi;
    };
    const std::vector<Screen> odd = {{{0, 0, 1920, 1040}, Dpi(120)}, {{1920, 0, 5760, 2160}, Dpi(168)}};
    for (const Case& c :
         {Case{TwoScreens, {100, 50, 900, 650}, 96}, Case{TwoScreens, {2000, 50, 3600, 1250}, 192},
          Case{TwoScreens, {4001, 333, 5000, 1032}, 192}, Case{FirstOnTheRight, {-1800, 10, -1000, 610}, 96},
          Case{FirstOnTheRight, {0, 0, 1600, 1200}, 192}, Case{odd, {101, 53, 902, 651}, 120},
          Case{odd, {2003, 7, 3506, 1111}, 168}}) {
        const RECT back = PlaceOnScreens(StoredPlace(c.window, Dpi(c.dpi), c.screens), c.screens);
        EXPECT_TRUE(EqualRect(&back, &c.window))
            << c.window.left << ',' << c.window.top << ": " << back.left << ',' << back.top << ','
            << back.right << ',' << back.bottom;
    }
}

TEST(ScreensTest, StoreSizesInInches) {
    const RECT onTheSecond = {2000, 50, 3600, 1250};
    EXPECT_EQ(StoredPlace(onTheSecond, Dpi(192), TwoScreens), (TwipsRect{30000, 750, 12000, 9000}));
    const std::vector<Screen> one = {{{0, 0, 3840, 2080}, Dpi(192)}};
    EXPECT_EQ(StoredPlace(onTheSecond, Dpi(192), one), Dpi(192).ToTwips(onTheSecond));
}

TEST(ScreensTest, BringALostWindowBackOntoTheFirst) {
    for (const Place& place :
         {Place{"left of all", At96(-2000, 50, 800, 600), {0, 50, 800, 650}},
          Place{"above", At96(100, -200, 800, 600), {100, 0, 900, 600}},
          Place{"below", At96(100, 5000, 800, 600), {100, 440, 900, 1040}},
          Place{"not enough at the left", At96(-753, 50, 800, 600), {0, 50, 800, 650}},
          Place{"not enough at the bottom", At96(100, 1025, 800, 600), {100, 440, 900, 1040}},
          Place{"just above the top", At96(100, -1, 800, 600), {100, 0, 900, 600}},
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
